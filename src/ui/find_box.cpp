#include "ui/find_box.h"

#include "base/format.h"
#include "ui/button.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr std::string_view kLabel = " Find ";
constexpr int kButtonCells = 3;
constexpr int kButtons = 3;

}  // namespace

void FindBox::SetCount(int found, int at) {
    found_ = found;
    at_ = at;
}

bool FindBox::Key(const KeyPress& key) {
    if (key.Is(Key::Escape)) {
        close();
        return true;
    }
    if (key.Is(Key::Enter) || key.Is(Key::F3)) {
        move(1);
        return true;
    }
    if ((key.key == Key::Enter || key.key == Key::F3) && key.with == Modifiers{.shift = true}) {
        move(-1);
        return true;
    }
    return field.Key(key);
}

// Ends before the column `right`; returns the column at which it begins.
int FindBox::DrawCount(Canvas& canvas, int right, int y) const {
    if (field.Empty()) return right;
    const bool none = found_ == 0;
    const std::string text = none ? "none" : base::Format("%d of %d", at_, found_);
    canvas.TextRight(right - 1, y, text, none ? Role::Warn : Role::PanelDim);
    return right - 2 - Cells(text);
}

void FindBox::Draw(Canvas& canvas, Pressables& pressables, const Rect& row, bool focused) {
    canvas.Fill(row, U' ', Role::Panel);
    const int from = canvas.Text(row.x, row.y, kLabel, Role::PanelDim);
    const int buttons = row.Right() - 2 - kButtons * kButtonCells;
    const int end = DrawCount(canvas, buttons, row.y);
    field.Draw(canvas, pressables, {from, row.y, end - from, 1}, focused);

    const auto button = [&](int index, std::string_view label, std::string_view hint,
                            std::function<void()> act) {
        DrawButton(canvas, pressables, {buttons + index * kButtonCells, row.y},
                   {.label = label, .hint = hint, .form = ButtonForm::Compact}, std::move(act));
    };
    button(0, "▲", "Shift+Enter: the one before.", [this] { move(-1); });
    button(1, "▼", "Enter: the next one.", [this] { move(1); });
    button(2, "x", "Esc: closes.", [this] { close(); });
}

}  // namespace zo::ui
