#include "ui/slider.h"

#include <algorithm>

#include "base/format.h"
#include "ui/meter.h"

namespace zo::ui {
namespace {

constexpr int kBar = 20;
constexpr int kMost = 100;

}  // namespace

int Stepped(const Slider& slider, int by) {
    return std::clamp(slider.percent + by * Slider::kStep, 0, kMost);
}

int DrawSlider(Canvas& canvas, Pressables& pressables, Point at, const Slider& slider,
               const std::function<void(int percent)>& change) {
    const Rect bar = {at.x, at.y, kBar, 1};
    DrawMeter(canvas, bar, {static_cast<double>(slider.percent) / kMost, slider.muted});
    const int end = canvas.Text(bar.Right(), at.y, base::Format(" %3d %%", slider.percent),
                                slider.surface.text);

    // A press fills the bar up to its cell. The cell before the bar empties it.
    const auto follow = [change, left = at.x - 1](Point to) {
        change(std::clamp((to.x - left) * Slider::kStep, 0, kMost));
    };
    Pressable& entry = pressables.Add({at.x - 1, at.y, kBar + 1, 1}, slider.hint);
    entry.press = [follow](const PointerPress& press) { follow(press.at); };
    entry.drag = follow;
    pressables.Add({at.x, at.y, Slider::kCells, 1}).wheel =
        [change, slider](int steps, const Modifiers&) { change(Stepped(slider, steps)); };
    return end;
}

}  // namespace zo::ui
