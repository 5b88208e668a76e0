#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace hum {

// What the language's operators do to ints and floats, where the processor's own would trap or
// differ: the compiler works out constants by the same rules by which the machine runs.

inline std::int32_t Wrapped(std::uint32_t value) {
    return static_cast<std::int32_t>(value);
}

inline std::int32_t Add(std::int32_t a, std::int32_t b) {
    return Wrapped(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

inline std::int32_t Subtract(std::int32_t a, std::int32_t b) {
    return Wrapped(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

inline std::int32_t Multiply(std::int32_t a, std::int32_t b) {
    return Wrapped(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

inline std::int32_t Divide(std::int32_t a, std::int32_t b) {
    if (b == 0) return 0;
    return b == -1 ? Subtract(0, a) : a / b;
}

inline std::int32_t Remainder(std::int32_t a, std::int32_t b) {
    return b == 0 || b == -1 ? 0 : a % b;
}

inline std::int32_t ShiftLeft(std::int32_t a, std::int32_t b) {
    return Wrapped(static_cast<std::uint32_t>(a) << (b & 31));
}

inline std::int32_t ShiftRight(std::int32_t a, std::int32_t b) {
    return a >> (b & 31);
}

inline std::int32_t ShiftRightZeros(std::int32_t a, std::int32_t b) {
    return Wrapped(static_cast<std::uint32_t>(a) >> (b & 31));
}

// Towards zero, held to the range of ints; not a number is 0.
inline std::int32_t ToInt(float value) {
    if (std::isnan(value)) return 0;
    if (value >= 2147483648.0f) return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483648.0f) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

// A float as a word of memory. What is not a number has one pattern there, so that no program sees
// which of two such operands a processor keeps, or with which sign.
inline std::uint32_t FloatWord(float value) {
    return value == value ? std::bit_cast<std::uint32_t>(value) : 0x7FC00000u;
}

}  // namespace hum
