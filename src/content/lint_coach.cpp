#include <algorithm>
#include <array>

#include "base/format.h"
#include "card/assembler.h"
#include "content/lint.h"
#include "lint_parts.h"

namespace kp {
namespace {

constexpr std::size_t kCommentCells = 35;  // what the editor shows on the smaller grids
constexpr std::size_t kStepCells = 70;     // the coach's row on the smallest grid

constexpr std::array<std::string_view, 8> kMarks = {"spec-tx",  "tx",       "rx",    "host-in",
                                                    "host-out", "spec-out", "timer", "card"};
constexpr std::array<std::string_view, 3> kLimits = {"rom", "ram", "rx-buffer"};

template <std::size_t size>
void LintWord(const std::string& what, const std::string& word,
              const std::array<std::string_view, size>& known, std::vector<std::string>& lines) {
    if (word.empty() || std::ranges::count(known, word) > 0) return;
    lines.push_back("unknown " + what + " \"" + word + "\"");
}

// The starter with the ghost on its first empty line, where the caret opens.
std::string WithGhost(const std::string& starter, const std::string& ghost) {
    const std::size_t gap = starter.find("\n\n");
    if (gap == std::string::npos) return starter + ghost;
    return starter.substr(0, gap + 1) + ghost + starter.substr(gap + 1);
}

void LintGhost(const CoachEntry& entry, const Ticket& ticket, std::vector<std::string>& lines) {
    if (entry.ghost.empty()) return;
    const Assembly made = Assemble(WithGhost(ticket.starter, entry.ghost), ticket.machine);
    if (made.errors.empty()) return;
    lines.push_back("the starter with \"" + entry.ghost +
                    "\" does not assemble: " + made.errors.front().message);
}

void LintLines(const CoachEntry& entry, std::vector<std::string>& lines) {
    for (const std::string& line : entry.lines) {
        LintLength("line", line, kCommentCells, lines);
        if (!line.starts_with(';')) lines.push_back("line \"" + line + "\" is no comment");
    }
    for (const auto& step : entry.steps) LintLength("step", step.second, kStepCells, lines);
}

void LintParts(const CoachEntry& entry, const CardConfig& card, std::vector<std::string>& lines) {
    LintWord("mark", entry.mark, kMarks, lines);
    LintWord("limit", entry.limit, kLimits, lines);
    if (entry.limit == "ram" && card.ram == 0) lines.push_back("the card has no RAM to point out");
    if (entry.register_name.empty()) return;
    const auto number = FindRegister(entry.register_name);
    if (!number || *number > kD || !card.HasRegister(*number)) {
        lines.push_back("the card has no register " + entry.register_name + " to point out");
    }
}

}  // namespace

std::vector<std::string> LintCoach(const Content& content) {
    std::vector<std::string> all;
    for (const CoachEntry& entry : content.coach) {
        const LoadedTicket* loaded = content.FindTicket(entry.ticket);
        std::vector<std::string> lines;
        if (loaded == nullptr) {
            lines.emplace_back("there is no such ticket");
        } else {
            LintLines(entry, lines);
            LintGhost(entry, loaded->ticket, lines);
            LintParts(entry, loaded->ticket.machine, lines);
        }
        for (const std::string& line : lines) {
            all.push_back("coach on " + entry.ticket + ": " + line);
        }
    }
    return all;
}

}  // namespace kp
