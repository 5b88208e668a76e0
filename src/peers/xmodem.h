#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "peer_settings.h"

// XMODEM (Ward Christensen's MODEM protocol of 1977, with its plain sum). A block is SOH, the
// block's number, the number's complement, the data, and the low byte of the data's sum. Numbers
// start at 1; 0 follows 255.
namespace kp::xmodem {

inline constexpr std::uint8_t kSoh = 0x01;
inline constexpr std::uint8_t kEot = 0x04;
inline constexpr std::uint8_t kAck = 0x06;
inline constexpr std::uint8_t kNak = 0x15;
inline constexpr std::uint8_t kCan = 0x18;
inline constexpr std::uint8_t kSub = 0x1A;  // fills up the last block

inline constexpr std::size_t kHeader = 3;    // SOH, number, complement
inline constexpr std::size_t kOverhead = 4;  // the header and the sum

// The data bytes of a block, by the peer key `block`.
inline std::size_t BlockSize(PeerSettings& settings) {
    return static_cast<std::size_t>(settings.Number("block", 128, 1, 128));
}

inline std::uint8_t Complement(std::uint8_t number) {
    return static_cast<std::uint8_t>(number ^ 0xFF);
}

inline std::uint8_t Sum(std::span<const std::uint8_t> data) {
    unsigned sum = 0;
    for (const std::uint8_t byte : data) sum += byte;
    return static_cast<std::uint8_t>(sum);
}

}  // namespace kp::xmodem
