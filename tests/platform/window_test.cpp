#include <SDL.h>
#include <doctest/doctest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <variant>

#include "scripted_window.h"

using platform_test::OpenWindow;
using platform_test::Script;
using platform_test::ScriptedPainter;
using zo::ui::InputEvent;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::PointerInput;
using zo::ui::TextInput;

namespace {

void PushKey(SDL_Keycode code, int mod, SDL_Scancode scancode = SDL_SCANCODE_UNKNOWN) {
    SDL_Event event = {};
    event.type = SDL_KEYDOWN;
    event.key.keysym = {scancode, code, static_cast<Uint16>(mod), 0};
    SDL_PushEvent(&event);
}

void PushText(const char* text) {
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    std::strncpy(event.text.text, text, sizeof event.text.text - 1);
    SDL_PushEvent(&event);
}

// The events as the program's keys would be written: "Ctrl+S", and text in quotation marks.
std::string Written(zo::platform::Window& window) {
    std::string written;
    // A poll may end at events that were pushed after the poll before it, so the second counts.
    for (int polls = 0; polls < 2;) {
        const std::optional<InputEvent> event = window.NextEvent(0);
        if (!event) {
            ++polls;
            continue;
        }
        if (!written.empty()) written += ' ';
        if (const auto* key = std::get_if<KeyPress>(&*event)) written += KeyName(*key);
        if (const auto* text = std::get_if<TextInput>(&*event)) written += '"' + text->text + '"';
    }
    return written;
}

}  // namespace

TEST_CASE("keys arrive as names, characters also as text, shortcuts without it") {
    Script script;
    const auto window = OpenWindow(script);
    const struct {
        SDL_Keycode code;
        int mod;
        const char* text;
        const char* written;
        SDL_Scancode scancode = SDL_SCANCODE_UNKNOWN;
    } cases[] = {
        {SDLK_F5, 0, "", "F5"},
        {SDLK_TAB, KMOD_LCTRL | KMOD_LSHIFT, "", "Ctrl+Shift+Tab"},
        {SDLK_a, 0, "a", "A \"a\""},
        {SDLK_a, KMOD_LSHIFT, "A", "Shift+A \"A\""},
        {SDLK_s, KMOD_LCTRL, "", "Ctrl+S"},
        {SDLK_x, KMOD_LALT, "x", "Alt+X"},                 // some systems send the text too
        {SDLK_x, KMOD_RALT, "x", "Alt+X"},                 // a layout without a third level
        {SDLK_q, KMOD_RALT, "@", "Q \"@\""},               // a layout with one
        {SDLK_q, KMOD_RALT | KMOD_LCTRL, "@", "Q \"@\""},  // and how Windows tells it
        {SDLK_7, KMOD_MODE, "{", "7 \"{\""},
        {SDLK_KP_8, 0, "", "Up"},
        {SDLK_KP_8, KMOD_NUM, "8", "\"8\""},
        {SDLK_KP_ENTER, 0, "", "Enter"},
        {0x44B, KMOD_LCTRL, "", "Ctrl+S", SDL_SCANCODE_S},  // Cyrillic
        {0x44B, 0, "\xD1\x8B", "\xD1\x8B \"\xD1\x8B\"", SDL_SCANCODE_S},
        {SDLK_e, KMOD_LGUI, "e", ""},
        {SDLK_LSHIFT, KMOD_LSHIFT, "", ""},
    };
    for (const auto& c : cases) {
        CAPTURE(c.written);
        PushKey(c.code, c.mod, c.scancode);
        if (*c.text != '\0') PushText(c.text);
        CHECK(Written(*window) == c.written);
    }
    PushText("\xC3\xA9");  // a dead key's character comes without a key
    CHECK(Written(*window) == "\"\xC3\xA9\"");
}

TEST_CASE("the wheel turned sideways is the wheel with Shift") {
    Script script;
    const auto window = OpenWindow(script);
    const struct {
        int x, y;
        Uint32 direction;
        int wheel;
        bool shift;
    } cases[] = {{0, 2, SDL_MOUSEWHEEL_NORMAL, 2, false},
                 {0, 2, SDL_MOUSEWHEEL_FLIPPED, -2, false},
                 {1, 0, SDL_MOUSEWHEEL_NORMAL, -1, true}};
    for (const auto& c : cases) {
        SDL_Event event = {};
        event.type = SDL_MOUSEWHEEL;
        event.wheel.x = c.x;
        event.wheel.y = c.y;
        event.wheel.direction = c.direction;
        event.wheel.mouseX = 12;
        SDL_PushEvent(&event);
        const auto input = window->NextEvent(1);
        REQUIRE((input && std::holds_alternative<PointerInput>(*input)));
        const auto& pointer = std::get<PointerInput>(*input);
        CHECK(pointer.wheel == c.wheel);
        CHECK(pointer.with.shift == c.shift);
        CHECK(pointer.x == 12);
    }
}

TEST_CASE("a file dropped on the window arrives by its name") {
    Script script;
    const auto window = OpenWindow(script);
    SDL_Event event = {};
    event.type = SDL_DROPFILE;
    event.drop.file = SDL_strdup("/there/m\u00e4dchen.lc1");
    SDL_PushEvent(&event);
    const auto input = window->NextEvent(1);
    REQUIRE((input && std::holds_alternative<zo::ui::FileDropped>(*input)));
    CHECK(std::get<zo::ui::FileDropped>(*input).path == "/there/m\u00e4dchen.lc1");
}

TEST_CASE("a window shows, waits no longer than asked, and closes when told to") {
    Script script;
    const auto window = OpenWindow(script);
    CHECK(window->Size() == zo::ui::PixelSize{640, 400});
    zo::ui::Frame frame;
    window->Show(frame);
    window->Show(frame);
    CHECK(script.paints == 2);

    const auto start = std::chrono::steady_clock::now();
    CHECK_FALSE(window->NextEvent(0.03));
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
    CHECK(waited.count() >= 0.03);
    CHECK(waited.count() < 2);

    window->SetClipboardText("two\r\nlines");
    CHECK(window->ClipboardText() == "two\r\nlines");
    window->SetSelectedText("kept by no system");
    CHECK(window->SelectedText() == "");

    SDL_Event quit = {};
    quit.type = SDL_QUIT;
    SDL_PushEvent(&quit);
    const auto event = window->NextEvent(-1);
    REQUIRE(event);
    CHECK(std::holds_alternative<zo::ui::CloseRequested>(*event));
}

TEST_CASE("without a display the failure says so, and what works without one") {
    SDL_ResetHint(SDL_HINT_VIDEODRIVER);
    for (const char* name : {"SDL_VIDEODRIVER", "DISPLAY", "WAYLAND_DISPLAY"}) unsetenv(name);
    Script script;
    const auto window = zo::platform::OpenSdlWindow({.title = "Vantor Kest", .size = {320, 200}},
                                                    std::make_unique<ScriptedPainter>(script));
    CHECK_FALSE(window);
    CHECK(window.Message() ==
          "There is no display to open a window on. lc1 and --capture work without one.");
}
