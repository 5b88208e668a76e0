#include "bench/coach_keys.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/format.h"
#include "bench/bench_commands.h"
#include "save/unlocking.h"

namespace Kest {
namespace {

std::vector<std::string_view> WordsOf(std::string_view text) {
    constexpr std::string_view kBetween = " .,:;()";
    std::vector<std::string_view> words;
    for (std::size_t from = text.find_first_not_of(kBetween); from != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBetween, from), text.size());
        words.push_back(text.substr(from, end - from));
        from = text.find_first_not_of(kBetween, end);
    }
    return words;
}

bool IsFunctionKey(std::string_view word) {
    constexpr std::string_view kDigits = "0123456789";
    return word.size() > 1 && word.front() == 'F' &&
           word.find_first_not_of(kDigits, 1) == std::string_view::npos;
}

bool LooksLikeKey(std::string_view word) {
    return IsFunctionKey(word) || word.starts_with("Ctrl+") || word.starts_with("Alt+") ||
           word.starts_with("Shift+");
}

std::optional<int> StageOfKey(std::string_view name) {
    for (const BenchKey& key : BenchKeys()) {
        if (zo::ui::KeyName(key.key) == name) return key.stage;
    }
    return std::nullopt;
}

// The lowest stage at which the ticket can be on the bench: the tickets before it are closed one by
// one until it opens.
int FirstStageOn(const kp::Content& content, std::string_view ticket_id) {
    Progress progress;
    const Unlocking unlocking{content, progress};
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        if (unlocking.IsTicketOpen(ticket_id)) break;
        progress.tickets[loaded->ticket.id].closed = true;
    }
    return unlocking.Stage();
}

void LintText(const std::string& where, std::string_view text, int stage,
              std::vector<std::string>& lines) {
    for (const std::string_view word : WordsOf(text)) {
        const std::optional<int> needed = StageOfKey(word);
        if (!needed && LooksLikeKey(word)) {
            lines.push_back(where + " names " + std::string(word) + ", which is no key");
        } else if (needed && *needed > stage) {
            lines.push_back(where + " names " + std::string(word) +
                            base::Format(", which opens at stage %d, at stage %d", *needed, stage));
        }
    }
}

}  // namespace

bool NamesKey(std::string_view text, std::string_view key) {
    return std::ranges::count(WordsOf(text), key) > 0;
}

bool NamesAnyKey(std::string_view text) {
    return std::ranges::any_of(WordsOf(text), LooksLikeKey);
}

std::vector<std::string> LintCoachKeys(const kp::Content& content) {
    std::vector<std::string> lines;
    for (const kp::CoachEntry& entry : content.coach) {
        const std::string where = "coach on " + entry.ticket + ": ";
        const int first = FirstStageOn(content, entry.ticket);
        for (const std::string& line : entry.lines) LintText(where + "line", line, first, lines);
        for (const kp::CoachStep& step : kp::kCoachSteps) {
            LintText(where + std::string(step.name), entry.Step(step.name),
                     std::max(first, step.stage), lines);
        }
    }
    return lines;
}

}  // namespace Kest
