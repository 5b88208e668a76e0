#include "ui/menu.h"

#include <algorithm>

#include "ui/key_grammar.h"

namespace zo::ui {
void Menu::Set(std::vector<Item> items) {
    items_ = std::move(items);
    chosen_ = std::clamp(chosen_, 0, std::max(static_cast<int>(items_.size()) - 1, 0));
}

std::string_view Menu::ChosenHint() const {
    return items_[static_cast<std::size_t>(chosen_)].hint;
}

bool Menu::Key(const KeyPress& key) {
    const int count = static_cast<int>(items_.size());
    if (count == 0) return false;
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
    const char32_t letter = LetterOf(key);
    return letter != 0 && Label(item.label).Hotkey() == letter;
}

// The act may replace the items, so it runs from a copy.
void Menu::Act(int index) {
    const std::function<void()> act = items_[static_cast<std::size_t>(index)].act;
    act();
}

void Menu::Draw(Canvas& canvas, Pressables& pressables, const Rect& box) {
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
