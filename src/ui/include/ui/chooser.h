#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/surface.h"

namespace zo::ui {

// One value of a few, in as many cells as the longest name takes: "◄ Brisk  ►". At an end the
// arrow is blank.
struct Chooser {
    std::span<const std::string_view> names;
    int chosen = 0;
    std::string_view hint = {};
    Surface surface = kOnDialog;  // of the row that it stands in
};
int ChooserCells(const Chooser& chooser);
// The arrows take presses, the whole takes the wheel. Returns the column behind it.
int DrawChooser(Canvas& canvas, Pressables& pressables, Point at, const Chooser& chooser,
                const std::function<void(int)>& choose);
// The value so many steps on; stops at the ends.
int Stepped(const Chooser& chooser, int by);

}  // namespace zo::ui
