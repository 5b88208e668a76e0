#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "cells/grid_size.h"
#include "save/settings.h"

namespace Kest {

struct LaunchOptions {
    std::string capture;  // the picture to write; with one the run is automatic
    std::string scene;    // what the picture shows
    std::string gif;      // the animation to write, of a run of the firmware on a test
    std::string firmware;
    int test = 1;
    zo::ui::PixelSize size = {1440, 900};
    bool smoke = false;
    bool windowed = false;
    std::string theme;
    std::string look;
    double capture_delay = 0;  // seconds, 0 when it was not given
    int dots_per_inch = 0;     // 0 when it was not given
    int large_text = -1;       // -1 keeps the settings, 0 is Normal, 1 Large
    int closed = -1;           // tickets to treat as closed, -1 keeps the progress
    bool vi_keys = false;
    bool terminal = false;
    bool speak = false;
    std::optional<std::string> audio_render;  // the file for the rendered soundtrack
    bool fonts = false;
    bool help = false;
    bool version = false;

    bool IsAutomatic() const { return smoke || !capture.empty() || !gif.empty(); }
};

// Each argument is compared whole; unknown ones are ignored. An option that stands last without its
// argument gets an empty one. What renders the soundtrack or lists the fonts is looked for
// anywhere, also where another option's argument stands; the file to render to must stand behind
// it.
LaunchOptions ParseCommandLine(std::span<const std::string_view> arguments);

// Puts what the options ask for over the player's own settings.
void Override(Settings& settings, const LaunchOptions& options);

// The table of options, a line each.
std::string UsageText();

}  // namespace Kest
