#include "ui/pane.h"

namespace zo::ui {

FrameLine DrawPane(Canvas& canvas, const Rect& box, std::string_view title, bool focused) {
    canvas.Fill(box.Inner(), U' ', Role::Panel);
    canvas.Box(box, focused ? Lines::Double : Lines::Single,
               focused ? Role::FrameActive : Role::Frame);
    FrameLine top(canvas, box, Edge::Top);
    if (!title.empty()) top.LeftTitle(title, focused ? Role::TitleActive : Role::Title);
    return top;
}

void DrawDialog(Canvas& canvas, const Rect& box, std::string_view title) {
    if (canvas.CurrentLook() == Look::Classic) canvas.DropShadow(box);
    canvas.Fill(box.Inner(), U' ', Role::Dialog);
    canvas.Box(box, Lines::Double, Role::DialogFrame);
    FrameLine(canvas, box, Edge::Top).LeftTitle(title, Role::DialogTitle);
}

void DrawOverlay(Canvas& canvas, const Rect& box, std::string_view title) {
    if (canvas.CurrentLook() == Look::Modern) canvas.Scrim();
    DrawDialog(canvas, box, title);
}

void DrawPopup(Canvas& canvas, const Rect& box) {
    canvas.Fill(box.Inner(), U' ', Role::Dialog);
    canvas.Box(box, Lines::Single, Role::DialogFrame);
}

}  // namespace zo::ui
