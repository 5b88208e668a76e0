#pragma once

#include <vector>

#include "bench/bench_layout.h"
#include "bench/bench_run.h"
#include "ui/canvas.h"
#include "ui/pressables.h"

namespace Kest {

// The timeline of a test: the lanes' names, their cells and the part of the test in sight.
class TracePanel {
public:
    explicit TracePanel(const kp::LoadedTicket& loaded) : lanes_(LanesOf(loaded)) {}

    int Lanes() const { return static_cast<int>(lanes_.size()); }
    const TraceView& View() const { return view_; }

    // In the layout's trace; the frame, where there is one, is drawn here.
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const BenchLayout& layout,
              const BenchRun& run, bool focused);
    // Left and Right by a cell, PgUp and PgDn by a view, Home and End.
    bool Key(const zo::ui::KeyPress& key);

    void SetWidth(int width) { width_ = width; }
    void ShowStart() { view_.first = 0; }
    // Keeps the tick at three quarters of the view while a test runs.
    void Follow(kp::Tick tick);
    // Brings a tick into sight, a quarter of the view from the edges.
    void Reveal(kp::Tick tick);

private:
    void DrawFrame(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane,
                   const BenchRun& run, bool focused);
    void DrawBar(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane);
    void DrawLanes(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables,
                   const BenchLayout& layout);
    void ScrollBy(std::int64_t ticks);
    void ScrollToEnd();
    kp::Tick Span() const { return view_.Span(width_); }

    std::vector<Lane> lanes_;
    TraceView view_;
    TraceCells cells_;
    int width_ = 1;       // of the ticks' cells
    kp::Tick ticks_ = 0;  // of the whole test, as far as it is known
};

}  // namespace Kest
