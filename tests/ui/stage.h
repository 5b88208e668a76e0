#pragma once

#include "support/picture.h"
#include "ui/canvas.h"
#include "ui/pressables.h"

namespace fake {

// A picture to draw in, with what answers the pointer there.
struct Stage {
    zo::ui::Frame frame;
    zo::ui::Pressables pressables;

    explicit Stage(int columns = 80, int rows = 25, zo::ui::Look look = zo::ui::Look::Classic)
        : frame(BlankFrame(columns, rows, look)) {}
    zo::ui::Canvas Pen() { return {frame, 0}; }
    void Click(zo::ui::Point at) {
        pressables.Press({.at = at});
        pressables.Release(at);
    }
};

}  // namespace fake
