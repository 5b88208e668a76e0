#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "bench/bench_commands.h"
#include "bench/bench_layout.h"
#include "bench/bench_run.h"
#include "bench/trace_notes.h"
#include "ui/canvas.h"
#include "ui/frame_line.h"
#include "ui/pressables.h"

namespace Kest {

// The timeline of a test: the lanes' names, their cells, the cursor, and the part of the test in
// sight.
class TracePanel {
public:
    // What the unlocking allows.
    struct Allowed {
        bool cursor = false;
        bool zoom = false;
    };

    explicit TracePanel(const kp::LoadedTicket& loaded) : lanes_(LanesOf(loaded)) {}

    std::function<void()> cursor_moved;  // after the player has moved it, or what its cell covers
    std::function<void(Command command)> act;  // what the buttons call

    int Lanes() const { return static_cast<int>(lanes_.size()); }
    const TraceView& View() const { return view_; }

    // In the layout's trace; the frame, where there is one, is drawn here.
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const BenchLayout& layout,
              const BenchRun& run, bool focused);
    // Left, Right, Up and Down as MoveCursor and ZoomBy, PgUp and PgDn by a view, Home and End.
    // Without a cursor the same keys scroll.
    bool Key(const zo::ui::KeyPress& key);
    bool Text(std::string_view utf8);  // + and -

    void Allow(Allowed allowed) { allowed_ = allowed; }
    void SetWidth(int width) { width_ = width; }
    // Takes the length of the test from its run; Draw does it too.
    void Measure(const BenchRun& run);
    void ShowStart();                       // without a cursor
    void ShowInFull() { view_.level = 0; }  // as close as it goes
    // Points out a lane's name.
    void SetMark(std::optional<Lane> lane) { mark_ = lane; }
    // Keeps the tick at three quarters of the view while a test runs.
    void Follow(kp::Tick tick);

    std::optional<kp::Tick> Cursor() const { return cursor_; }
    // The ticks of the cursor's cell.
    std::optional<TickRange> CursorTicks() const;
    // Puts the cursor there, in sight, or takes it away; nobody is told.
    void SetCursor(std::optional<kp::Tick> tick);
    // By cells; without a cursor it starts at the last tick run.
    void MoveCursor(int cells);
    // Closer (1) or wider (-1); the cursor, else the middle of the view, keeps its column.
    void ZoomBy(int levels);
    // As close as the whole test fits.
    void ShowWhole();

private:
    void DrawFrame(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane,
                   const BenchRun& run, bool focused);
    void DrawZoomButtons(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables,
                         zo::ui::FrameLine& top);
    void DrawBar(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, const zo::ui::Rect& pane);
    void DrawLanes(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables,
                   const BenchLayout& layout);
    void AnswerPointer(zo::ui::Pressables& pressables, const BenchLayout& layout);
    void PlaceCursor(std::int64_t tick);
    void ZoomAround(int levels, kp::Tick tick, int column);
    kp::Tick TickAt(int column) const;
    void Reveal(kp::Tick tick);
    void ScrollBy(std::int64_t ticks);
    void ScrollToEnd();
    kp::Tick Span() const { return view_.Span(width_); }

    std::vector<Lane> lanes_;
    TraceView view_;
    TraceCells cells_;
    Allowed allowed_;
    std::optional<Lane> mark_;
    std::optional<kp::Tick> cursor_;
    int width_ = 1;       // of the ticks' cells
    kp::Tick run_ = 0;    // ticks that the run has come to
    kp::Tick ticks_ = 1;  // of the whole test, as far as it is known
};

}  // namespace Kest
