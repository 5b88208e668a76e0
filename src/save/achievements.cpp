#include "save/achievements.h"

#include <algorithm>

#include "save/unlocking.h"

namespace Kest {

// What achievements are judged by.
struct Standing {
    Standing(const kp::Content& campaign, const Progress& state, const Close* close);

    bool HasClosed(std::string_view ticket_id) const { return progress.IsClosed(ticket_id); }
    bool HasClosedShift(int number) const;

    const kp::Content& content;
    const Progress& progress;
    int tickets = 0;
    int closed = 0;
    // Of the closed tickets:
    int lines_at_par = 0;
    int ticks_at_par = 0;
    int under_par = 0;
    int without_hints = 0;
    bool both_at_par_at_once = false;  // in the close
};

namespace {

constexpr std::string_view kLoopback = "1-02-loopback";
constexpr std::string_view kByHand = "3-06-crc-by-hand";
constexpr std::string_view kXmodemSend = "7-04-xmodem-send";
constexpr std::string_view kXmodemReceive = "7-05-xmodem-receive";

template <int number>
bool ShiftClosed(const Standing& s) {
    return s.HasClosedShift(number);
}

constexpr Achievement kAchievements[] = {
    {"FIRST_SHIP", "First Ticket", "Close your first ticket.", 2,
     [](const Standing& s) { return s.closed >= 1; }},
    {"SHIFT_1", "Shift 1 Complete", "Close every ticket in Shift 1.", 3, ShiftClosed<1>},
    {"SHIFT_2", "Shift 2 Complete", "Close every ticket in Shift 2.", 4, ShiftClosed<2>},
    {"SHIFT_3", "Shift 3 Complete", "Close every required ticket in Shift 3.", 5, ShiftClosed<3>},
    {"SHIFT_4", "Shift 4 Complete", "Close every ticket in Shift 4.", 6, ShiftClosed<4>},
    {"SHIFT_5", "Shift 5 Complete", "Close every ticket in Shift 5.", 7, ShiftClosed<5>},
    {"SHIFT_6", "Shift 6 Complete", "Close every ticket in Shift 6.", 8, ShiftClosed<6>},
    {"SHIFT_7", "Shift 7 Complete", "Close every ticket in Shift 7.", 9, ShiftClosed<7>},
    {"ALL_TICKETS", "All 42 Tickets", "Close every ticket, including the optional 3-06.", 10,
     [](const Standing& s) { return s.closed >= 1 && s.closed == s.tickets; }},
    {"TWO_LINES", "Two Lines", "Close 1-02, Loopback, in two lines.", 17,
     [](const Standing& s) {
         return s.HasClosed(kLoopback) &&
                s.progress.tickets.find(kLoopback)->second.best_lines <= 2;
     }},
    {"BY_HAND", "CRC by Hand", "Close 3-06, the optional ticket in Shift 3.", 15,
     [](const Standing& s) { return s.HasClosed(kByHand); }},
    {"PAR_LINES_5", "Five Short Programs", "Match or beat the reference line count on 5 tickets.",
     11, [](const Standing& s) { return s.lines_at_par >= 5; }},
    {"PAR_LINES_20", "Twenty Short Programs",
     "Match or beat the reference line count on 20 tickets.", 12,
     [](const Standing& s) { return s.lines_at_par >= 20; }},
    {"PAR_TICKS_5", "Five Fast Programs", "Match or beat the reference tick count on 5 tickets.",
     13, [](const Standing& s) { return s.ticks_at_par >= 5; }},
    {"PAR_TICKS_20", "Twenty Fast Programs",
     "Match or beat the reference tick count on 20 tickets.", 14,
     [](const Standing& s) { return s.ticks_at_par >= 20; }},
    {"UNDER_PAR", "Beat the Reference", "Beat the reference line count or tick count on a ticket.",
     1, [](const Standing& s) { return s.under_par >= 1; }},
    {"BOTH_PAR", "Both Scores",
     "Match or beat both reference scores on one ticket with the same firmware.", 0,
     [](const Standing& s) { return s.both_at_par_at_once; }},
    {"BINDER_20", "Twenty Binder Pages", "Open 20 pages of the Spec Binder.", 18,
     [](const Standing& s) { return s.progress.binder_seen.size() >= 20; }},
    {"NO_HINTS", "No Hints", "Close 10 tickets without revealing a hint.", 19,
     [](const Standing& s) { return s.without_hints >= 10; }},
    {"XMODEM", "XMODEM", "Close both XMODEM tickets, 7-04 and 7-05.", 16,
     [](const Standing& s) { return s.HasClosed(kXmodemSend) && s.HasClosed(kXmodemReceive); }},
};

}  // namespace

Standing::Standing(const kp::Content& campaign, const Progress& state, const Close* close)
    : content(campaign), progress(state) {
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        ++tickets;
        if (!HasClosed(loaded->ticket.id)) continue;
        const TicketRecord& record = progress.tickets.find(loaded->ticket.id)->second;
        const int lines = loaded->reference.lines;
        const auto ticks = static_cast<std::int32_t>(loaded->reference.ticks);
        ++closed;
        lines_at_par += record.best_lines <= lines;
        ticks_at_par += record.best_ticks <= ticks;
        under_par += record.best_lines < lines || record.best_ticks < ticks;
        without_hints += record.hints_revealed == 0;
        if (close != nullptr && close->ticket_id == loaded->ticket.id) {
            both_at_par_at_once = close->lines <= lines && close->ticks <= ticks;
        }
    }
}

// A shift of which nothing was loaded is not closed by that.
bool Standing::HasClosedShift(int number) const {
    const Unlocking unlocking{content, progress};
    const int required = unlocking.RequiredCount(number);
    return required > 0 && unlocking.ClosedCount(number) == required;
}

std::span<const Achievement> Achievements() {
    return kAchievements;
}

std::vector<const Achievement*> Award(const kp::Content& content, Progress& progress,
                                      const Close* close) {
    const Standing standing(content, progress, close);
    std::vector<const Achievement*> earned;
    for (const Achievement& achievement : kAchievements) {
        const bool has = progress.achievements.contains(achievement.id);
        if (!has && achievement.earned(standing)) earned.push_back(&achievement);
    }
    std::ranges::sort(earned, {}, &Achievement::turn);
    for (const Achievement* achievement : earned) {
        progress.achievements.emplace(achievement->id);
    }
    return earned;
}

}  // namespace Kest
