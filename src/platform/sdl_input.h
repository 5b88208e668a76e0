#pragma once

#include <SDL.h>

#include <optional>

#include "cells/input.h"

namespace zo::platform {

// Turns SDL's events into the program's. A key that makes a character gives a key press and, apart
// from it, the text; a key pressed with Ctrl or Alt gives the key press alone.
class SdlInput {
public:
    // Nothing when the event means nothing to the program. The window puts its size and scale into
    // the news that they have changed.
    std::optional<ui::InputEvent> Translate(const SDL_Event& event);

private:
    std::optional<ui::InputEvent> KeyDown(const SDL_KeyboardEvent& event);
    std::optional<ui::InputEvent> Text(const SDL_TextInputEvent& event);

    bool is_shortcut_ = false;  // the last key was pressed with Ctrl or Alt: its text is dropped
};

}  // namespace zo::platform
