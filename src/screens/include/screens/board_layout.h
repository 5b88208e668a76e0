#pragma once

#include "ui/rect.h"

namespace Kest {

// Where everything stands on the ticket board.
struct BoardLayout {
    zo::ui::Rect shifts;
    zo::ui::Rect tickets;
    zo::ui::Rect ticket;

    // Inside the pane of the shifts: the list, the chosen shift's text below a line, and below
    // another line, where there is room for them, the totals.
    zo::ui::Rect shift_list;
    zo::ui::Rect shift_text;
    zo::ui::Rect totals;  // empty without them

    // The table's columns, with the blank behind each.
    int title_cells = 0;
    int device_cells = 0;

    // How the chosen ticket is told: its facts alone, the task behind them, or the whole text in a
    // column beside them.
    bool has_brief = false;
    int facts_cells = 0;  // with the text beside them; else 0

    bool operator==(const BoardLayout&) const = default;
};

BoardLayout LayOutBoard(int columns, int rows, int shifts, int longest_shift);

}  // namespace Kest
