#pragma once

#include <cstdint>
#include <string>

#include "card/processor.h"
#include "peers/peer_link.h"

namespace kp {

// One happening of a run, in order.
struct TraceEvent {
    Tick tick = 0;
    std::uint16_t value = 0;  // the byte, $FFFF at a host message's end, or the timer's ticks
    std::uint16_t index = 0;  // of a transmitted or delivered byte in its stream, at most 65535
    std::uint16_t line = 0;   // of the source; 0 for what no instruction caused
    Happening kind = Happening::Transmitted;

    bool operator==(const TraceEvent&) const = default;
};

// What the far end says of itself.
struct FarEndNote {
    Tick tick = 0;
    std::string text;
    int flag = 0;
};

// A rule of time that a far end opened: the card's first byte on or after `from` is judged by it.
struct TimingWindow {
    WindowKind kind = WindowKind::Deadline;
    Tick from = 0;
    Tick until = 0;
    bool done = false;
    std::string what;
};

}  // namespace kp
