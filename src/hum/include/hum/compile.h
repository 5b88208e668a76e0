#pragma once

#include <optional>

#include "hum/program.h"
#include "hum/source.h"

namespace hum {

// Compiles a program, with the library before it. The program is only of use when there is no
// fault; of several faults the first is told.
std::optional<Fault> Compile(const ProgramText& text, Program& program);

}  // namespace hum
