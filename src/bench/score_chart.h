#pragma once

#include <span>

#include "save/records.h"
#include "ui/canvas.h"

namespace Kest {

// A player's passing verifies of a ticket, lines against ticks.
struct ScoreChart {
    std::span<const Scores> verifies;  // in their order; the last one is this run's
    Scores par;
};

inline constexpr int kChartAround = 4;  // rows of the frame and of the words under it
inline constexpr int kLeastChart = 4;   // rows of places for verifies that are worth a chart

// Few lines stand low and few ticks left, so that better is towards the lower left corner. Verifies
// that none of the others betters in both stand out, and the par's row and column are ruled.
void DrawScoreChart(zo::ui::Canvas& canvas, const zo::ui::Rect& area, const ScoreChart& chart);

}  // namespace Kest
