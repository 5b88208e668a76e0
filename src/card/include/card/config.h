#pragma once

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "json/fields.h"

namespace kp {

using Tick = std::uint32_t;

// The parts of one LC-1 card. Numbers are clamped into their ranges when read, never refused.
struct CardConfig {
    std::int32_t rom = 24;            // instructions, 1 to 256
    std::int32_t ram = 16;            // 16-bit cells, 0 to 256
    std::uint8_t registers = 0b1111;  // bit 0 is a, bit 3 is d
    bool crc = false;
    bool timer = false;
    bool host = true;
    bool clock = false;
    std::int32_t rx_buffer = 16;  // bytes, 1 to 256
    std::int32_t tx_gap = 1;      // ticks the transmitter needs per byte, 1 to 64
    std::int32_t stack = 8;       // return lines, 0 to 32

    bool HasRegister(int number) const { return (registers >> number & 1) != 0; }
    bool operator==(const CardConfig&) const = default;
};

// Reads a ticket's `machine` value. Anything but an object gives the defaults; the one failure is a
// `registers` string with another character than a to d.
base::Result<CardConfig> ReadCardConfig(json::Fields machine);

}  // namespace kp
