#include "base/format.h"
#include "base/utf.h"
#include "base/wrap.h"
#include "content/ticket_pane.h"
#include "lint_parts.h"

namespace kp {
namespace {

constexpr int kPages = 4;  // that a reader may have to scroll through

// Cells that always fit where the text stands in one row.
constexpr std::size_t kShiftTitleCells = 9;
constexpr std::size_t kTitleCells = 14;
constexpr std::size_t kClientCells = 21;
constexpr std::size_t kTestNameCells = 24;

// The rows of the pane's whole text: title and client, then brief, paragraphs and note, each with
// an empty row before it, and the links to the binder, one a row.
int TextRows(const Ticket& ticket, int columns) {
    const auto rows = [columns](const std::string& text) {
        return 1 + static_cast<int>(base::WrapPlain(text, columns).size());
    };
    int count = 2 + rows(ticket.brief);
    for (const std::string& paragraph : ticket.text) count += rows(paragraph);
    if (!ticket.note.empty()) count += rows(ticket.note);
    if (!ticket.binder.empty()) count += 1 + static_cast<int>(ticket.binder.size());
    return count;
}

}  // namespace

void LintLength(const std::string& what, const std::string& text, std::size_t most,
                std::vector<std::string>& lines) {
    const std::size_t cells = base::CodePoints(text);
    if (cells <= most) return;
    lines.push_back(what + " \"" + text + base::Format("\" has %zu cells; %zu fit", cells, most));
}

std::vector<std::string> LintShiftProse(const Shift& shift) {
    std::vector<std::string> lines;
    LintLength("title", shift.title, kShiftTitleCells, lines);
    return lines;
}

std::vector<std::string> LintProse(const LoadedTicket& loaded) {
    const Ticket& ticket = loaded.ticket;
    std::vector<std::string> lines;
    LintLength("title", ticket.title, kTitleCells, lines);
    LintLength("client", ticket.client, kClientCells, lines);
    for (const Test& test : ticket.tests) {
        LintLength("test name", test.name, kTestNameCells, lines);
    }
    const TextArea pane = SmallestTicketPane(loaded);
    const int rows = TextRows(ticket, pane.columns);
    const int most = pane.rows * (1 + kPages);
    if (rows > most) {
        lines.push_back(
            base::Format("the text takes %d rows at 80x25; %d pages of scrolling "
                         "reach row %d",
                         rows, kPages, most));
    }
    return lines;
}

}  // namespace kp
