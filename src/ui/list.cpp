#include "ui/list.h"

#include <algorithm>

namespace zo::ui {
namespace {

constexpr int kMargin = 1;  // rows kept in sight around the chosen one

}  // namespace

void List::SetCount(int count) {
    count_ = count;
    Choose(chosen_);
}

void List::Choose(int index) {
    chosen_ = std::clamp(index, 0, std::max(count_ - 1, 0));
    reveal_ = true;
}

bool List::Key(const KeyPress& key) {
    if (key.with != Modifiers{}) return false;
    const int page = std::max(scroll_.Shown() - 1, 1);
    switch (key.key) {
        case Key::Up:
            Choose(chosen_ - 1);
            return true;
        case Key::Down:
            Choose(chosen_ + 1);
            return true;
        case Key::PageUp:
            Choose(chosen_ - page);
            return true;
        case Key::PageDown:
            Choose(chosen_ + page);
            return true;
        case Key::Home:
            Choose(0);
            return true;
        case Key::End:
            Choose(count_ - 1);
            return true;
        default:
            return false;
    }
}

void List::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused, Role role,
                const DrawRow& draw_row) {
    rows_ = pane.Inner();
    scroll_.Measure(count_, rows_.height);
    if (reveal_) scroll_.Reveal(chosen_, kMargin);
    reveal_ = false;
    const int end = std::min(scroll_.Top() + rows_.height, count_);
    for (int index = scroll_.Top(); index < end; ++index) {
        const bool chosen = index == chosen_;
        const Role row_role = !chosen ? role : focused ? Role::Sel : Role::SelOff;
        const Rect row = rows_.Row(index - scroll_.Top());
        canvas.Fill(row, U' ', row_role);
        if (chosen) canvas.Put(row.x, row.y, U'►', row_role);
        draw_row(canvas, {row.x + 1, row.y, row.width - 1, 1}, index, row_role);
    }
    pressables.Add(rows_).press = [this](const PointerPress& press) { Press(press); };
    scroll_.Draw(canvas, pressables, pane);
}

void List::Press(const PointerPress& press) {
    const int index = scroll_.Top() + press.at.y - rows_.y;
    if (index >= count_) return;
    Choose(index);
    if (press.clicks == 2 && open) open();
}

}  // namespace zo::ui
