#pragma once

#include "automation.h"
#include "command_line.h"
#include "content/content.h"
#include "outside/outside.h"
#include "shell/shell.h"

namespace Kest {

// Builds the scene and lets its time pass; without a delay of its own the scene's.
void ShowScene(std::string_view words, double delay_seconds, VirtualClock& clock, Shell& shell);

// Builds the scene, lets its time pass and writes its picture, all without a window. Returns the
// exit code.
int RunCapture(const LaunchOptions& options, const kp::Content& content,
               zo::platform::System& system);

}  // namespace Kest
