#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "outcome.h"

namespace hum_command {

// The options that only some commands take, as bits of a set.
enum TakenOption : unsigned {
    kSamples = 1,
    kSkip = 2,
    kSet = 4,
    kJson = 8,
};

// What one call of the program asks for.
struct Request {
    std::string command;
    std::vector<std::string> files;
    std::int64_t samples = 0;
    std::int64_t skip = 0;
    std::vector<std::pair<std::string, float>> params;
    unsigned given = 0;  // the set of TakenOption that the call holds
    bool library = true;
    bool help = false;
    bool version = false;

    bool Json() const { return (given & kJson) != 0; }
};

// Reads the arguments behind the program's name; the first problem is the one returned.
std::optional<Problem> ReadArguments(std::span<const std::string> arguments, Request& request);

// The name of the option, with its dashes.
std::string_view OptionName(TakenOption option);

}  // namespace hum_command
