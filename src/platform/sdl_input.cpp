#include "sdl_input.h"

#include <algorithm>
#include <string_view>

#include "base/utf.h"

namespace zo::platform {
namespace {

using ui::InputEvent;
using ui::Key;
using ui::PointerAction;

struct NamedKey {
    SDL_Keycode code;
    Key key;
};

constexpr NamedKey kKeys[] = {
    {SDLK_ESCAPE, Key::Escape},
    {SDLK_RETURN, Key::Enter},
    {SDLK_KP_ENTER, Key::Enter},
    {SDLK_TAB, Key::Tab},
    {SDLK_BACKSPACE, Key::Backspace},
    {SDLK_DELETE, Key::Delete},
    {SDLK_INSERT, Key::Insert},
    {SDLK_HOME, Key::Home},
    {SDLK_END, Key::End},
    {SDLK_PAGEUP, Key::PageUp},
    {SDLK_PAGEDOWN, Key::PageDown},
    {SDLK_LEFT, Key::Left},
    {SDLK_RIGHT, Key::Right},
    {SDLK_UP, Key::Up},
    {SDLK_DOWN, Key::Down},
    {SDLK_F1, Key::F1},
    {SDLK_F2, Key::F2},
    {SDLK_F3, Key::F3},
    {SDLK_F4, Key::F4},
    {SDLK_F5, Key::F5},
    {SDLK_F6, Key::F6},
    {SDLK_F7, Key::F7},
    {SDLK_F8, Key::F8},
    {SDLK_F9, Key::F9},
    {SDLK_F10, Key::F10},
    {SDLK_F11, Key::F11},
    {SDLK_F12, Key::F12},
};

// The keypad without its digits.
constexpr NamedKey kKeypad[] = {
    {SDLK_KP_0, Key::Insert}, {SDLK_KP_PERIOD, Key::Delete}, {SDLK_KP_1, Key::End},
    {SDLK_KP_2, Key::Down},   {SDLK_KP_3, Key::PageDown},    {SDLK_KP_4, Key::Left},
    {SDLK_KP_6, Key::Right},  {SDLK_KP_7, Key::Home},        {SDLK_KP_8, Key::Up},
    {SDLK_KP_9, Key::PageUp},
};

template <std::size_t kCount>
Key Find(const NamedKey (&keys)[kCount], SDL_Keycode code) {
    const auto* const found = std::find_if(std::begin(keys), std::end(keys),
                                           [code](const NamedKey& k) { return k.code == code; });
    return found == std::end(keys) ? Key::None : found->key;
}

Key KeyOf(const SDL_Keysym& symbol) {
    if ((symbol.mod & KMOD_NUM) == 0) {
        if (const Key key = Find(kKeypad, symbol.sym); key != Key::None) return key;
    }
    return Find(kKeys, symbol.sym);
}

// The character on the key in the player's layout; 0 for a key without one.
char32_t CharacterOf(const SDL_Keysym& symbol) {
    const bool has_character = symbol.sym >= SDLK_SPACE && (symbol.sym & SDLK_SCANCODE_MASK) == 0;
    return has_character ? static_cast<char32_t>(symbol.sym) : 0;
}

// A shortcut on a layout without Latin letters goes by where the letter is on the usual keyboard.
char32_t ShortcutCharacterOf(const SDL_Keysym& symbol) {
    const bool is_letter = symbol.scancode >= SDL_SCANCODE_A && symbol.scancode <= SDL_SCANCODE_Z;
    if (symbol.sym <= 0x7F || !is_letter) return CharacterOf(symbol);
    return U'a' + static_cast<char32_t>(symbol.scancode - SDL_SCANCODE_A);
}

ui::Modifiers ModifiersOf(int mod) {
    return {.shift = (mod & KMOD_SHIFT) != 0,
            .control = (mod & KMOD_CTRL) != 0,
            .alt = (mod & KMOD_ALT) != 0};
}

// Whether the right Alt key, held with this one, chose another character of the key: the text that
// the key made is then already in the queue, and is not the key's own letter.
bool IsAltGraphCharacter(const SDL_Keysym& symbol) {
    if ((symbol.mod & KMOD_MODE) != 0) return true;
    if ((symbol.mod & KMOD_RALT) == 0) return false;
    SDL_Event next;
    if (SDL_PeepEvents(&next, 1, SDL_PEEKEVENT, SDL_TEXTINPUT, SDL_TEXTINPUT) != 1) return false;
    const std::string_view text = next.text.text;
    std::size_t at = 0;
    const char32_t made = text.empty() ? 0 : base::NextCodePoint(text, at);
    const char32_t letter = made >= U'A' && made <= U'Z' ? made - U'A' + U'a' : made;
    return letter != 0 && letter != CharacterOf(symbol);
}

ui::PointerInput Pointer(PointerAction action, int x, int y) {
    return {.action = action, .x = x, .y = y, .with = ModifiersOf(SDL_GetModState())};
}

std::optional<InputEvent> Button(const SDL_MouseButtonEvent& event, PointerAction action) {
    ui::PointerInput pointer = Pointer(action, event.x, event.y);
    pointer.button = event.button;
    pointer.clicks = event.clicks;
    return pointer;
}

// A wheel that turns sideways does what the wheel does with Shift.
std::optional<InputEvent> Wheel(const SDL_MouseWheelEvent& event) {
    ui::PointerInput pointer = Pointer(PointerAction::Wheel, event.mouseX, event.mouseY);
    const int sign = event.direction == SDL_MOUSEWHEEL_FLIPPED ? -1 : 1;
    pointer.wheel = sign * event.y;
    if (event.y == 0) {
        pointer.wheel = -sign * event.x;
        pointer.with.shift = true;
    }
    if (pointer.wheel == 0) return std::nullopt;
    return pointer;
}

std::optional<InputEvent> WindowEvent(const SDL_WindowEvent& event) {
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_DISPLAY_CHANGED:
            return ui::WindowResized{};
        case SDL_WINDOWEVENT_EXPOSED:
        case SDL_WINDOWEVENT_SHOWN:
        case SDL_WINDOWEVENT_RESTORED:
        case SDL_WINDOWEVENT_MAXIMIZED:
            return ui::WindowExposed{};
        case SDL_WINDOWEVENT_MINIMIZED:
        case SDL_WINDOWEVENT_HIDDEN:
            return ui::WindowMinimised{};
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            return ui::FocusChanged{true};
        case SDL_WINDOWEVENT_FOCUS_LOST:
            return ui::FocusChanged{false};
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<InputEvent> SdlInput::Translate(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
            return KeyDown(event.key);
        case SDL_TEXTINPUT:
            return Text(event.text);
        case SDL_MOUSEMOTION:
            return Pointer(PointerAction::Move, event.motion.x, event.motion.y);
        case SDL_MOUSEBUTTONDOWN:
            return Button(event.button, PointerAction::Press);
        case SDL_MOUSEBUTTONUP:
            return Button(event.button, PointerAction::Release);
        case SDL_MOUSEWHEEL:
            return Wheel(event.wheel);
        case SDL_WINDOWEVENT:
            return WindowEvent(event.window);
        case SDL_DISPLAYEVENT:  // one came, went or turned, perhaps the window's own
            return ui::WindowResized{};
        case SDL_QUIT:
            return ui::CloseRequested{};
        case SDL_DROPFILE: {
            ui::FileDropped dropped{event.drop.file};
            SDL_free(event.drop.file);
            return dropped;
        }
        default:
            return std::nullopt;
    }
}

std::optional<InputEvent> SdlInput::KeyDown(const SDL_KeyboardEvent& event) {
    const SDL_Keysym& symbol = event.keysym;
    ui::KeyPress press{.key = KeyOf(symbol), .with = ModifiersOf(symbol.mod)};
    press.repeat = event.repeat != 0;
    is_shortcut_ = (symbol.mod & KMOD_GUI) != 0;
    if (is_shortcut_) return std::nullopt;  // the desktop's own
    if (press.key != Key::None) return press;

    if (CharacterOf(symbol) == 0) return std::nullopt;
    press.key = Key::Character;
    if (IsAltGraphCharacter(symbol)) press.with = {.shift = press.with.shift};
    is_shortcut_ = press.with.control || press.with.alt;
    press.character = is_shortcut_ ? ShortcutCharacterOf(symbol) : CharacterOf(symbol);
    return press;
}

std::optional<InputEvent> SdlInput::Text(const SDL_TextInputEvent& event) {
    const std::string_view text = event.text;
    if (is_shortcut_ || text.empty()) return std::nullopt;
    return ui::TextInput{std::string(text)};
}

}  // namespace zo::platform
