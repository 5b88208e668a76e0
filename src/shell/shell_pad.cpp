#include <algorithm>

#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::PadButton;

// What the buttons do where a screen says nothing else.
constexpr PadKey kPadKeys[] = {
    {PadButton::Up, {.key = Key::Up}},
    {PadButton::Down, {.key = Key::Down}},
    {PadButton::Left, {.key = Key::Left}},
    {PadButton::Right, {.key = Key::Right}},
    {PadButton::A, {.key = Key::Enter}},
    {PadButton::B, {.key = Key::Escape}},
    {PadButton::X, {.key = Key::Character, .character = U' '}},
    {PadButton::Y, {.key = Key::F1}},
    {PadButton::LeftShoulder, {.key = Key::Tab, .with = {.shift = true}}},
    {PadButton::RightShoulder, {.key = Key::Tab}},
    {PadButton::Start, {.key = Key::F10}},
    {PadButton::Back, {.key = Key::F1}},
};

// What the right stick turns the wheel by, over the pane that has focus.
struct PadWheel {
    PadButton button;
    int steps;
    zo::ui::Modifiers with = {};
};
constexpr PadWheel kPadWheels[] = {
    {PadButton::RightStickUp, 1},
    {PadButton::RightStickDown, -1},
    {PadButton::RightStickLeft, 1, {.shift = true}},
    {PadButton::RightStickRight, -1, {.shift = true}},
};

const KeyPress* FindKey(std::span<const PadKey> keys, PadButton button) {
    const auto found = std::ranges::find(keys, button, &PadKey::button);
    return found == keys.end() ? nullptr : &found->key;
}

}  // namespace

void Shell::HandlePad(const zo::ui::PadPress& press) {
    Screen* const top = Top();
    if (top && !pending_ && top->AnyButton()) return;
    const KeyPress* key = top ? FindKey(top->PadKeys(), press.button) : nullptr;
    if (!key) key = FindKey(kPadKeys, press.button);
    if (!key) return ScrollByPad(press.button);
    KeyPress pressed = *key;
    pressed.repeat = press.repeat;
    HandleKey(pressed);
    drop_text_ = false;  // a button makes no text
}

void Shell::ScrollByPad(PadButton button) {
    const auto* const wheel = std::ranges::find(kPadWheels, button, &PadWheel::button);
    if (wheel == std::end(kPadWheels) || !TakesInput() || !Top()) return;
    const zo::ui::Rect screen = {0, 0, frame_.grid.columns, frame_.grid.rows};
    const zo::ui::Rect pane = Top()->FocusedPane().value_or(screen);
    const zo::ui::Point middle = {pane.x + pane.width / 2, pane.y + pane.height / 2};
    redraw_ |= pressables_.Scroll(middle, wheel->steps, wheel->with);
}

}  // namespace Kest
