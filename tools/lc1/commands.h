#pragma once

#include <span>
#include <string>
#include <string_view>

#include "outcome.h"
#include "request.h"

namespace lc1 {

// One row is all that the program knows of a command.
struct Command {
    std::string_view name;
    std::string_view usage;    // what stands behind the name
    std::string_view summary;  // one sentence
    std::size_t files;         // what it needs besides options; one fewer with --ticket
    unsigned options;          // the set of TakenOption that it takes
    unsigned needed;           // those that it cannot do without; a reference only with --ticket
    Outcome (*run)(const Request& request);
    std::size_t more_files = 0;  // that it takes, and does without
};

std::span<const Command> Commands();
const Command* FindCommand(std::string_view name);

// Each writes its answer to standard output, or returns its problem before it has written any.
Outcome RunAsm(const Request& request);
Outcome RunBinder(const Request& request);
Outcome RunBurnIn(const Request& request);
Outcome RunBytes(const Request& request);
Outcome RunContent(const Request& request);
Outcome RunJson(const Request& request);
Outcome RunLint(const Request& request);
Outcome RunList(const Request& request);
Outcome RunTest(const Request& request);
Outcome RunShow(const Request& request);
Outcome RunVerify(const Request& request);

}  // namespace lc1
