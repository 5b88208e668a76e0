#pragma once

#include <optional>
#include <string_view>

#include "hum/program.h"
#include "hum/source.h"

namespace hum {

inline constexpr std::uint32_t kAssembledDataWords = 65536;

// Reads a listing. Every instruction may also stand in its raw form, and ';' starts a comment. The
// program has a zeroed data area from kDataAddress on, which the modules' outputs begin.
std::optional<Fault> Assemble(std::string_view name, std::string_view text, Program& program);

}  // namespace hum
