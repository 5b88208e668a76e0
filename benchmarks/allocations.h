#pragma once

#include <cstddef>

namespace bench {

// Calls of operator new by this program so far.
std::size_t Allocations();

}  // namespace bench
