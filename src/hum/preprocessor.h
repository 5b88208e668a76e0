#pragma once

#include <optional>

#include "hum/source.h"
#include "sources.h"

namespace hum {

inline constexpr std::size_t kMaxTokens = 262144;

// Reads the library, the program and what they include into one list of tokens, with every
// directive obeyed and every macro expanded. The tokens must be new, but for names interned.
std::optional<Fault> Preprocess(const ProgramText& program, Tokens& tokens);

}  // namespace hum
