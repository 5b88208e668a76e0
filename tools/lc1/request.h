#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "outcome.h"

namespace lc1 {

// The options that only some commands take, as bits of a set.
enum TakenOption : unsigned {
    kTicket = 1,
    kReference = 2,
    kTest = 4,
    kIndent = 8,
    kHints = 16,
    kSolutions = 32,
    kSeeds = 64,
};

// What one call of the program asks for.
struct Request {
    std::string command;
    std::vector<std::string> files;  // what stands there besides command and options, in order
    std::string ticket;
    std::string reference;
    std::string solutions;
    std::int32_t test = 1;  // counted from 1
    std::int32_t indent = 2;
    std::int32_t hints = 0;
    std::int32_t seeds = 100;
    unsigned given = 0;  // the set of TakenOption that the call holds
    bool json = false;
    bool help = false;
    bool version = false;
    bool colour = false;  // the text goes to a terminal that wants colour
};

// Reads the arguments behind the program's name. All of them are read even when one is wrong, so
// that --json counts wherever it stands; the first problem is the one returned.
std::optional<Problem> ReadArguments(std::span<const std::string> arguments, Request& request);

// The name of the option, with its dashes.
std::string OptionName(TakenOption option);

}  // namespace lc1
