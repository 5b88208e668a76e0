#include "shell/confirm.h"

#include "base/utf.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Role;

constexpr int kWidth = 46;
constexpr int kWideWidth = 56;
constexpr std::size_t kMostForNarrow = 120;  // characters of a message

int WidthFor(std::string_view message) {
    return base::CodePoints(message) > kMostForNarrow ? kWideWidth : kWidth;
}

constexpr zo::ui::KeyItem kQuestionKeys[] = {
    {.cap = "←→", .word = "Choose"},
    {.key = {.key = Key::Enter}, .word = "Press"},
    {.key = {.key = Key::Escape}, .word = "Cancel"},
};
constexpr zo::ui::KeyItem kNoticeKeys[] = {{.key = {.key = Key::Enter}, .word = "OK"}};

}  // namespace

ConfirmDialog::ConfirmDialog(Shell& shell, Contents contents)
    : Screen(shell),
      contents_(std::move(contents)),
      dialog_(contents_.title,
              {{.text = contents_.message, .role = Role::Dialog, .wrap = zo::ui::Wrap::Even}},
              {.width = WidthFor(contents_.message)}) {
    dialog_.text.copy = [this](const std::string& text) { shell_.SetClipboardText(text); };
    std::vector<zo::ui::ButtonRow::Item> items;
    for (int button = 0; button < static_cast<int>(contents_.buttons.size()); ++button) {
        items.push_back({.label = contents_.buttons[static_cast<std::size_t>(button)],
                         .act = [this, button] { Answer(button, SoundOf(button)); }});
    }
    dialog_.buttons.Set(std::move(items), contents_.focused);
}

void ConfirmDialog::Draw(Canvas& canvas, zo::ui::Pressables& pressables) {
    dialog_.Draw(canvas, pressables);
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
        Answer(LastButton(), Effect::Back);
        return true;
    }
    return dialog_.Key(key);
}

int ConfirmDialog::LastButton() const {
    return static_cast<int>(contents_.buttons.size()) - 1;
}

// The last of two buttons leaves everything as it was.
Effect ConfirmDialog::SoundOf(int button) const {
    if (button > 0 && button == LastButton()) return Effect::Back;
    return button == contents_.focused ? Effect::Open : Effect::Click;
}

// Closed first, so that the answer may open the next screen.
void ConfirmDialog::Answer(int button, Effect sound) {
    shell_.Sound().Play(sound);
    shell_.CloseOverlay();
    if (contents_.answered) contents_.answered(button);
}

}  // namespace Kest
