#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "content/coach.h"
#include "content/content.h"

namespace Kest {

// What the coach knows of the bench.
struct CoachSight {
    int stage = 0;  // of the unlocking
    std::size_t tests = 1;
    bool has_instructions = false;
    bool is_right = false;  // the firmware would pass every test
    bool first_passed = false;
    bool second_chosen = false;  // to be run
    bool second_run = false;
    bool stepped = false;         // once at least
    bool commands = false;        // with vi keys, in Normal mode
    bool card_hidden = false;     // and F2 would show it
    std::string_view ghost = {};  // the text suggested; empty when none stands
};

// What the coach says now; empty when there is nothing to say. It names no key that does nothing.
std::string CoachLine(const kp::CoachEntry& entry, const CoachSight& sight);

// The instruction suggested to begin with.
std::string GhostOf(const kp::CoachEntry& entry, const kp::LoadedTicket& loaded);

// The names of the instructions that the ticket's reference uses and none before it does, each
// between blanks.
std::string NewInstructions(const kp::Content& content, const kp::LoadedTicket& loaded);

}  // namespace Kest
