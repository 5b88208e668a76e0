#pragma once

#include "cells/frame.h"

namespace zo::term {

// The least that the game's screens are laid out for.
inline constexpr ui::PixelSize kLeastSize = {80, 25};

// What a terminal with fewer cells than `least` shows in place of the game.
ui::Frame TooSmall(ui::PixelSize size, ui::PixelSize least);

}  // namespace zo::term
