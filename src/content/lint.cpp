#include "content/lint.h"

#include <algorithm>

#include "base/format.h"
#include "lint_parts.h"
#include "peers/factory.h"

namespace kp {
namespace {

void Append(const std::vector<std::string>& more, std::vector<std::string>& lines) {
    lines.insert(lines.end(), more.begin(), more.end());
}

void AppendLed(const std::string& by, const std::vector<std::string>& more,
               std::vector<std::string>& lines) {
    for (const std::string& line : more) lines.push_back(by + line);
}

// What the far ends make of their settings. Copies of a test share theirs, and most tests the
// ticket's.
std::vector<std::string> LintFarEnds(const Ticket& ticket) {
    json::Remarks remarks;
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        if (ticket.tests[k].copy > 1) continue;
        json::Remarks more;
        if (!CreatePeer(ticket, k, &more)) continue;
        for (std::string& line : more) {
            if (std::ranges::find(remarks, line) == remarks.end()) {
                remarks.push_back(std::move(line));
            }
        }
    }
    return remarks;
}

std::vector<std::string> LintTicket(const LoadedTicket& loaded, Session& session) {
    std::vector<std::string> lines = LintFarEnds(loaded.ticket);
    Append(LintProse(loaded), lines);
    Append(LintDeck(loaded, session), lines);
    return lines;
}

}  // namespace

std::vector<std::string> Lint(const ContentStore& store, const std::vector<Solutions>* kept) {
    json::Remarks remarks;
    const Content content = LoadContent(store, &remarks);
    std::vector<std::string> lines = content.problems;
    Append(remarks, lines);
    Session session;
    for (const Shift& shift : content.shifts) {
        AppendLed(base::Format("shift %d: ", shift.number), LintShiftProse(shift), lines);
        for (const LoadedTicket& loaded : shift.tickets) {
            AppendLed(loaded.ticket.id + ": ", LintTicket(loaded, session), lines);
        }
    }
    Append(LintBinder(content), lines);
    Append(LintCoach(content), lines);
    if (kept != nullptr) Append(LintSolutions(content, *kept), lines);
    return lines;
}

}  // namespace kp
