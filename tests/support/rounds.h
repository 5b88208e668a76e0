#pragma once

#include <cstdlib>

namespace support {

// How often a random test runs: `plain` times, or a hundred times that in the long form.
inline int Rounds(int plain) {
    return std::getenv("KEST_LONG") != nullptr ? plain * 100 : plain;
}

}  // namespace support
