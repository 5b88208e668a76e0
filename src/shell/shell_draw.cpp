#include <algorithm>

#include "shell/shell.h"

namespace Kest {

// Most frames of an idle program are a blink, for which nothing but the caret is touched.
const zo::ui::Frame& Shell::Draw() {
    if (redraw_ || !caret_due_) DrawPicture();
    BlinkCaret();
    return frame_;
}

void Shell::DrawPicture() {
    redraw_ = false;
    zo::ui::Canvas canvas(frame_, settings_.theme);
    frame_.caret = {};
    frame_.crt = settings_.crt && settings_.HasTube();
    frame_.margin =
        zo::ui::Colours(frame_.grid.look, settings_.theme, zo::ui::Role::Desktop).ground;
    canvas.Fill(canvas.Area(), U'░', zo::ui::Role::Desktop);
    pressables_.Clear();
    DrawScreens(canvas);
    DescribeFrame();
    DrawBars(canvas);
    pressables_stale_ = false;
    caret_ = frame_.caret;
    if (speaker_) Speak();
}

void Shell::Speak() {
    const Screen* top = Top();
    if (top == nullptr) return;
    Speech speech = ReadSpeech(frame_, top->FocusedPane());
    if (speech.focus.empty()) {
        speech.focus = record_.title;
    } else if (!record_.title.empty() && speech.focus != record_.title) {
        speech.focus = record_.title + ", " + speech.focus;
    }
    speech.focus = TitleInWords(speech.focus);
    const bool message = !message_.text.empty();
    speech.status = message ? message_.text : record_.standing;
    speech.is_alert = message ? message_.alert : record_.standing_alert;
    top->Describe(speech);
    speaker_->Tell(speech, now_);
}

// Only what lies on top answers the pointer and has a caret.
void Shell::DrawScreens(zo::ui::Canvas& canvas) {
    const Screen* top = Top();
    const auto draw = [&](Screen& screen) {
        frame_.caret = {};
        pressables_.SetOpen(&screen == top);
        if (speaker_ && &screen == top) LetGoOfFocus(frame_);
        screen.Draw(canvas, pressables_);
    };
    if (current_) draw(*current_);
    for (const auto& overlay : overlays_) draw(*overlay);
}

void Shell::DescribeFrame() {
    record_.standing.clear();
    record_.standing_alert = false;
    const auto describe = [&](const Screen& screen) {
        record_.ClearAllButStanding();
        screen.DescribeFrame(record_);
    };
    if (current_) describe(*current_);
    for (const auto& overlay : overlays_) describe(*overlay);
    NameControlPrefix();
}

// Behind the keys that every keyboard has.
void Shell::NameControlPrefix() {
    const std::string_view name = parts_.window ? parts_.window->ControlPrefix() : "";
    if (name.empty() || record_.keys.empty()) return;
    const auto first_with = std::ranges::find_if(record_.keys, [](const zo::ui::KeyItem& item) {
        return item.key.with != zo::ui::Modifiers{};
    });
    record_.keys.insert(first_with, {.cap = name,
                                     .word = "Ctrl",
                                     .hint = "Gives the next key Ctrl; twice Alt; three times "
                                             "makes F1 to F10 of 1 to 0."});
}

void Shell::DrawBars(zo::ui::Canvas& canvas) {
    if (!record_.bars) return;
    if (!record_.title.empty()) {
        DrawTopBar(canvas, pressables_,
                   {record_.title, record_.context, record_.detail, record_.place});
    }
    DrawKeyBar(canvas, pressables_, record_.keys, press_key_);
    const bool message = !message_.text.empty();
    DrawStatusLine(canvas, {.mode = record_.mode,
                            .message = message ? message_.text : record_.standing,
                            .alert = message ? message_.alert : record_.standing_alert,
                            .hint = pressables_.Hint(),
                            .right = record_.right,
                            .entry = record_.entry});
}

// In a window without the keyboard, and with motion off, the caret stands still.
bool Shell::CaretBlinks() const {
    return caret_.shape != zo::ui::CaretShape::None && focused_ && settings_.motion && !hold_caret_;
}

void Shell::BlinkCaret() {
    caret_due_ = false;
    next_blink_.reset();
    frame_.caret = caret_;
    if (!CaretBlinks()) return;
    next_blink_ = blink_.NextChange(now_);
    if (!blink_.IsLit(now_)) frame_.caret = {};
}

}  // namespace Kest
