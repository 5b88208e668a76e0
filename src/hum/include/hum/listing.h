#pragma once

#include <string>

#include "hum/program.h"

namespace hum {

// The program's code in the text that the assembler reads.
std::string Listing(const Program& program);

// One instruction of it, without a line feed.
std::string InstructionText(const Instruction& instruction);

}  // namespace hum
