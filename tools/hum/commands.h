#pragma once

#include <span>
#include <string_view>

#include "outcome.h"
#include "request.h"

namespace hum_command {

// One row is all that the program knows of a command.
struct Command {
    std::string_view name;
    std::string_view usage;    // what stands behind the name
    std::string_view summary;  // one sentence
    unsigned options;          // the set of TakenOption that it takes
    unsigned needed;           // those that it cannot do without
    std::size_t files;         // how many it takes
    Outcome (*run)(const Request& request);
};

std::span<const Command> Commands();

}  // namespace hum_command
