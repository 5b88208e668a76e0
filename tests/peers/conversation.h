#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "peers/factory.h"

namespace support {

// What the card says: bytes in hexadecimal, of which the far end hears the first on `tick` and one
// more on each tick that follows.
struct Said {
    kp::Tick tick;
    std::string_view hex;
};

// Lets the far end of the ticket's first test listen for `ticks` ticks and returns all that it did,
// a line each, in the order in which it did it:
//
//     send 13 at 52                      the tick is the first byte's arrival
//     send 01 02 at 52, gap 3
//     note 52: XOFF: the printer's buffer is full
//     from 52 not before 82: the first byte after XOFF
//     from 52 not after 90: the reply
//     done at 82
//     busy at 90                         no longer done
//
// The ticket is a JSON object's inside; `id` is supplied. Each conversation is held twice, the
// second time without the ticks before NextAct, and must go the same way.
std::string Talk(std::string_view ticket, const std::vector<Said>& said, kp::Tick ticks);

// The line that says why the far end of the ticket's last test cannot be built; empty if it can.
std::string Problem(std::string_view ticket);

}  // namespace support
