#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace hum_command {

enum class ExitCode : std::uint8_t {
    Good = 0,
    Fault = 1,     // the source does not compile or assemble
    Unusable = 2,  // bad usage, an unreadable file, an unknown param
    Stopped = 3,   // the program stopped while it ran
};

// Why a command could not answer, in one line.
struct Problem {
    std::string text;
};

// What became of a command that has written its answer, or the problem that kept it from one.
using Outcome = std::variant<ExitCode, Problem>;

}  // namespace hum_command
