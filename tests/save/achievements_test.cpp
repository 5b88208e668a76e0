#include "save/achievements.h"

#include <doctest/doctest.h>

#include <map>
#include <sstream>
#include <string>

#include "support/cases.h"

namespace {

constexpr int kReferenceLines = 10;
constexpr int kReferenceTicks = 100;

// The campaign's 42 tickets in seven shifts, each with the same reference.
kp::Content Campaign() {
    kp::Content content;
    for (int shift = 1; shift <= 7; ++shift) {
        content.shifts.emplace_back().number = shift;
        for (int order = 1; order <= 6; ++order) {
            kp::LoadedTicket& loaded = content.shifts.back().tickets.emplace_back();
            const std::string number = std::to_string(shift) + "-0" + std::to_string(order);
            loaded.ticket.id = number == "1-02"   ? "1-02-loopback"
                               : number == "3-06" ? "3-06-crc-by-hand"
                               : number == "7-04" ? "7-04-xmodem-send"
                               : number == "7-05" ? "7-05-xmodem-receive"
                                                  : number;
            loaded.ticket.optional = number == "3-06";
            loaded.reference.lines = kReferenceLines;
            loaded.reference.ticks = kReferenceTicks;
        }
    }
    return content;
}

// A state as achievements.txt writes it: words with a number each.
Kest::Progress ProgressOf(const kp::Content& content, const std::string& words) {
    std::map<std::string, int> state = {{"lines", 11}, {"ticks", 101}, {"hints", 1}};
    std::istringstream stream(words);
    for (std::string word; stream >> word;) stream >> state[word];
    Kest::Progress progress;
    const auto tickets = content.Tickets();
    for (int k = state["first"]; k < state["first"] + state["count"]; ++k) {
        progress.tickets[tickets[static_cast<std::size_t>(k)]->ticket.id] = {
            .closed = true,
            .best_ticks = state["ticks"],
            .best_lines = state["lines"],
            .hints_revealed = state["hints"]};
    }
    for (int page = 0; page < state["pages"]; ++page) {
        progress.binder_seen.insert(std::to_string(page));
    }
    return progress;
}

std::string Ids(const std::vector<const Kest::Achievement*>& earned) {
    std::string ids;
    for (const Kest::Achievement* achievement : earned) {
        ids += (ids.empty() ? "" : " ") + std::string(achievement->id);
    }
    return ids;
}

constexpr int kAtPar = 0, kUnder = -1, kOver = 1;

}  // namespace

TEST_CASE("there are twenty achievements, in their order") {
    std::string ids;
    for (const Kest::Achievement& achievement : Kest::Achievements()) {
        ids += std::string(achievement.id) + " ";
        CHECK_FALSE(achievement.title.empty());
        CHECK(achievement.description.ends_with('.'));
    }
    CHECK(
        ids ==
        "FIRST_SHIP SHIFT_1 SHIFT_2 SHIFT_3 SHIFT_4 SHIFT_5 SHIFT_6 SHIFT_7 ALL_TICKETS TWO_LINES "
        "BY_HAND PAR_LINES_5 PAR_LINES_20 PAR_TICKS_5 PAR_TICKS_20 UNDER_PAR BOTH_PAR BINDER_20 "
        "NO_HINTS XMODEM ");
}

TEST_CASE("what a state of the progress earns, in the order in which it is announced") {
    const kp::Content content = Campaign();
    for (const support::Case& steps : support::Cases("save/achievements.txt")) {
        Kest::Progress progress;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            if (step.key == "state") {
                progress = ProgressOf(content, step.value);
            } else {
                REQUIRE(step.key == "earns");
                CHECK(Ids(Award(content, progress)) == step.value);
                CHECK(Award(content, progress).empty());  // once
            }
        }
    }
}

TEST_CASE("both scores are earned by one close alone") {
    const kp::Content content = Campaign();
    const struct {
        int best_lines, best_ticks;  // against the reference, before the close
        int lines, ticks;            // of the close
        bool earns;
    } cases[] = {
        {kOver, kOver, kAtPar, kAtPar, true},   {kOver, kOver, kUnder, kAtPar, true},
        {kOver, kOver, kAtPar, kOver, false},   {kOver, kOver, kOver, kUnder, false},
        {kAtPar, kAtPar, kAtPar, kOver, false},  // the bests are of two programs
    };
    for (const auto& c : cases) {
        Kest::Progress progress;
        progress.tickets["1-01"] = {.closed = true,
                                    .best_ticks = kReferenceTicks + c.best_ticks,
                                    .best_lines = kReferenceLines + c.best_lines};
        const Kest::Close close = {.ticket_id = "1-01",
                                   .lines = kReferenceLines + c.lines,
                                   .ticks = kReferenceTicks + c.ticks};
        CloseTicket(progress, close);
        Award(content, progress, &close);
        CHECK(progress.achievements.contains("BOTH_PAR") == c.earns);
    }
}

TEST_CASE("neither a shift of which nothing was loaded nor a ticket that is gone earns anything") {
    kp::Content content = Campaign();
    content.shifts[1].tickets.clear();
    Kest::Progress progress;
    progress.tickets["9-99-gone"].closed = true;
    CHECK(Award(content, progress).empty());
}
