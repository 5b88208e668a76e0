#pragma once

#include <functional>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/surface.h"

namespace zo::ui {

// A share in percent, as a bar of twenty cells and a number: "██████████████░░░░░░  70 %". It moves
// in steps of five, which are one cell each.
struct Slider {
    static constexpr int kCells = 26;
    static constexpr int kStep = 5;

    int percent = 0;
    bool muted = false;
    std::string_view hint = {};
    Surface surface = kOnDialog;  // of the row that it stands in
};
// Takes presses, drags and the wheel. Returns the column behind it.
int DrawSlider(Canvas& canvas, Pressables& pressables, Point at, const Slider& slider,
               const std::function<void(int percent)>& change);
// The percentage so many steps on; stops at the ends.
int Stepped(const Slider& slider, int by);

}  // namespace zo::ui
