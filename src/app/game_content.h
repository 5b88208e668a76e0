#pragma once

#include "content/content.h"
#include "outside/outside.h"

namespace Kest {

// The content of the folder that the environment names, else the program's own. Every problem goes
// to the standard error stream as a line.
kp::Content LoadGameContent(zo::platform::System& system);

}  // namespace Kest
