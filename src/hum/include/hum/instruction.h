#pragma once

#include <cstdint>

namespace hum {

// One instruction of the machine: all that compiler, assembler, listing and machine share.
struct Instruction {
    std::uint8_t op = 0;
    std::uint8_t rd = 0;
    std::uint8_t ra = 0;
    std::uint8_t rb = 0;
    std::int32_t imm = 0;
    std::uint32_t pos = 0;  // in the source, packed by PackPosition
    std::int32_t aux = 0;   // the stride of array accesses
    bool operator==(const Instruction&) const = default;
};
static_assert(sizeof(Instruction) == 16);

// In rb of a memory operand: the address is imm alone, and not a register's value plus imm.
inline constexpr std::uint8_t kAbsolute = 255;

inline constexpr std::uint32_t kIntRegisters = 12;    // of a frame, i0 to i11
inline constexpr std::uint32_t kFloatRegisters = 12;  // f0 to f11
inline constexpr std::uint8_t kFrameRegister = 11;    // holds a function's frame address
inline constexpr std::uint32_t kMaxInstructions = 131072;

// A place in the source in 32 bits; what does not fit counts as the largest that does.
inline constexpr std::uint32_t PackPosition(std::uint32_t source, std::uint32_t line,
                                            std::uint32_t column) {
    const auto held = [](std::uint32_t value, std::uint32_t most) {
        return value < most ? value : most;
    };
    return held(source, 0xff) << 24 | held(line, 0xffff) << 8 | held(column, 0xff);
}
inline constexpr std::uint32_t PositionSource(std::uint32_t pos) {
    return pos >> 24;
}
inline constexpr std::uint32_t PositionLine(std::uint32_t pos) {
    return pos >> 8 & 0xffff;
}
inline constexpr std::uint32_t PositionColumn(std::uint32_t pos) {
    return pos & 0xff;
}

}  // namespace hum
