#pragma once

#include "ui/canvas.h"

namespace Kest {

// The game's name in block letters, drawn twice as large where there is room, and below it what the
// game is and its version. The splash and the title have it in the same place.
struct NamePlace {
    NamePlace(int columns, int rows);

    int scale;
    zo::ui::Rect logo;
    int tagline;  // rows
    int version;
    int menu;
};
void DrawName(zo::ui::Canvas& canvas);

}  // namespace Kest
