#include <algorithm>
#include <array>

#include "card/crc16.h"
#include "ticket/frame.h"

namespace kp {
namespace {

using Span = std::span<const std::uint8_t>;

std::uint8_t Sum8(Span bytes) {
    unsigned sum = 0;
    for (const std::uint8_t byte : bytes) sum += byte;
    return static_cast<std::uint8_t>(sum);
}

std::uint8_t Xor8(Span bytes) {
    std::uint8_t all = 0;
    for (const std::uint8_t byte : bytes) all ^= byte;
    return all;
}

// CRC-8 (SMBus): polynomial $07, start 0, most significant bit first. "123456789" gives $F4.
std::uint8_t Crc8(Span bytes) {
    unsigned crc = 0;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = ((crc & 0x80) != 0 ? crc << 1 ^ 0x07 : crc << 1) & 0xFF;
        }
    }
    return static_cast<std::uint8_t>(crc);
}

std::uint16_t Crc16(Span bytes) {
    std::uint16_t crc = kCrc16Start;
    for (const std::uint8_t byte : bytes) crc = Crc16Step(crc, byte);
    return crc;
}

// CRC-16/MODBUS ("MODBUS over serial line", V1.02, 2.5.1.2): reflected polynomial $A001, start
// $FFFF. "123456789" gives $4B37.
std::uint16_t Crc16Modbus(Span bytes) {
    unsigned crc = 0xFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

// A check's one or two bytes, in the order in which they are sent.
struct CheckValue {
    std::array<std::uint8_t, 2> bytes;
    std::size_t width;
    Span View() const { return Span(bytes).first(width); }
};

CheckValue OneByte(std::uint8_t byte) {
    return {{byte}, 1};
}

CheckValue HighFirst(std::uint16_t word) {
    return {{static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word)}, 2};
}

CheckValue LowFirst(std::uint16_t word) {
    return {{static_cast<std::uint8_t>(word), static_cast<std::uint8_t>(word >> 8)}, 2};
}

CheckValue Compute(Check check, Span bytes) {
    switch (check) {
        case Check::None:
            break;
        case Check::Sum8:
            return OneByte(Sum8(bytes));
        case Check::Xor8:
            return OneByte(Xor8(bytes));
        case Check::Crc8:
            return OneByte(Crc8(bytes));
        case Check::Crc16:
            return HighFirst(Crc16(bytes));
        case Check::Crc16Modbus:
            return LowFirst(Crc16Modbus(bytes));
    }
    return {{}, 0};
}

}  // namespace

int CheckWidth(Check check) {
    constexpr std::array<int, 6> kWidths = {0, 1, 1, 1, 2, 2};
    return kWidths[static_cast<std::size_t>(check)];
}

Bytes CheckBytes(Check check, Span bytes) {
    const CheckValue value = Compute(check, bytes);
    return {value.View().begin(), value.View().end()};
}

bool CheckFits(Check check, Span bytes, Span found) {
    const CheckValue value = Compute(check, bytes);
    return std::ranges::equal(value.View(), found);
}

}  // namespace kp
