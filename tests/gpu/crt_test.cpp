#include <doctest/doctest.h>

#include <cmath>

#include "canvas.h"
#include "support/contrast.h"

using namespace gpu_test;

namespace {

// A picture of one colour under the effect, of which the middle column is looked at: the edge's
// shadow does not reach it.
zo::platform::PixelBuffer Tube(int cell_width, zo::ui::Rgb colour, int columns = 21) {
    zo::ui::Frame frame = Blank(Classic(cell_width, columns, 9));
    for (zo::ui::Cell& cell : frame.cells) cell.ground = colour;
    frame.crt = true;
    return Painted(frame);
}

double Luminance(std::uint32_t pixel) {
    const auto channel = [=](int shift) { return static_cast<std::uint8_t>(pixel >> shift); };
    return support::Luminance({channel(16), channel(8), channel(0)});
}

// Of two plain tubes at this place, over the rows of six font pixels from there.
double Contrast(const zo::platform::PixelBuffer& ink, const zo::platform::PixelBuffer& ground,
                int x, int y) {
    double light = 0, dark = 0;
    for (int row = 0; row < 6; ++row) {
        light += Luminance(At(ink, x, y + row)) / 6;
        dark += Luminance(At(ground, x, y + row)) / 6;
    }
    return support::Contrast(light, dark);
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
        const auto buffer = Tube(c.cell_width, kInk);
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
    const auto buffer = Tube(8, kInk);
    const int right = buffer.size.width - 1;
    CHECK((At(buffer, 0, 0) & 0xFF) == doctest::Approx(Grey(1 - 0.14)).epsilon(0.005));
    CHECK(At(buffer, right, 0) == At(buffer, 0, 0));
    CHECK((At(buffer, right, buffer.size.height / 2 / 2 * 2) & 0xFF) ==
          doctest::Approx(Grey(1 - 0.14 * 0.174)).epsilon(0.005));
}

TEST_CASE("dim text stays readable under the effect, in the corners too") {
    const struct {
        int theme;
        double middle, corner;
    } cases[] = {{1, 5.9, 4.6}, {2, 6.2, 4.8}};
    for (const auto& c : cases) {
        CAPTURE(c.theme);
        const auto dim = zo::ui::Colours(zo::ui::Look::Classic, c.theme, zo::ui::Role::PanelDim);
        for (const int cell_width : {7, 8, 16, 24}) {
            CAPTURE(cell_width);
            const auto ink = Tube(cell_width, dim.ink), ground = Tube(cell_width, dim.ground);
            CHECK(Contrast(ink, ground, ink.size.width / 2, ink.size.height / 2) >= c.middle);
            CHECK(Contrast(ink, ground, 0, 0) >= c.corner);
        }
    }
}

TEST_CASE("the edge darkens by no step that could be seen") {
    const auto buffer = Tube(8, kInk, 160);
    for (int x = 1; x < buffer.size.width; ++x) {
        const int step = static_cast<int>(At(buffer, x, 0) & 0xFF) -
                         static_cast<int>(At(buffer, x - 1, 0) & 0xFF);
        CHECK(std::abs(step) <= 1);
    }
}
