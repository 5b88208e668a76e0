#include "ui/meter.h"

#include <cmath>

namespace zo::ui {

// A muted bar has no half cells: there is no half of ▒.
void DrawMeter(Canvas& canvas, const Rect& row, const Meter& meter) {
    const double share = std::clamp(meter.share, 0.0, 1.0);
    const int halves = static_cast<int>(std::floor(share * row.width * 2 + 1e-9));
    const int full = meter.muted ? (halves + 1) / 2 : halves / 2;
    canvas.Fill(row, U'░', Role::FieldFill);
    canvas.Fill({row.x, row.y, full, 1}, meter.muted ? U'▒' : U'█', Role::FieldFill);
    if (!meter.muted && halves % 2 == 1) canvas.Put(row.x + full, row.y, U'▌', Role::FieldFill);
}

}  // namespace zo::ui
