#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/trace_cells.h"
#include "session/verify.h"
#include "ticket/frame.h"

namespace Kest {

// The ticks that one cell of the trace covers.
struct TickRange {
    kp::Tick first = 0;
    kp::Tick last = 0;

    bool Has(kp::Tick tick) const { return first <= tick && tick <= last; }
};

// "Tick 63", or "Ticks 64 to 79".
std::string RangeText(const TickRange& ticks);

// What happened on these ticks and what was called for, a sentence each: the events in the order of
// the lanes, the card's state, the far end, then the specification with its windows. Of many
// sentences the last one counts those that are left out.
std::vector<std::string> NotesOf(const TraceData& trace, const kp::ExpectedOutput& expected,
                                 const std::optional<kp::FrameFormat>& frame,
                                 const TickRange& ticks);

}  // namespace Kest
