#pragma once

#include <span>
#include <string_view>

#include "shell/shell.h"

namespace Kest {

// A change by the player, which is heard.
void ChangeAloud(Shell& shell, const SettingsChange& change);

// A setting of the display with a few values side by side, as it stands now.
struct DisplayChoice {
    std::string_view label;
    std::span<const std::string_view> values;
    int chosen;
    std::string_view explanation;  // of what is chosen
    int least_cells;               // that a value takes, so that rows above each other line up
    void (*set)(Settings& settings, int chosen);
};
DisplayChoice LookChoice(const Shell& shell);
DisplayChoice ThemeChoice(const Shell& shell);  // the monitor's, or the modern look's
DisplayChoice TextSizeChoice(const Shell& shell);

}  // namespace Kest
