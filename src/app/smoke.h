#pragma once

#include <functional>
#include <string_view>

#include "content/content.h"
#include "outside/outside.h"

namespace Kest {

// Checks the content and the rules of the game, and walks through its screens, all without a window
// and away from the player's files. Says a line a check; the exit code is 0 when all of them hold.
int RunSmoke(const kp::Content& content, zo::platform::System& system,
             const std::function<void(std::string_view line)>& say);

}  // namespace Kest
