#pragma once

#include <string_view>

#include "ui/canvas.h"
#include "ui/frame_line.h"

namespace zo::ui {

// Clears a pane and draws its frame: double with a title chip when focused, else single. Facts for
// the frame's lines go through a FrameLine of the same box; the title stands there already.
FrameLine DrawPane(Canvas& canvas, const Rect& box, std::string_view title, bool focused);

// A dialog's ground, double frame and title chip, in the classic look with a drop shadow. It floats
// on its own screen, as the title's menu does.
void DrawDialog(Canvas& canvas, const Rect& box, std::string_view title);

// A dialog that covers another screen, which the modern look darkens.
void DrawOverlay(Canvas& canvas, const Rect& box, std::string_view title);

// The ground and single frame of a short list that comes and goes while the player types.
void DrawPopup(Canvas& canvas, const Rect& box);

}  // namespace zo::ui
