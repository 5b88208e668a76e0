#include <cmath>

#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::InputEvent;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::PointerAction;
using zo::ui::PointerInput;

constexpr int kLeftButton = 1;
constexpr int kMiddleButton = 2;

bool IsFullScreenKey(const KeyPress& key) {
    const bool alt_enter = key.key == Key::Enter && key.with == zo::ui::Modifiers{.alt = true};
    return key.Is(Key::F11) || alt_enter;
}

bool IsCloseKey(const KeyPress& key) {
    return key.key == Key::F4 && key.with == zo::ui::Modifiers{.alt = true};
}

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

// The screens hear of the time first: what an event starts begins now, not with the last frame.
void Shell::Handle(const InputEvent& event) {
    now_ = parts_.clock.Seconds();
    UpdateScreens();
    redraw_ |= blink_.Stir(now_);
    const Screen* const top = Top();
    const int highlight = top ? top->Highlight() : 0;
    std::visit(Overloaded{
                   [&](const KeyPress& key) { HandleKey(key); },
                   [&](const zo::ui::TextInput& input) { HandleText(input.text); },
                   [&](const PointerInput& pointer) { HandlePointer(pointer); },
                   [&](const zo::ui::PadPress& press) { HandlePad(press); },
                   [&](const zo::ui::WindowResized& resized) {
                       SetWindow(resized.size, resized.display_scale);
                   },
                   [&](const zo::ui::WindowExposed&) {
                       minimised_ = false;
                       redraw_ = true;
                   },
                   [&](const zo::ui::WindowMinimised&) { minimised_ = true; },
                   [&](const zo::ui::FocusChanged& focus) { HandleFocus(focus.active); },
                   [&](const zo::ui::CloseRequested&) { Quit(); },
                   [&](const zo::ui::FileDropped& file) { HandleFile(file.path); },
               },
               event);
    const bool stays = top && top == Top() && !pending_;
    if (stays && top->Highlight() != highlight) Sound().Play(Effect::Move);
}

// What was held when another window took the keyboard is let go there, unheard.
void Shell::HandleFocus(bool active) {
    focused_ = active;
    Sound().SetFocused(active);
    drop_text_ = false;
    if (!active) pressables_.LetGo();
    blink_.Restart(now_);
    redraw_ = true;
}

void Shell::HandleKey(const KeyPress& key) {
    drop_text_ = false;
    blink_.Restart(now_);
    redraw_ = true;
    if (IsFullScreenKey(key)) {
        if (!key.repeat) ToggleFullScreen();
        return;
    }
    if (key.Is(Key::F12)) {
        if (!key.repeat) CopyPicture();
        return;
    }
    if (IsCloseKey(key)) {
        if (!key.repeat) Quit();
        return;
    }
    Screen* top = Top();
    if (!top || pending_) return;
    const bool types = key.key == Key::Character && !key.with.control && !key.with.alt;
    const bool used = top->Key(key);
    drop_text_ = used && types;
}

// What is seen, to be put into a mail or a chat.
void Shell::CopyPicture() {
    SetClipboardText(zo::ui::TextDump(frame_));
    SetStatus("Screen copied as text.");
}

// The letter that answered a dialog must not be typed into the editor beneath it.
void Shell::HandleText(const std::string& utf8) {
    const bool dropped = drop_text_;
    drop_text_ = false;
    Screen* top = Top();
    if (dropped || !top || pending_) return;
    top->Text(utf8);
    redraw_ = true;
}

// Only a screen that takes one, and that nothing covers, is handed its text.
void Shell::HandleFile(const std::string& path) {
    constexpr std::size_t kMost = 1 << 20;  // bytes
    Screen* top = Top();
    if (!top || pending_) return;
    const base::Result<std::string> text = parts_.disk.Read(base::TextPath(path));
    const std::string name = base::PathText(base::TextPath(path).filename());
    if (!text) return SetStatus("Cannot read " + name + ": " + text.Message(), Alert::Yes);
    if (text->size() > kMost) return SetStatus(name + " is too long for firmware.", Alert::Yes);
    if (!top->TakesFile(name, *text)) SetStatus("A ticket's bench takes files.");
    redraw_ = true;
}

// In the modern look a row's height is no whole number of pixels, so the row is looked up.
zo::ui::Point Shell::CellAt(int x, int y) const {
    const zo::ui::Grid& grid = frame_.grid;
    const auto cell = [](int pixels, float size) {
        return static_cast<int>(std::floor(static_cast<float>(pixels) / size));
    };
    const int column = cell(x - grid.LeftPixels(), static_cast<float>(grid.cell_width));
    int row = cell(y - grid.TopPixels(), grid.cell_height);
    if (y >= grid.RowTop(row + 1)) ++row;
    if (y < grid.RowTop(row)) --row;
    return {column, row};
}

void Shell::HandlePointer(const PointerInput& pointer) {
    if (!TakesInput()) return;
    const zo::ui::Point at = CellAt(pointer.x, pointer.y);
    bool changed = false;
    switch (pointer.action) {
        case PointerAction::Move:
            changed = pressables_.Move(at);
            break;
        case PointerAction::Wheel:
            changed = pressables_.Wheel(at, pointer.wheel, pointer.with);
            break;
        case PointerAction::Press:
            if (Top() && Top()->AnyButton()) return;
            if (pointer.button == kLeftButton) {
                changed = pressables_.Press({at, pointer.clicks, pointer.with});
            } else if (pointer.button == kMiddleButton) {
                changed = pressables_.PressMiddle(at);
            }
            if (changed) blink_.Restart(now_);
            break;
        case PointerAction::Release:
            if (pointer.button == kLeftButton) changed = pressables_.Release(at);
            break;
    }
    redraw_ |= changed;
}

}  // namespace Kest
