#pragma once

#include "command_line.h"
#include "content/content.h"
#include "outside/outside.h"
#include "shell/shell.h"

namespace Kest {

// Builds the scene, lets its time pass and writes its picture, all without a window. Returns the
// exit code.
int RunCapture(const LaunchOptions& options, const kp::Content& content,
               zo::platform::System& system);

}  // namespace Kest
