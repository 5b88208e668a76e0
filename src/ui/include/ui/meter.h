#pragma once

#include "ui/canvas.h"

namespace zo::ui {

// How much of something there is, as a bar of one row in a trough; its end stands on half cells.
struct Meter {
    double share = 0;    // 0 to 1
    bool muted = false;  // what it would be, but for a switch
};
void DrawMeter(Canvas& canvas, const Rect& row, const Meter& meter);

}  // namespace zo::ui
