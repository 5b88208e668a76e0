#pragma once

#include <optional>

#include "checked.h"
#include "hum/program.h"
#include "hum/source.h"
#include "sources.h"

namespace hum {

// Makes code of a checked program. It still fails where an expression needs more registers than
// there are, or the code has more instructions than a program may hold.
std::optional<Fault> Generate(const Tokens& tokens, const Tree& tree, const Checked& checked,
                              Program& program);

}  // namespace hum
