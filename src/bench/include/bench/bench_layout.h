#pragma once

#include <array>
#include <cstdint>

#include "ui/rect.h"

namespace Kest {

// What stands on the bench, in focus order. The strip is the row of tests and run controls.
enum class Panel : std::uint8_t {
    Firmware,
    Ticket,
    Hints,
    Card,
    Spec,
    Host,
    Strip,
    Trace,
    Notes,
    Count,
};
inline constexpr int kPanels = static_cast<int>(Panel::Count);

enum class BenchSize : std::uint8_t { Narrow, Medium, Wide };

// All that the bench's rectangles depend on: the grid and the ticket, never the run.
struct BenchShape {
    int columns = 80;
    int rows = 25;
    int lanes = 3;         // shown in the trace, 3 to 8
    bool coached = false;  // a row for the coach above the status line
    int card_rows = 6;     // of the CARD panel at the width of CardPaneWidth
    bool host = true;      // the ticket has host traffic
    bool operator==(const BenchShape&) const = default;
};

// Rectangles on the grid. Panels with the same rectangle are tabs of one pane; a panel that the
// ticket does not have is empty.
struct BenchLayout {
    BenchSize size = BenchSize::Narrow;
    std::array<zo::ui::Rect, kPanels> panels;
    zo::ui::Rect coach;   // empty on a ticket without coaching
    zo::ui::Rect labels;  // the trace's row of tick numbers and its lanes: the names,
    zo::ui::Rect ticks;   // and the cells of the ticks

    const zo::ui::Rect& Of(Panel panel) const { return panels[static_cast<std::size_t>(panel)]; }
};

BenchSize SizeOfBench(int columns, int rows);

// The width of the pane that CARD stands in, frame included.
int CardPaneWidth(int columns, int rows);

// Tiles the rows between the top bar and the status line. A grid below 80x25 is laid out as if it
// had 80 columns or 25 rows.
BenchLayout LayOutBench(const BenchShape& shape);

}  // namespace Kest
