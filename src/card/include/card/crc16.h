#pragma once

#include <array>
#include <cstdint>

namespace kp {

// CRC-16/CCITT as X.25's polynomial is used without reflection and without a final XOR: polynomial
// $1021, most significant bit first. From $FFFF the nine bytes of "123456789" give $29B1.
inline constexpr std::uint16_t kCrc16Polynomial = 0x1021;
inline constexpr std::uint16_t kCrc16Start = 0xFFFF;

inline constexpr std::array<std::uint16_t, 256> kCrc16Table = [] {
    std::array<std::uint16_t, 256> table{};
    for (int byte = 0; byte < 256; ++byte) {
        auto crc = static_cast<std::uint16_t>(byte << 8);
        for (int bit = 0; bit < 8; ++bit) {
            crc = static_cast<std::uint16_t>((crc & 0x8000) != 0 ? crc << 1 ^ kCrc16Polynomial
                                                                 : crc << 1);
        }
        table[static_cast<std::size_t>(byte)] = crc;
    }
    return table;
}();

constexpr std::uint16_t Crc16Step(std::uint16_t crc, std::uint8_t byte) {
    return static_cast<std::uint16_t>(crc << 8 ^ kCrc16Table[(crc >> 8 ^ byte) & 0xFF]);
}

}  // namespace kp
