#include "screens/board_layout.h"

#include <algorithm>

namespace Kest {
namespace {

using zo::ui::Rect;

constexpr int kWideFrom = 100;  // columns
constexpr int kAround = 3;      // the rows of the bars
constexpr int kTableRows = 9;   // of the wide board's tickets, with frame and heads
constexpr int kTableExtra = 3;  // frame and heads
constexpr int kNarrowShifts = 31;
constexpr int kLeastShiftText = 3;  // rows
constexpr int kTotals = 3;          // rows
constexpr int kFixedColumns = 32;   // the table's, without title and device
constexpr int kTextBesideFrom = 100;
constexpr int kFactsBesideText = 46;

// Below the lists on the left, from this row of the pane on: a line and the chosen shift's text.
void SplitShifts(BoardLayout& layout, int list_rows, bool has_totals) {
    const Rect inner = layout.shifts.Inner();
    layout.shift_list = {inner.x, inner.y, inner.width, list_rows};
    const int foot = has_totals ? kTotals + 1 : 0;
    const int top = list_rows + 1;
    layout.shift_text = {inner.x + 1, inner.y + top, inner.width - 2, inner.height - top - foot};
    if (has_totals) {
        layout.totals = {inner.x + 1, inner.Bottom() - kTotals, inner.width - 2, kTotals};
    }
}

BoardLayout Narrow(int columns, int rows, int shifts, int longest_shift) {
    BoardLayout layout;
    const int body = rows - kAround;
    const int table = std::min(longest_shift + kTableExtra, body / 2);
    layout.tickets = {0, 1 + body - table, columns, table};
    layout.shifts = {0, 1, kNarrowShifts, body - table};
    layout.ticket = {kNarrowShifts, 1, columns - kNarrowShifts, body - table};
    layout.title_cells = 18;
    layout.device_cells = 24;
    const int most = layout.shifts.Inner().height - 1 - kLeastShiftText;
    SplitShifts(layout, std::clamp(shifts, 1, most), false);
    return layout;
}

BoardLayout Wide(int columns, int rows) {
    BoardLayout layout;
    const int side = std::clamp(columns * 29 / 100, kNarrowShifts, 48);
    const int rest_columns = columns - side;
    layout.shifts = {0, 1, side, rows - kAround};
    layout.tickets = {side, 1, rest_columns, kTableRows};
    layout.ticket = {side, 1 + kTableRows, rest_columns, rows - kAround - kTableRows};
    const int rest = rest_columns - 4 - kFixedColumns;
    layout.title_cells = std::clamp(rest * 2 / 5, 15, 24);
    layout.device_cells = std::min(26, rest - layout.title_cells);
    layout.has_brief = true;
    layout.facts_cells = rest_columns >= kTextBesideFrom ? kFactsBesideText : 0;
    SplitShifts(layout, kTableRows - 1, true);  // so that the line meets the ticket's frame
    return layout;
}

}  // namespace

BoardLayout LayOutBoard(int columns, int rows, int shifts, int longest_shift) {
    return columns < kWideFrom ? Narrow(columns, rows, shifts, longest_shift) : Wide(columns, rows);
}

}  // namespace Kest
