#include <algorithm>

#include "base/format.h"
#include "save/achievements.h"
#include "screens/board.h"
#include "shell/shell.h"
#include "ticket_facts.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Lines;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

std::vector<zo::ui::Column> TableColumns(const BoardLayout& layout) {
    using zo::ui::Align;
    return {{.head = "No.", .cells = 4},
            {.head = "Title", .cells = layout.title_cells - 1, .gap = 1},
            {.head = "Device", .cells = layout.device_cells - 1, .gap = 1},
            {.head = "Lines", .cells = 5, .align = Align::Right},
            {.head = "Ticks", .cells = 5, .align = Align::Right, .gap = 3},
            {.head = "Status", .cells = 9}};
}

std::string BenchTime(std::uint64_t seconds) {
    const std::uint64_t minutes = seconds / 60;
    if (minutes < 60) return std::to_string(minutes) + " min";
    return std::to_string(minutes / 60) + " h " + std::to_string(minutes % 60) + " min";
}

// The frame around rows of a pane, for the scrollbar in its side.
Rect Around(const Rect& pane, const Rect& rows) {
    return {pane.x, rows.y - 1, pane.width, rows.height + 2};
}

}  // namespace

void Board::LayOut(int columns, int rows) {
    const std::vector<kp::Shift>& shifts = shell_.Content().shifts;
    std::size_t longest = 1;
    for (const kp::Shift& shift : shifts) longest = std::max(longest, EntriesOf(shift).size());
    const BoardLayout layout =
        LayOutBoard(std::max(columns, Canvas::kLeastColumns), std::max(rows, Canvas::kLeastRows),
                    static_cast<int>(shifts.size()), static_cast<int>(longest));
    if (layout == layout_) return;
    layout_ = layout;
    tickets_.SetColumns(TableColumns(layout_));
    FillTickets();
}

void Board::Draw(Canvas& canvas, Pressables& pressables) {
    LayOut(canvas.Columns(), canvas.Rows());
    DrawShifts(canvas, pressables);
    const kp::Shift* shift = ShiftChosen();
    DrawPaneFrame(canvas, pressables, kTickets, layout_.tickets,
                  shift == nullptr ? "TICKETS" : "TICKETS ─ Shift " + ShiftName(*shift));
    tickets_.Draw(canvas, pressables, layout_.tickets, focus_.Has(kTickets));
    DrawTicket(canvas, pressables);
}

std::optional<Rect> Board::FocusedPane() const {
    if (focus_.Has(kShifts)) return layout_.shifts;
    if (focus_.Has(kTickets)) return layout_.tickets;
    return layout_.ticket;
}

void Board::DrawPaneFrame(Canvas& canvas, Pressables& pressables, Pane pane, const Rect& box,
                          std::string_view title) {
    zo::ui::DrawPane(canvas, box, title, focus_.Has(pane));
    pressables.Add(box).focus = [this, pane] { focus_.Focus(pane); };
}

void Board::DrawShifts(Canvas& canvas, Pressables& pressables) {
    const Rect& box = layout_.shifts;
    const bool focused = focus_.Has(kShifts);
    DrawPaneFrame(canvas, pressables, kShifts, box, "SHIFTS");
    const Lines lines = focused ? Lines::Double : Lines::Single;
    const Role frame = focused ? Role::FrameActive : Role::Frame;
    canvas.Separator(box, layout_.shift_list.Bottom(), lines, frame);
    shifts_.Draw(canvas, pressables, layout_.shift_list, Around(box, layout_.shift_list), focused);
    shift_text_.Draw(canvas, pressables, layout_.shift_text, Around(box, layout_.shift_text),
                     false);
    if (layout_.totals.Empty()) return;
    canvas.Separator(box, layout_.totals.y - 1, lines, frame);
    DrawTotals(canvas);
}

void Board::DrawTotals(Canvas& canvas) const {
    const TicketCount count = CountTickets(shell_);
    const std::string totals[][2] = {
        {"Tickets", base::Format("%d of %d closed", count.closed, count.all)},
        {"Achievements",
         base::Format("%zu of %zu", shell_.Progress().achievements.size(), Achievements().size())},
        {"Bench time", BenchTime(shell_.Progress().play_seconds)},
    };
    int y = layout_.totals.y;
    for (const auto& [name, value] : totals) {
        canvas.Text(layout_.totals.x, y, name, Role::PanelDim);
        canvas.TextRight(layout_.totals.Right(), y, value, Role::Panel);
        ++y;
    }
}

void Board::DrawTicket(Canvas& canvas, Pressables& pressables) {
    const Rect& box = layout_.ticket;
    const bool focused = focus_.Has(kTicket);
    DrawPaneFrame(canvas, pressables, kTicket, box, "TICKET");
    if (layout_.facts_cells == 0) {
        facts_.Draw(canvas, pressables, box, focused);
        return;
    }
    const Rect inner = box.Inner();
    const int split = inner.x + 1 + layout_.facts_cells;
    facts_.Draw(canvas, pressables, {inner.x + 1, inner.y, layout_.facts_cells - 2, inner.height},
                box, focused);
    text_.Draw(canvas, pressables, {split, inner.y, inner.Right() - 1 - split, inner.height}, box,
               focused);
}

}  // namespace Kest
