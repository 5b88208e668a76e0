#include "shell/confirm.h"

#include <algorithm>

#include "base/wrap.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kWidth = 46;
constexpr int kWideWidth = 56;
constexpr std::size_t kWideFrom = 120;  // bytes of a message above which the dialog is wide
constexpr int kAround = 6;              // rows of the box that hold no message
constexpr int kSides = 6;               // columns of it
constexpr int kRowsKept = 11;           // rows of the screen that a message leaves

constexpr zo::ui::KeyItem kQuestionKeys[] = {
    {.cap = "←→", .word = "Choose"},
    {.key = {.key = Key::Enter}, .word = "Press"},
    {.key = {.key = Key::Escape}, .word = "Cancel"},
};
constexpr zo::ui::KeyItem kNoticeKeys[] = {{.key = {.key = Key::Enter}, .word = "OK"}};

}  // namespace

ConfirmDialog::ConfirmDialog(Shell& shell, Contents contents)
    : Screen(shell), contents_(std::move(contents)) {
    width_ = contents_.message.size() > kWideFrom ? kWideWidth : kWidth;
    lines_ = base::WrapEven(contents_.message, width_ - kSides);
    std::vector<zo::ui::ButtonRow::Item> items;
    for (int button = 0; button < static_cast<int>(contents_.buttons.size()); ++button) {
        items.push_back({.label = contents_.buttons[static_cast<std::size_t>(button)],
                         .act = [this, button] { Answer(button); }});
    }
    buttons_.Set(std::move(items), contents_.focused);
}

void ConfirmDialog::Draw(Canvas& canvas, zo::ui::Pressables& pressables) {
    const int total = static_cast<int>(lines_.size());
    const int shown = std::min(total, canvas.Rows() - kRowsKept);
    scroll_.Measure(total, shown);
    const Rect box = zo::ui::OverlayRect(canvas.Columns(), canvas.Rows(), width_, shown + kAround);
    DrawOverlay(canvas, box, contents_.title);
    for (int row = 0; row < shown; ++row) {
        canvas.Text(box.x + kSides / 2, box.y + 2 + row,
                    lines_[static_cast<std::size_t>(scroll_.Top() + row)], Role::Dialog);
    }
    scroll_.Draw(canvas, pressables, box);
    buttons_.Draw(canvas, pressables, {box.x + 1, box.Bottom() - 3, box.width - 2, 1});
}

void ConfirmDialog::DescribeFrame(FrameRecord& record) const {
    record.title = contents_.title;
    if (contents_.buttons.size() > 1) {
        record.keys.assign(std::begin(kQuestionKeys), std::end(kQuestionKeys));
    } else {
        record.keys.assign(std::begin(kNoticeKeys), std::end(kNoticeKeys));
    }
}

bool ConfirmDialog::Key(const KeyPress& key) {
    if (key.Is(Key::Escape)) {
        Answer(static_cast<int>(contents_.buttons.size()) - 1);
        return true;
    }
    return buttons_.Key(key) || scroll_.Key(key);
}

// Closed first, so that the answer may open the next screen.
void ConfirmDialog::Answer(int button) {
    shell_.CloseOverlay();
    if (contents_.answered) contents_.answered(button);
}

}  // namespace Kest
