#include "ui/scroll.h"

#include <algorithm>

namespace zo::ui {
namespace {

constexpr int kWheelRows = 3;
constexpr int kEnds = 2;  // the cells of the two arrows

}  // namespace

void Scroll::Measure(int total, int shown) {
    total_ = total;
    shown_ = std::max(shown, 1);
    To(top_);
}

void Scroll::To(int top) {
    top_ = std::clamp(top, 0, std::max(total_ - shown_, 0));
}

void Scroll::Wheel(int steps) {
    By(-kWheelRows * steps);
}

void Scroll::Reveal(int row, int margin) {
    margin = std::min(margin, (shown_ - 1) / 2);
    if (row - margin < top_) To(row - margin);
    if (row + margin >= top_ + shown_) To(row + margin + 1 - shown_);
}

bool Scroll::Key(const KeyPress& key) {
    if (key.with != Modifiers{}) return false;
    switch (key.key) {
        case Key::Up:
            By(-1);
            return true;
        case Key::Down:
            By(1);
            return true;
        case Key::PageUp:
            By(1 - shown_);
            return true;
        case Key::PageDown:
            By(shown_ - 1);
            return true;
        case Key::Home:
            To(0);
            return true;
        case Key::End:
            To(total_);
            return true;
        default:
            return false;
    }
}

Scroll::Thumb Scroll::ThumbOf(int track) const {
    const int length = std::max(1, track * shown_ / total_);
    return {(track - length) * top_ / (total_ - shown_), length};
}

void Scroll::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane) {
    if (!Needed()) return;
    bar_ = {pane.Right() - 1, pane.y + 1, 1, pane.height - 2};
    const int track = bar_.height - kEnds;
    if (track < 1) return;
    const Thumb thumb = ThumbOf(track);
    canvas.Put(bar_.x, bar_.y, U'▲', Role::ScrollThumb);
    canvas.Fill({bar_.x, bar_.y + 1, 1, track}, U'░', Role::ScrollTrack);
    canvas.Fill({bar_.x, bar_.y + 1 + thumb.at, 1, thumb.length}, U'█',
                grip_ >= 0 && pressables.Pressed(bar_) ? Role::PanelBright : Role::ScrollThumb);
    canvas.Put(bar_.x, bar_.Bottom() - 1, U'▼', Role::ScrollThumb);

    pressables.Add(pane).wheel = [this](int steps, const Modifiers&) { Wheel(steps); };
    Pressable& bar = pressables.Add(bar_);
    bar.press = [this](const PointerPress& press) { Press(press); };
    bar.drag = [this](Point at) { Drag(at); };
}

void Scroll::Press(const PointerPress& press) {
    grip_ = -1;
    const int cell = press.at.y - bar_.y - 1;  // of the track; the arrows lie outside it
    const int track = bar_.height - kEnds;
    const Thumb thumb = ThumbOf(track);
    if (cell < 0) {
        By(-1);
    } else if (cell >= track) {
        By(1);
    } else if (cell < thumb.at) {
        By(1 - shown_);
    } else if (cell >= thumb.at + thumb.length) {
        By(shown_ - 1);
    } else {
        grip_ = cell - thumb.at;
    }
}

void Scroll::Drag(Point at) {
    if (grip_ < 0) return;
    const int track = bar_.height - kEnds;
    const int room = track - ThumbOf(track).length;
    if (room < 1) return;
    const int cell = std::clamp(at.y - bar_.y - 1 - grip_, 0, room);
    To((cell * (total_ - shown_) + room / 2) / room);
}

}  // namespace zo::ui
