#pragma once

#include <span>
#include <string_view>

#include "outside/outside.h"

namespace Kest {

// The whole life of the program: the arguments behind the program's name in, its exit code out.
int RunApplication(std::span<const std::string_view> arguments, zo::platform::System& system);

}  // namespace Kest
