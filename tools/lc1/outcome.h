#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace lc1 {

enum class ExitCode : std::uint8_t {
    Pass = 0,
    Fail = 1,      // the firmware, the text or the folder is at fault
    Unusable = 2,  // the call is: bad usage, an unreadable file, a ticket that does not load
};

// Why a command could not answer, in one line; of a text that did not parse, also where.
struct Problem {
    std::string text;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// The first of several lines.
inline Problem FirstProblem(const std::string& lines) {
    return {lines.substr(0, lines.find('\n'))};
}

// What became of a command that has written its answer, or the problem that kept it from one.
using Outcome = std::variant<ExitCode, Problem>;

}  // namespace lc1
