#include "bench/trace_panel.h"

#include <algorithm>

#include "ui/widgets.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kBarIndent = 11;  // cells of the bottom line before and behind the scrollbar
constexpr std::int64_t kWheelTicks = 3;

}  // namespace

void TracePanel::Draw(Canvas& canvas, Pressables& pressables, const BenchLayout& layout,
                      const BenchRun& run, bool focused) {
    const Rect& pane = layout.Of(Panel::Trace);
    TraceData trace = run.Trace();
    trace.cursor = cursor_;
    Measure(run);
    AnswerPointer(pressables, layout);
    if (layout.size == BenchSize::Wide) {
        DrawFrame(canvas, pressables, pane, run, focused);
    } else {
        canvas.Fill(pane, U' ', Role::Lane);
    }
    cells_.Draw(trace, lanes_, view_, width_);
    DrawLanes(canvas, pressables, layout);
    if (focused && layout.size != BenchSize::Wide) {
        canvas.Tint({layout.labels.x, layout.labels.y, 4, 1}, Role::TitleActive);
    }
}

void TracePanel::Measure(const BenchRun& run) {
    run_ = static_cast<kp::Tick>(run.Trace().card.size());
    ticks_ = std::max({run.CalledFor().ticks, run_, kp::Tick{1}});
}

void TracePanel::DrawFrame(Canvas& canvas, Pressables& pressables, const Rect& pane,
                           const BenchRun& run, bool focused) {
    zo::ui::FrameLine top = zo::ui::DrawPane(canvas, pane, "TRACE", focused);
    if (allowed_.zoom) DrawZoomButtons(canvas, pressables, top);
    top.LeftTitle(run.TestTitle(), focused ? Role::TitleActive : Role::Title);
    DrawBar(canvas, pressables, pane);
}

void TracePanel::DrawZoomButtons(Canvas& canvas, Pressables& pressables, zo::ui::FrameLine& top) {
    const std::optional<Rect> room = top.Right(" [+][-][Whole] ", Role::Frame);
    if (!room) return;
    zo::ui::Point at{room->x + 1, room->y};
    for (const ZoomControl& zoom : kZoomControls) {
        const zo::ui::Button button{
            .label = zoom.label, .hint = zoom.hint, .form = zo::ui::ButtonForm::Compact};
        at.x = zo::ui::DrawButton(canvas, pressables, at, button,
                                  [this, command = zoom.command] { act(command); });
    }
}

// The part of the test in sight, in the frame's bottom line.
void TracePanel::DrawBar(Canvas& canvas, Pressables& pressables, const Rect& pane) {
    const Rect bar{pane.x + kBarIndent, pane.Bottom() - 1, pane.width - 2 * kBarIndent, 1};
    const int track = bar.width - 2;
    if (track < 1) return;
    const std::int64_t total = std::max(ticks_, view_.first + Span());
    const int length = std::max(1, static_cast<int>(track * std::int64_t{Span()} / total));
    const std::int64_t hidden = std::max<std::int64_t>(total - Span(), 1);
    const int at = static_cast<int>((track - length) * std::int64_t{view_.first} / hidden);
    canvas.Put(bar.x, bar.y, U'◄', Role::ScrollThumb);
    canvas.Fill({bar.x + 1, bar.y, track, 1}, U'░', Role::ScrollTrack);
    canvas.Fill({bar.x + 1 + at, bar.y, length, 1}, U'█', Role::ScrollThumb);
    canvas.Put(bar.Right() - 1, bar.y, U'►', Role::ScrollThumb);
    const auto add = [&](int x, int cells, auto scroll) {
        pressables.Add({x, bar.y, cells, 1}).press = [this, scroll](const zo::ui::PointerPress&) {
            scroll(*this);
        };
    };
    const int thumb = bar.x + 1 + at;
    add(bar.x, 1, [](TracePanel& trace) { trace.ScrollBy(-1); });
    add(bar.x + 1, at, [](TracePanel& trace) { trace.ScrollBy(-std::int64_t{trace.Span()}); });
    add(thumb + length, track - at - length,
        [](TracePanel& trace) { trace.ScrollBy(trace.Span()); });
    add(bar.Right() - 1, 1, [](TracePanel& trace) { trace.ScrollBy(1); });
}

void TracePanel::DrawLanes(Canvas& canvas, Pressables& pressables, const BenchLayout& layout) {
    canvas.Text(layout.labels.x, layout.labels.y, "TICK", Role::Lane);
    for (int row = 0; row < cells_.Rows(); ++row) {
        const int y = layout.ticks.y + row;
        int x = layout.ticks.x;
        for (const TraceCell& cell : cells_.Row(row)) {
            canvas.Put(x++, y, cell.glyph, cell.role, cell.style);
        }
        if (row == 0) continue;
        const LaneInfo& lane = Info(lanes_[static_cast<std::size_t>(row) - 1]);
        const bool marked = mark_ == lanes_[static_cast<std::size_t>(row) - 1];
        const Role role = marked ? Role::CoachMark : Role::Lane;
        const int end = canvas.Text(layout.labels.x, y, lane.name, role);
        if (marked) canvas.Put(end, y, U'◄', role);
        pressables.Add({layout.labels.x, y, layout.labels.width + width_, 1}, lane.hint);
    }
}

// A press or drag puts the cursor on the cell's tick; the wheel scrolls, with Ctrl it zooms.
void TracePanel::AnswerPointer(Pressables& pressables, const BenchLayout& layout) {
    const int left = layout.ticks.x;
    zo::ui::Pressable& lanes = pressables.Add(layout.Of(Panel::Trace));
    lanes.wheel = [this, &pressables, left](int steps, const zo::ui::Modifiers& with) {
        if (!with.control) return ScrollBy(-kWheelTicks * steps * view_.Scale().ticks);
        if (!allowed_.zoom) return;
        const int column = pressables.Pointer() ? pressables.Pointer()->x - left : 0;
        ZoomAround(steps, TickAt(column), std::clamp(column, 0, width_ - 1));
    };
    if (!allowed_.cursor) return;
    const auto place = [this, left](int x) { PlaceCursor(TickAt(x - left)); };
    const Rect ticks{left, layout.ticks.y, width_, static_cast<int>(lanes_.size()) + 1};
    zo::ui::Pressable& cells = pressables.Add(ticks);
    cells.press = [place](const zo::ui::PointerPress& press) { place(press.at.x); };
    cells.drag = [place](zo::ui::Point at) { place(at.x); };
}

// The first tick of a column, also of one beyond the edges.
kp::Tick TracePanel::TickAt(int column) const {
    const Zoom& zoom = view_.Scale();
    const std::int64_t ticks = std::int64_t{column} * zoom.ticks / zoom.cells;
    return static_cast<kp::Tick>(std::max<std::int64_t>(view_.first + ticks, 0));
}

bool TracePanel::Key(const zo::ui::KeyPress& key) {
    using zo::ui::Key;
    if (key.with != zo::ui::Modifiers{}) return false;
    const std::int64_t at = cursor_.value_or(run_ - std::min<kp::Tick>(run_, 1));
    const std::int64_t view = Span();
    switch (key.key) {
        case Key::Left:
            MoveCursor(-1);
            return true;
        case Key::Right:
            MoveCursor(1);
            return true;
        case Key::Up:
            ZoomBy(1);
            return true;
        case Key::Down:
            ZoomBy(-1);
            return true;
        case Key::PageUp:
            allowed_.cursor ? PlaceCursor(at - view) : ScrollBy(-view);
            return true;
        case Key::PageDown:
            allowed_.cursor ? PlaceCursor(at + view) : ScrollBy(view);
            return true;
        case Key::Home:
            allowed_.cursor ? PlaceCursor(0) : ScrollBy(-std::int64_t{ticks_});
            return true;
        case Key::End:
            allowed_.cursor ? PlaceCursor(std::int64_t{ticks_} - 1) : ScrollToEnd();
            return true;
        default:
            return false;
    }
}

bool TracePanel::Text(std::string_view utf8) {
    if (utf8 != "+" && utf8 != "-") return false;
    ZoomBy(utf8 == "+" ? 1 : -1);
    return true;
}

void TracePanel::ShowStart() {
    view_.first = 0;
    cursor_.reset();
}

std::optional<TickRange> TracePanel::CursorTicks() const {
    if (!cursor_) return std::nullopt;
    // The ticks that share a cell are counted from the view's first one.
    const auto span = static_cast<kp::Tick>(view_.Scale().ticks);
    const kp::Tick first =
        *cursor_ >= view_.first ? *cursor_ - (*cursor_ - view_.first) % span : *cursor_;
    return TickRange{first, std::min(first + span, std::max(ticks_, first + 1)) - 1};
}

void TracePanel::SetCursor(std::optional<kp::Tick> tick) {
    cursor_ = tick;
    if (cursor_) Reveal(*cursor_);
}

void TracePanel::PlaceCursor(std::int64_t tick) {
    SetCursor(static_cast<kp::Tick>(std::clamp<std::int64_t>(tick, 0, std::int64_t{ticks_} - 1)));
    if (cursor_moved) cursor_moved();
}

void TracePanel::MoveCursor(int cells) {
    const std::int64_t ticks = std::int64_t{cells} * view_.Scale().ticks;
    if (!allowed_.cursor) return ScrollBy(ticks);
    const kp::Tick last_run = run_ - std::min<kp::Tick>(run_, 1);
    PlaceCursor(cursor_ ? *cursor_ + ticks : last_run);
}

void TracePanel::ZoomBy(int levels) {
    if (!allowed_.zoom) return;
    const std::int64_t at_cursor = cursor_ ? view_.Column(*cursor_) : -1;
    if (at_cursor >= 0 && at_cursor < width_) {
        ZoomAround(levels, *cursor_, static_cast<int>(at_cursor));
    } else {
        ZoomAround(levels, TickAt(width_ / 2), width_ / 2);
    }
}

// The tick keeps its column.
void TracePanel::ZoomAround(int levels, kp::Tick tick, int column) {
    view_.level = std::clamp(view_.level - levels, 0, static_cast<int>(kZooms.size()) - 1);
    const Zoom& zoom = view_.Scale();
    const auto before = static_cast<kp::Tick>(std::int64_t{column} * zoom.ticks / zoom.cells);
    view_.first = std::min(tick - std::min(tick, before), ticks_ - 1);
    if (cursor_ && cursor_moved) cursor_moved();
}

void TracePanel::ShowWhole() {
    view_.level = 0;
    while (Span() < ticks_ && view_.level + 1 < static_cast<int>(kZooms.size())) ++view_.level;
    view_.first = 0;
    if (cursor_ && cursor_moved) cursor_moved();
}

// The last tick may come as far as the left edge.
void TracePanel::ScrollBy(std::int64_t ticks) {
    view_.first = static_cast<kp::Tick>(
        std::clamp<std::int64_t>(view_.first + ticks, 0, std::int64_t{ticks_} - 1));
}

void TracePanel::ScrollToEnd() {
    view_.first = ticks_ - std::min(ticks_, Span());
}

void TracePanel::Follow(kp::Tick tick) {
    const kp::Tick before = Span() * 3 / 4;
    view_.first = tick - std::min(tick, before);
}

void TracePanel::Reveal(kp::Tick tick) {
    const kp::Tick margin = Span() / 4;
    if (tick < view_.first + margin) view_.first = tick - std::min(tick, margin);
    if (tick + margin >= view_.first + Span()) Follow(tick);
}

}  // namespace Kest
