#pragma once

#include <optional>

#include "checked.h"
#include "hum/source.h"
#include "sources.h"

namespace hum {

inline constexpr std::uint32_t kMaxFunctions = 383;
inline constexpr std::uint32_t kMaxModules = 255;
inline constexpr std::uint32_t kMaxStructs = 80;
inline constexpr std::uint32_t kMaxGlobals = 2047;
inline constexpr std::uint32_t kMaxLocals = 511;
inline constexpr std::uint32_t kMaxParams = 64;
inline constexpr std::uint32_t kMaxFrame = 524288;  // words
inline constexpr std::uint32_t kMaxArrayElements = 4194304;
inline constexpr std::uint32_t kMaxMemory = 1u << 25;  // words of one program, stacks apart

// Proves that the program is right, works out its constants and lays out its memory; or says what
// is wrong.
std::optional<Fault> Check(const Tokens& tokens, Tree& tree, Checked& checked);

}  // namespace hum
