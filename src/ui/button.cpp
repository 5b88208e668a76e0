#include "ui/button.h"

#include <algorithm>

#include "base/utf.h"

namespace zo::ui {
namespace {

struct ButtonGlyphs {
    char32_t left, right;
};

struct ButtonLook {
    ButtonGlyphs glyphs;
    Role role;
    Role ends;  // of the brackets
    Role hot;   // of the marked letter
};
constexpr ButtonLook kRest = {{U'[', U']'}, Role::Button, Role::Button, Role::ButtonHot};
constexpr ButtonLook kHovered = {{U'[', U']'}, Role::Button, Role::ButtonHot, Role::ButtonHot};
constexpr ButtonLook kFocused = {
    {U'►', U'◄'}, Role::ButtonFocus, Role::ButtonFocus, Role::ButtonFocus};
constexpr ButtonLook kHeld = {
    {U'[', U']'}, Role::ButtonPress, Role::ButtonPress, Role::ButtonPress};
constexpr ButtonLook kUnavailable = {
    {U'·', U'·'}, Role::ButtonOff, Role::ButtonOff, Role::ButtonOff};

const ButtonLook& LookOf(const Button& button, const Rect& area, const Pressables& pressables) {
    if (!button.enabled) return kUnavailable;
    if (pressables.Held(area)) return kHeld;
    if (button.focused) return kFocused;
    return pressables.Hovered(area) ? kHovered : kRest;
}

// A button on an overlay stands a little above it in the classic look, until it is pressed.
void DrawButtonShadow(Canvas& canvas, const Pressables& pressables, const Rect& area) {
    if (canvas.CurrentLook() != Look::Classic || pressables.Held(area)) return;
    canvas.PutShadow(area.Right(), area.y, U'▄', Role::Dialog);
    for (int x = area.x + 1; x <= area.Right(); ++x)
        canvas.PutShadow(x, area.y + 1, U'▀', Role::Dialog);
}

char32_t LowerCase(char32_t c) {
    return c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
}

bool IsLetter(const KeyPress& key) {
    return key.key == Key::Character && !key.with.control;
}

}  // namespace

int ButtonCells(const Button& button) {
    return Label(button.label).Cells() + (button.form == ButtonForm::Compact ? 2 : 4);
}

int DrawButton(Canvas& canvas, Pressables& pressables, Point at, const Button& button,
               std::function<void()> act) {
    const Rect area = {at.x, at.y, ButtonCells(button), 1};
    const ButtonLook& look = LookOf(button, area, pressables);
    const int pad = button.form == ButtonForm::Compact ? 1 : 2;
    canvas.Fill(area, U' ', look.role);
    canvas.Put(area.x, area.y, look.glyphs.left, look.ends);
    canvas.Text(area.x + pad, area.y, Label(button.label), look.role, look.hot);
    canvas.Put(area.Right() - 1, area.y, look.glyphs.right, look.ends);
    Pressable& entry = pressables.Add(area, button.hint);
    if (button.enabled) entry.act = std::move(act);
    return area.Right();
}

void ButtonRow::Set(std::vector<Item> items, int focused) {
    items_ = std::move(items);
    focused_ = focused;
}

std::string_view ButtonRow::FocusedHint() const {
    return items_[static_cast<std::size_t>(focused_)].hint;
}

bool ButtonRow::Key(const KeyPress& key) {
    const int last = static_cast<int>(items_.size()) - 1;
    const int step = key.with.shift ? last : 1;
    switch (key.key) {
        case Key::Left:
            focused_ = std::max(focused_ - 1, 0);
            return true;
        case Key::Right:
            focused_ = std::min(focused_ + 1, last);
            return true;
        case Key::Tab:
            focused_ = (focused_ + step) % (last + 1);
            return true;
        case Key::Enter:
            Act(focused_);
            return true;
        default:
            break;
    }
    if (!IsLetter(key)) return false;
    if (key.character == U' ') {
        Act(focused_);
        return true;
    }
    for (int index = 0; index <= last; ++index) {
        if (HotkeyOf(index) != key.character) continue;
        Act(index);
        return true;
    }
    return false;
}

char32_t ButtonRow::HotkeyOf(int index) const {
    const std::string& label = items_[static_cast<std::size_t>(index)].label;
    const char32_t marked = Label(label).Hotkey();
    if (marked != 0 || label.empty()) return marked;
    std::size_t at = 0;
    return LowerCase(base::NextCodePoint(label, at));
}

// The act may replace the row, so it runs from a copy.
void ButtonRow::Act(int index) {
    const std::function<void()> act = items_[static_cast<std::size_t>(index)].act;
    act();
}

void ButtonRow::Draw(Canvas& canvas, Pressables& pressables, const Rect& row) {
    constexpr int kBetween = 2;
    int cells = -kBetween;
    for (const Item& item : items_) cells += ButtonCells({.label = item.label}) + kBetween;
    int x = row.x + (row.width - cells) / 2;
    for (int index = 0; index < static_cast<int>(items_.size()); ++index) {
        const Item& item = items_[static_cast<std::size_t>(index)];
        const Button button = {
            .label = item.label, .hint = item.hint, .focused = index == focused_};
        const int end =
            DrawButton(canvas, pressables, {x, row.y}, button, [this, index] { Act(index); });
        DrawButtonShadow(canvas, pressables, {x, row.y, end - x, 1});
        x = end + kBetween;
    }
}

}  // namespace zo::ui
