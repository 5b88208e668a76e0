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
    ticks_ = std::max(
        {run.CalledFor().ticks, static_cast<kp::Tick>(run.Trace().card.size()), kp::Tick{1}});
    pressables.Add(pane).wheel = [this](int steps, const zo::ui::Modifiers&) {
        ScrollBy(-kWheelTicks * steps);
    };
    if (layout.size == BenchSize::Wide) {
        DrawFrame(canvas, pressables, pane, run, focused);
    } else {
        canvas.Fill(pane, U' ', Role::Lane);
    }
    cells_.Draw(run.Trace(), lanes_, view_, width_);
    DrawLanes(canvas, pressables, layout);
    if (focused && layout.size != BenchSize::Wide) {
        canvas.Tint({layout.labels.x, layout.labels.y, 4, 1}, Role::TitleActive);
    }
}

void TracePanel::DrawFrame(Canvas& canvas, Pressables& pressables, const Rect& pane,
                           const BenchRun& run, bool focused) {
    zo::ui::FrameLine top = zo::ui::DrawPane(canvas, pane, "TRACE", focused);
    top.LeftTitle(run.TestTitle(), focused ? Role::TitleActive : Role::Title);
    DrawBar(canvas, pressables, pane);
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
        canvas.Text(layout.labels.x, y, lane.name, Role::Lane);
        pressables.Add({layout.labels.x, y, layout.labels.width + width_, 1}, lane.hint);
    }
}

bool TracePanel::Key(const zo::ui::KeyPress& key) {
    using zo::ui::Key;
    if (key.with != zo::ui::Modifiers{}) return false;
    switch (key.key) {
        case Key::Left:
            ScrollBy(-std::int64_t{view_.Scale().ticks});
            return true;
        case Key::Right:
            ScrollBy(view_.Scale().ticks);
            return true;
        case Key::PageUp:
            ScrollBy(-std::int64_t{Span()});
            return true;
        case Key::PageDown:
            ScrollBy(Span());
            return true;
        case Key::Home:
            ShowStart();
            return true;
        case Key::End:
            ScrollToEnd();
            return true;
        default:
            return false;
    }
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
