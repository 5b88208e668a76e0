#pragma once

#include <memory>
#include <string_view>

#include "shell/screen.h"

namespace Kest {

class Shell;

// Overlays with more text than fits and one button that stays.
std::unique_ptr<Screen> MakeCredits(Shell& shell);
std::unique_ptr<Screen> MakeAchievements(Shell& shell);

}  // namespace Kest
