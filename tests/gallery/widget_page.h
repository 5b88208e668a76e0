#pragma once

#include "cells/frame.h"

namespace gallery {

// Every widget in every state, on pages of 80 by 25 cells, each with the bars of a screen.
inline constexpr int kWidgetPages = 4;
zo::ui::Frame WidgetPage(int page, zo::ui::Look look, int theme);

// All pages beside and under each other, on a grid of 160 by 50 cells.
zo::ui::Frame WidgetSheet(const zo::ui::Grid& grid, int theme);

}  // namespace gallery
