#pragma once

#include "ui/canvas.h"

namespace Kest {

// The game's name in block letters, drawn twice as large where there is room.
struct Logo {
    Logo(int columns, int rows);

    zo::ui::Rect area;
    int scale;

    void Draw(zo::ui::Canvas& canvas) const;
};

}  // namespace Kest
