#pragma once

#include <optional>

#include "hum/source.h"
#include "sources.h"
#include "tree.h"

namespace hum {

inline constexpr std::uint32_t kMaxEntries = 1023;  // of a block, a structure, an initializer
inline constexpr std::uint32_t kMaxDimensions = 7;
inline constexpr std::uint32_t kMaxArguments = 16;
inline constexpr int kMaxLoops = 31;
// How deep statements, expressions and initializers nest: later stages follow the tree by
// recursion, and this bounds it. An expression of any use ends long before.
inline constexpr int kMaxNesting = 256;

// Makes a tree of the tokens, or says which token does not fit.
std::optional<Fault> Parse(const Tokens& tokens, Tree& tree);

}  // namespace hum
