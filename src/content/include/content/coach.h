#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"
#include "content/store.h"
#include "json/fields.h"

namespace kp {

// The steps of a first ticket's course, and the stage of the unlocking from which each may show.
struct CoachStep {
    std::string_view name;
    int stage;
};
inline constexpr std::array<CoachStep, 7> kCoachSteps = {{
    {"first", 0},       // no instruction yet
    {"first-step", 1},  // some, and stepping is open
    {"first-run", 0},   // the same, before it is
    {"test2", 1},       // test 1 has passed, and another can be chosen
    {"ready", 0},       // whatever could be run has passed
    {"solved", 1},      // the program is right, and stepping is open
    {"solved-run", 0},  // the same, before it is
}};

// What the coach has to say and to show on one ticket.
struct CoachEntry {
    std::string ticket;              // its id
    std::vector<std::string> lines;  // comment lines above the starter
    std::string ghost;               // an instruction suggested at the caret
    std::string mark;                // a lane or panel to point out, such as "spec-tx"
    std::string register_name;       // a register of the card panel
    std::string limit;               // the size that matters: "rom", "ram" or "rx-buffer"
    bool chips = false;              // new instruction names in the ticket pane
    bool step = false;               // the Step control, once it is open
    bool bytes = false;              // byte values in the trace in full
    std::vector<std::pair<std::string, std::string>> steps;  // texts by step name

    // The text of a step; empty when the entry has none of its own.
    std::string_view Step(std::string_view name) const;
};

// The coach's entries in the order of their file; none when the store holds no such file.
base::Result<std::vector<CoachEntry>> LoadCoach(const ContentStore& store,
                                                json::Remarks* remarks = nullptr);

}  // namespace kp
