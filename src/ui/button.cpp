#include "ui/button.h"

#include <algorithm>

#include "ui/key_grammar.h"

namespace zo::ui {
namespace {

constexpr int kBetween = 2;  // cells between the buttons of a row

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
void DrawShadow(Canvas& canvas, const Rect& area) {
    canvas.PutShadow(area.Right(), area.y, U'▄', Role::Dialog);
    for (int x = area.x + 1; x <= area.Right(); ++x) {
        canvas.PutShadow(x, area.y + 1, U'▀', Role::Dialog);
    }
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
    const bool raised = button.form == ButtonForm::Wide && &look != &kHeld;
    if (raised && canvas.CurrentLook() == Look::Classic) DrawShadow(canvas, area);
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
    const int count = static_cast<int>(items_.size());
    if (count == 0) return false;
    if (const int step = StepOf(key); step != 0) {
        focused_ = std::clamp(focused_ + step, 0, count - 1);
        return true;
    }
    if (const int step = TabStepOf(key); step != 0) {
        focused_ = (focused_ + count + step) % count;
        return true;
    }
    const char32_t letter = LetterOf(key);
    if (key.Is(Key::Enter) || letter == U' ') {
        Act(focused_);
        return true;
    }
    if (letter == 0) return false;
    for (int index = 0; index < count; ++index) {
        if (HotkeyOf(index) != letter) continue;
        Act(index);
        return true;
    }
    return false;
}

char32_t ButtonRow::HotkeyOf(int index) const {
    const std::string& label = items_[static_cast<std::size_t>(index)].label;
    const char32_t marked = Label(label).Hotkey();
    return marked != 0 ? marked : FirstLetter(label);
}

// The act may replace the row, so it runs from a copy.
void ButtonRow::Act(int index) {
    const std::function<void()> act = items_[static_cast<std::size_t>(index)].act;
    act();
}

int ButtonRow::Cells() const {
    int cells = -kBetween;
    for (const Item& item : items_) cells += ButtonCells({.label = item.label}) + kBetween;
    return cells;
}

void ButtonRow::Draw(Canvas& canvas, Pressables& pressables, const Rect& row, ButtonForm form) {
    Point at = {row.x + (row.width - Cells()) / 2, row.y};
    for (int index = 0; index < static_cast<int>(items_.size()); ++index) {
        const Item& item = items_[static_cast<std::size_t>(index)];
        const Button button = {
            .label = item.label, .hint = item.hint, .form = form, .focused = index == focused_};
        at.x = DrawButton(canvas, pressables, at, button, [this, index] { Act(index); }) + kBetween;
    }
}

}  // namespace zo::ui
