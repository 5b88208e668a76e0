#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "content/content.h"
#include "save/progress.h"

namespace Kest {

struct Standing;

struct Achievement {
    std::string_view id;
    std::string_view title;
    std::string_view description;
    int turn;  // among those that one change earns
    bool (*earned)(const Standing& standing);
};

// All of them, in the order in which they are listed.
std::span<const Achievement> Achievements();

// Adds to the progress what it has earned as it stands, and by the close that has just gone into
// it, if any. Returns what is new, in the order in which it is announced.
std::vector<const Achievement*> Award(const kp::Content& content, Progress& progress,
                                      const Close* close = nullptr);

}  // namespace Kest
