#pragma once

#include "command_line.h"
#include "content/content.h"
#include "outside/outside.h"

namespace Kest {

// Runs one test of a ticket on a bench that nobody sees and writes what it shows, tick by tick, as
// an animation. Returns the exit code.
int RunAnimation(const LaunchOptions& options, const kp::Content& content,
                 zo::platform::System& system);

}  // namespace Kest
