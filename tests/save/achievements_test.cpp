#include "save/achievements.h"

#include <doctest/doctest.h>

#include <string>

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

// A state of the progress: the tickets from `first` on closed, so many of them, alike.
struct State {
    int first = 0, count = 0;  // in campaign order
    int lines = kReferenceLines + 1;
    int ticks = kReferenceTicks + 1;
    int hints = 1;
    int pages = 0;
    std::string_view also = {};  // one more ticket
};

Kest::Progress ProgressOf(const kp::Content& content, const State& state) {
    Kest::Progress progress;
    const Kest::TicketRecord record = {.closed = true,
                                       .best_ticks = state.ticks,
                                       .best_lines = state.lines,
                                       .hints_revealed = state.hints};
    const auto tickets = content.Tickets();
    for (int k = state.first; k < state.first + state.count; ++k) {
        progress.tickets[tickets[static_cast<std::size_t>(k)]->ticket.id] = record;
    }
    if (!state.also.empty()) progress.tickets[std::string(state.also)] = record;
    for (int page = 0; page < state.pages; ++page) {
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
    const struct {
        State state;
        std::string_view earns;
    } cases[] = {
        {{}, ""},
        {{.count = 1}, "FIRST_SHIP"},
        {{.also = "9-99-gone"}, ""},
        {{.count = 1, .lines = kReferenceLines}, "FIRST_SHIP"},
        {{.count = 1, .lines = kReferenceLines - 1}, "UNDER_PAR FIRST_SHIP"},
        {{.count = 1, .ticks = kReferenceTicks - 1}, "UNDER_PAR FIRST_SHIP"},
        {{.count = 5}, "FIRST_SHIP"},
        {{.count = 6}, "FIRST_SHIP SHIFT_1"},
        {{.first = 6, .count = 6}, "FIRST_SHIP SHIFT_2"},
        {{.first = 12, .count = 5}, "FIRST_SHIP SHIFT_3"},  // without the optional ticket
        {{.first = 13, .count = 5}, "FIRST_SHIP BY_HAND"},
        {{.first = 18, .count = 6}, "FIRST_SHIP SHIFT_4"},
        {{.first = 24, .count = 12}, "FIRST_SHIP SHIFT_5 SHIFT_6"},
        {{.first = 36, .count = 6}, "FIRST_SHIP SHIFT_7 XMODEM"},
        {{.first = 39, .count = 1}, "FIRST_SHIP"},
        {{.first = 40, .count = 1}, "FIRST_SHIP"},
        {{.count = 41},
         "FIRST_SHIP SHIFT_1 SHIFT_2 SHIFT_3 SHIFT_4 SHIFT_5 SHIFT_6 BY_HAND XMODEM"},
        {{.count = 42},
         "FIRST_SHIP SHIFT_1 SHIFT_2 SHIFT_3 SHIFT_4 SHIFT_5 SHIFT_6 SHIFT_7 ALL_TICKETS BY_HAND "
         "XMODEM"},
        {{.first = 1, .count = 1, .lines = 3}, "UNDER_PAR FIRST_SHIP"},
        {{.first = 1, .count = 1, .lines = 2}, "UNDER_PAR FIRST_SHIP TWO_LINES"},
        {{.count = 4, .lines = kReferenceLines, .ticks = kReferenceTicks}, "FIRST_SHIP"},
        {{.count = 5, .lines = kReferenceLines}, "FIRST_SHIP PAR_LINES_5"},
        {{.count = 5, .ticks = kReferenceTicks}, "FIRST_SHIP PAR_TICKS_5"},
        {{.count = 19, .lines = kReferenceLines},
         "FIRST_SHIP SHIFT_1 SHIFT_2 SHIFT_3 PAR_LINES_5 BY_HAND"},
        {{.count = 20, .lines = kReferenceLines, .ticks = kReferenceTicks},
         "FIRST_SHIP SHIFT_1 SHIFT_2 SHIFT_3 PAR_LINES_5 PAR_LINES_20 PAR_TICKS_5 PAR_TICKS_20 "
         "BY_HAND"},
        {{.pages = 19}, ""},
        {{.pages = 20}, "BINDER_20"},
        {{.first = 1, .count = 9, .hints = 0}, "FIRST_SHIP"},
        {{.first = 1, .count = 10, .hints = 0}, "FIRST_SHIP NO_HINTS"},
        {{.first = 1, .count = 10, .hints = 1}, "FIRST_SHIP"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.earns);
        CAPTURE(c.state.count);
        Kest::Progress progress = ProgressOf(content, c.state);
        CHECK(Ids(Award(content, progress)) == c.earns);
        CHECK(Award(content, progress).empty());  // once
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
        Kest::Progress progress = ProgressOf(content, {.count = 1,
                                                       .lines = kReferenceLines + c.best_lines,
                                                       .ticks = kReferenceTicks + c.best_ticks});
        const Kest::Close close = {.ticket_id = "1-01",
                                   .lines = kReferenceLines + c.lines,
                                   .ticks = kReferenceTicks + c.ticks};
        CloseTicket(progress, close);
        Award(content, progress, &close);
        CHECK(progress.achievements.contains("BOTH_PAR") == c.earns);
    }
}

TEST_CASE("a shift of which nothing could be loaded is not complete") {
    kp::Content content = Campaign();
    content.shifts[1].tickets.clear();
    Kest::Progress progress;
    CHECK(Award(content, progress).empty());
}
