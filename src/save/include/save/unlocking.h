#pragma once

#include <cstdint>
#include <string_view>

#include "content/content.h"
#include "save/progress.h"

namespace Kest {

// What the player may open follows from the campaign, the progress and the "open all" setting.
struct Unlocking {
    const kp::Content& content;
    const Progress& progress;
    bool open_all = false;

    bool IsTicketOpen(std::string_view ticket_id) const;
    bool IsShiftOpen(int number) const;
    int ClosedCount(int shift_number) const;    // closed required tickets of a shift
    int RequiredCount(int shift_number) const;  // its required tickets
    int Stage() const;                          // 0 to 3
    // The next ticket in campaign order after this one, if it is open; null otherwise.
    const kp::LoadedTicket* NextTicket(std::string_view ticket_id) const;
    // The ticket that Continue opens: the current one, else the first open one that is not closed,
    // else the first; null without tickets.
    const kp::LoadedTicket* ContinueTicket() const;
};

}  // namespace Kest
