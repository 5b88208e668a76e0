#include "ui/widgets.h"

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

// Half blocks on the ground to the right of the button and below it.
void DrawButtonShadow(Canvas& canvas, const Rect& area) {
    canvas.Put(area.Right(), area.y, U'▄', Role::DialogOff);
    canvas.Fill({area.x + 1, area.y + 1, area.width, 1}, U'▀', Role::DialogOff);
}

char32_t LowerCase(char32_t c) {
    return c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
}

bool IsLetter(const KeyPress& key) {
    return key.key == Key::Character && !key.with.control;
}

}  // namespace

FrameLine DrawPane(Canvas& canvas, const Rect& box, std::string_view title, bool focused) {
    canvas.Fill(box.Inner(), U' ', Role::Panel);
    canvas.Box(box, focused ? Lines::Double : Lines::Single,
               focused ? Role::FrameActive : Role::Frame);
    FrameLine top(canvas, box, Edge::Top);
    if (!title.empty()) top.LeftTitle(title, focused ? Role::TitleActive : Role::Title);
    return top;
}

void DrawOverlay(Canvas& canvas, const Rect& box, std::string_view title) {
    canvas.Shade(box);
    canvas.Fill(box.Inner(), U' ', Role::Dialog);
    canvas.Box(box, Lines::Double, Role::DialogFrame);
    FrameLine(canvas, box, Edge::Top).LeftTitle(title, Role::DialogTitle);
}

int ButtonCells(const Button& button) {
    return Label(button.label).Cells() + (button.form == ButtonForm::Wide ? 4 : 2);
}

int DrawButton(Canvas& canvas, Pressables& pressables, Point at, const Button& button,
               std::function<void()> act) {
    const Rect area = {at.x, at.y, ButtonCells(button), 1};
    const ButtonLook& look = LookOf(button, area, pressables);
    const int pad = button.form == ButtonForm::Wide ? 2 : 1;
    canvas.Fill(area, U' ', look.role);
    canvas.Put(area.x, area.y, look.glyphs.left, look.ends);
    canvas.Text(area.x + pad, area.y, Label(button.label), look.role, look.hot);
    canvas.Put(area.Right() - 1, area.y, look.glyphs.right, look.ends);
    const bool raised = button.form == ButtonForm::Wide && &look != &kHeld;
    if (raised && canvas.CurrentLook() == Look::Classic) DrawButtonShadow(canvas, area);
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
        x = DrawButton(canvas, pressables, {x, row.y}, button, [this, index] { Act(index); });
        x += kBetween;
    }
}

void Menu::Set(std::vector<Item> items) {
    items_ = std::move(items);
    chosen_ = std::clamp(chosen_, 0, std::max(static_cast<int>(items_.size()) - 1, 0));
}

std::string_view Menu::ChosenHint() const {
    return items_[static_cast<std::size_t>(chosen_)].hint;
}

bool Menu::Key(const KeyPress& key) {
    const int count = static_cast<int>(items_.size());
    switch (key.key) {
        case Key::Up:
            chosen_ = (chosen_ + count - 1) % count;
            return true;
        case Key::Down:
            chosen_ = (chosen_ + 1) % count;
            return true;
        case Key::Home:
            chosen_ = 0;
            return true;
        case Key::End:
            chosen_ = count - 1;
            return true;
        case Key::Enter:
            Act(chosen_);
            return true;
        default:
            break;
    }
    for (int index = 0; index < count; ++index) {
        if (!Answers(items_[static_cast<std::size_t>(index)], key)) continue;
        chosen_ = index;
        Act(index);
        return true;
    }
    return false;
}

bool Menu::Answers(const Item& item, const KeyPress& key) {
    if (!item.shortcut.empty() && KeyName(key) == item.shortcut) return true;
    return IsLetter(key) && Label(item.label).Hotkey() == key.character;
}

// The act may replace the items, so it runs from a copy.
void Menu::Act(int index) {
    const std::function<void()> act = items_[static_cast<std::size_t>(index)].act;
    act();
}

void Menu::Draw(Canvas& canvas, Pressables& pressables, Point at, std::string_view title) {
    const Rect box = {at.x, at.y, kWidth, Height()};
    DrawOverlay(canvas, box, title);
    for (int index = 0; index < static_cast<int>(items_.size()); ++index) {
        DrawItem(canvas, pressables, {box.x + 1, box.y + 2 + index, box.width - 2, 1}, index);
    }
}

void Menu::DrawItem(Canvas& canvas, Pressables& pressables, const Rect& row, int index) {
    const Item& item = items_[static_cast<std::size_t>(index)];
    const bool chosen = index == chosen_;
    const Role role = chosen ? Role::Sel : Role::Dialog;
    canvas.Fill(row, U' ', role);
    if (chosen) canvas.Put(row.x + 1, row.y, U'►', role);
    canvas.Text(row.x + 3, row.y, Label(item.label), role, chosen ? Role::SelHot : Role::DialogHot);
    canvas.TextRight(row.Right() - 2, row.y, item.shortcut, chosen ? role : Role::DialogDim);
    Pressable& entry = pressables.Add(row, item.hint);
    entry.press = [this, index](const PointerPress&) { chosen_ = index; };
    entry.act = [this, index] { Act(index); };
}

}  // namespace zo::ui
