#pragma once

#include <cstdint>
#include <vector>

namespace kp {

using Bytes = std::vector<std::uint8_t>;

}  // namespace kp
