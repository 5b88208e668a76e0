#pragma once

#include <string>

#include "session/verify.h"

namespace kp {

// Why a test ran into its tick limit, in two sentences: what the run produced, and which lines
// repeat and what they never reach. It runs the test once more to see; empty when the test does not
// reach its limit.
std::string ExplainTickLimit(const Ticket& ticket, std::size_t test, const Assembly& firmware,
                             const Program& program, const ExpectedOutput& expected,
                             Session& session);

}  // namespace kp
