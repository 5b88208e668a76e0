#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "shell/screen.h"

namespace Kest {

// Where a screen can send the player without knowing the screen there. Splash, Title, Board and
// Bench are switched to; the others open as overlays.
enum class Place : std::uint8_t {
    Splash,
    Title,
    Board,
    Bench,
    Pause,
    Options,
    Binder,
    Credits,
    Achievements,
    TextMode,
    Count,
};

// Makes the screens of the places. `about` says what to show there: the bench a ticket's id, the
// binder a page's id, the options a row. A place without a maker does not exist, and what leads
// there is not offered.
using MakeScreen = std::function<std::unique_ptr<Screen>(Shell& shell, std::string_view about)>;
using Places = std::array<MakeScreen, static_cast<std::size_t>(Place::Count)>;

}  // namespace Kest
