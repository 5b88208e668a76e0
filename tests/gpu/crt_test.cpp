#include <doctest/doctest.h>

#include <cmath>

#include "canvas.h"

using namespace gpu_test;

namespace {

// A full white picture under the effect, of which the middle column is looked at: the edge's shadow
// does not reach it.
zo::platform::PixelBuffer WhiteTube(int cell_width) {
    zo::ui::Frame frame = Blank(Classic(cell_width, 21, 9));
    for (zo::ui::Cell& cell : frame.cells) cell.ground = kInk;
    frame.crt = true;
    return Painted(frame);
}

int Grey(double factor) {
    return static_cast<int>(std::lround(255 * factor));
}

}  // namespace

TEST_CASE("scan lines darken the last pixel row of each font pixel, or every second row") {
    const struct {
        int cell_width, period;
        double factor;
    } cases[] = {{5, 2, 0.95},  {7, 2, 0.95},  {8, 2, 0.95},  {9, 2, 0.95}, {16, 2, 0.92},
                 {18, 2, 0.92}, {24, 3, 0.88}, {27, 3, 0.88}, {40, 5, 0.88}};
    for (const auto& c : cases) {
        CAPTURE(c.cell_width);
        const auto buffer = WhiteTube(c.cell_width);
        const int middle = buffer.size.height / 2 / c.period * c.period;
        for (int row = 0; row < 2 * c.period; ++row) {
            const bool dark = row % c.period == c.period - 1;
            const auto pixel = At(buffer, buffer.size.width / 2, middle + row);
            CHECK((pixel & 0xFF) == Grey(dark ? c.factor : 1));
            CHECK((pixel >> 16) == (pixel & 0xFF));
        }
    }
}

TEST_CASE("the picture darkens towards its corners") {
    const auto buffer = WhiteTube(8);
    const int right = buffer.size.width - 1;
    CHECK((At(buffer, 0, 0) & 0xFF) == doctest::Approx(Grey(1 - 0.14)).epsilon(0.005));
    CHECK(At(buffer, right, 0) == At(buffer, 0, 0));
    CHECK((At(buffer, right, buffer.size.height / 2 / 2 * 2) & 0xFF) ==
          doctest::Approx(Grey(1 - 0.14 * 0.174)).epsilon(0.005));
}
