#pragma once

#include <optional>
#include <span>

#include "bench/trace_cells.h"

namespace Kest {

// How telling a card's state is: of several ticks in one cell the highest is the one to show.
int RankOf(kp::CardState state);

// The first tick from which on a deadline is worth drawing: its byte cannot follow the one before
// at once.
kp::Tick DeadlineOpens(std::span<const kp::TraceEvent> events, const kp::TimingWindow& window);

// One drawing of a trace: what there is to draw, and where its ticks fall. It draws what stands for
// itself; the bytes of a lane, which must agree on their room, are TraceCells' own.
struct TraceDrawing {
    const TraceData& data;
    const TraceView& view;
    int width;

    bool Sees(std::int64_t column) const { return column >= 0 && column < width; }
    std::optional<int> ColumnOf(kp::Tick tick) const;
    // The events of the ticks in sight.
    std::span<const kp::TraceEvent> Events() const;

    void DrawNumbers(std::span<TraceCell> row) const;
    void DrawFailure(std::span<TraceCell> ticks, std::span<TraceCell> cells, int rows) const;
    void DrawCursor(std::span<TraceCell> ticks, std::span<TraceCell> cells, int rows) const;
    void DrawBrackets(std::span<TraceCell> row) const;
    void DrawLooseNotes(std::span<TraceCell> row) const;
    void DrawTimer(std::span<TraceCell> row) const;
    void DrawCard(std::span<TraceCell> row) const;
    // Whether a byte is another than the one called for, or one too many.
    static bool IsWrong(const kp::TraceEvent& event, std::span<const SpecByte> called_for);
};

}  // namespace Kest
