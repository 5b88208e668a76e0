#include "ui/check_box.h"

namespace zo::ui {
namespace {

constexpr char32_t kSigns[] = {U' ', U'√', U'·'};  // by Check

}  // namespace

int DrawCheckBox(Canvas& canvas, Pressables& pressables, Point at, const CheckBox& box,
                 std::function<void()> toggle) {
    const Rect area = {at.x, at.y, CheckBox::kCells, 1};
    const bool available = box.check != Check::Unavailable;
    const Role role = available ? box.surface.text : box.surface.off;
    const Role ends = available && pressables.Hovered(area) ? box.surface.hot : role;
    canvas.Put(area.x, area.y, U'[', ends);
    canvas.Put(area.x + 1, area.y, kSigns[static_cast<std::size_t>(box.check)], role);
    canvas.Put(area.x + 2, area.y, U']', ends);
    Pressable& entry = pressables.Add(area, box.hint);
    if (available) entry.act = std::move(toggle);
    return area.Right();
}

}  // namespace zo::ui
