#pragma once

#include <string_view>

namespace base {

// The program's version, such as "1.0.0".
std::string_view Version();

}  // namespace base
