#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "ticket/ticket.h"

namespace kp {

inline constexpr Tick kNever = std::numeric_limits<Tick>::max();

// What a timing window asks of the card's first byte on or after its opening tick.
enum class WindowKind : std::uint8_t {
    Deadline,  // it must go out by the limit tick
    Earliest,  // it must not go out before the limit tick
};

// The running test as a far end sees it. Ticks are absolute, from 0 at reset.
class PeerLink {
public:
    virtual ~PeerLink() = default;
    virtual Tick Now() const = 0;
    // Schedules bytes onto the line toward the card, the first on `tick` or as soon as the line is
    // free, the others `spacing` ticks apart (at least 1). Returns the last byte's arrival tick;
    // without bytes, the tick on which the first would have come.
    virtual Tick Send(Tick tick, std::span<const std::uint8_t> bytes, int spacing) = 0;
    virtual Tick LineFreeAt() const = 0;
    // Opens a timing window at `from` (now at the earliest); `label` names the byte in a verdict.
    virtual void Expect(WindowKind kind, Tick until, std::string_view label, Tick from) = 0;
    // Adds a note to the trace. The flag is 0 everywhere.
    virtual void Note(Tick tick, std::string_view text, int flag = 0) = 0;
    virtual const kp::Ticket& Ticket() const = 0;
    virtual const kp::Test& Test() const = 0;
};

}  // namespace kp
