#pragma once

#include <cstdint>
#include <string_view>

namespace hum {

// Where things lie in a program's memory, in words of 32 bits.
inline constexpr std::uint32_t kNullWords = 16;  // the null area: any access is a stop
inline constexpr std::uint32_t kHostAddress = 16;
inline constexpr std::uint32_t kBpmAddress = 20;
inline constexpr std::uint32_t kSoundAddress = 32;
inline constexpr std::uint32_t kInputAddress = 34;
inline constexpr std::uint32_t kMidiAddress = 36;
inline constexpr std::uint32_t kParamsAddress = 256;
inline constexpr std::uint32_t kDataAddress = 320;
inline constexpr std::uint32_t kStackWords = 16384;  // of main, of master and of every module

struct HostVariable {
    std::string_view name;
    char type;  // f, i, or a pointer: s to Sound, n to Input, m to Midi
    std::uint32_t address;
};

inline constexpr HostVariable kHostVariables[] = {
    {"sr", 'f', 16},       {"ksmps", 'i', 17},     {"sample", 'i', 18},    {"time", 'f', 19},
    {"bpm", 'f', 20},      {"beat", 'f', 21},      {"playing", 'i', 22},   {"bar", 'i', 23},
    {"bar_beat", 'f', 24}, {"timesig_n", 'i', 25}, {"timesig_d", 'i', 26}, {"nch", 'i', 27},
    {"sound", 's', 28},    {"input", 'n', 29},     {"midi", 'm', 30},
};

}  // namespace hum
