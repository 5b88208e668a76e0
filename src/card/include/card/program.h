#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "card/assembler.h"
#include "card/config.h"

namespace kp {

// The card's words as the processor addresses them: registers by number, then the RAM cells, then
// the program's literals. An operand decoded to an index needs no kind at run time.
inline constexpr int kRegisterWords = 7;
inline constexpr int kMostRam = 256;
inline constexpr int kMostRom = 256;
inline constexpr int kMostWords = kRegisterWords + kMostRam + 2 * kMostRom;

// How a mov reaches its words. A RAM address that stands in a register is checked when it runs.
enum class Access : std::uint8_t {
    Direct,  // x = y
    Load,    // x = RAM[y]
    Store,   // RAM[x] = y
};

// One instruction, decoded.
struct Step {
    Op op = Op::Nop;
    Access access = Access::Direct;
    bool has_target = false;   // rx and hin: a timeout target is given
    bool inward = false;       // it touches nothing outside the processor and starts no wait
    std::uint16_t x = 0;       // word index of the first operand
    std::uint16_t y = 0;       // word index of the second
    std::uint16_t target = 0;  // an index below the program's size
    std::uint16_t line = 0;    // of the source
};

// Firmware ready to run on one kind of card: fixed, and shared by every run of it.
struct Program {
    CardConfig config;
    std::vector<Step> steps;
    std::vector<std::uint16_t> image;  // the words at reset
    std::int32_t lines = 0;            // the "lines" score
};

// Decodes an assembly without errors.
Program Load(const Assembly& assembly, const CardConfig& config);

}  // namespace kp
