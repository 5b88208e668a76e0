#include "cells/grid_size.h"

#include <doctest/doctest.h>

#include <cmath>

using zo::ui::Grid;
using zo::ui::GridRequest;
using zo::ui::Look;
using zo::ui::PixelSize;
using zo::ui::SizeGrid;

namespace {

struct Cells {
    int columns, rows, cell_width;
    bool operator==(const Cells&) const = default;
};

Cells CellsOf(const Grid& grid) {
    return {grid.columns, grid.rows, grid.cell_width};
}

Cells Sized(PixelSize window, Look look, bool large, float display_scale) {
    return CellsOf(SizeGrid(
        {.window = window, .look = look, .want_large = large, .display_scale = display_scale}));
}

}  // namespace

TEST_CASE("common windows give the known grids") {
    const struct {
        PixelSize window;
        float scale;
        Cells classic, classic_large, modern, modern_large;
    } cases[] = {
        {{600, 380}, 1, {200, 63, 3}, {200, 63, 3}, {200, 57, 3}, {100, 28, 6}},
        {{1280, 720}, 1, {182, 51, 7}, {142, 40, 9}, {213, 54, 6}, {142, 36, 9}},
        {{1280, 800}, 1, {160, 50, 8}, {80, 25, 16}, {182, 51, 7}, {142, 40, 9}},
        {{1366, 768}, 1, {195, 54, 7}, {151, 42, 9}, {227, 58, 6}, {151, 38, 9}},
        {{1440, 900}, 1, {160, 50, 9}, {80, 25, 18}, {205, 58, 7}, {160, 45, 9}},
        {{1600, 900}, 1, {177, 50, 9}, {88, 25, 18}, {228, 58, 7}, {177, 45, 9}},
        {{1920, 1080}, 1, {213, 60, 9}, {106, 30, 18}, {274, 70, 7}, {213, 54, 9}},
        {{2560, 1440}, 1, {284, 80, 9}, {142, 40, 18}, {365, 93, 7}, {284, 72, 9}},
        {{2560, 1440}, 1.25F, {284, 80, 9}, {142, 40, 18}, {284, 72, 9}, {232, 59, 11}},
        {{3440, 1440}, 1, {382, 80, 9}, {191, 40, 18}, {491, 93, 7}, {382, 72, 9}},
        {{3840, 2160}, 2, {213, 60, 18}, {142, 40, 27}, {256, 65, 15}, {213, 54, 18}},
        {{1, 1}, 1, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}},
        {{0, -5}, 1, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}},
        {{159, 500}, 1, {159, 250, 1}, {159, 250, 1}, {159, 227, 1}, {159, 227, 1}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.window.width);
        CAPTURE(c.scale);
        CHECK(Sized(c.window, Look::Classic, false, c.scale) == c.classic);
        CHECK(Sized(c.window, Look::Classic, true, c.scale) == c.classic_large);
        CHECK(Sized(c.window, Look::Modern, false, c.scale) == c.modern);
        CHECK(Sized(c.window, Look::Modern, true, c.scale) == c.modern_large);
    }
}

TEST_CASE("a classic cell is a whole number of font pixels, nine wide where that is no smaller") {
    const struct {
        PixelSize window;
        bool large, nine_wide_face;
        float scale;
        int cell_width, font_pixel;
        bool nine_wide;
    } cases[] = {
        {{1280, 800}, false, true, 1, 8, 1, false},   {{1440, 900}, false, true, 1, 9, 1, true},
        {{1440, 900}, false, false, 1, 8, 1, false},  {{1280, 800}, true, true, 1, 16, 2, false},
        {{1440, 900}, true, false, 1, 16, 2, false},  {{2560, 1600}, false, true, 1, 16, 2, false},
        {{1200, 750}, false, true, 1, 7, 0, false},   {{1280, 800}, false, true, 0.8F, 6, 0, false},
        {{1440, 900}, false, true, 0.8F, 7, 0, true}, {{1440, 900}, true, true, 0.8F, 14, 0, true},
        {{1280, 800}, false, true, 0, 8, 1, false},   {{1600, 1000}, true, true, 0.5F, 9, 1, true},
        {{11520, 7200}, false, true, 1, 72, 8, true},
    };
    for (const auto& c : cases) {
        CAPTURE(c.window.width);
        CAPTURE(c.scale);
        const Grid grid = SizeGrid({.window = c.window,
                                    .want_large = c.large,
                                    .nine_wide_face = c.nine_wide_face,
                                    .classic_scale = c.scale});
        CHECK(grid.cell_width == c.cell_width);
        CHECK(grid.font_pixel == c.font_pixel);
        CHECK(grid.nine_wide == c.nine_wide);
    }
}

TEST_CASE("every classic window from 1280 by 800 holds 160 by 50 whole cells, Large 80 by 25") {
    for (int width = 1280; width <= 5200; width += 37) {
        for (int height = 800; height <= 2900; height += 41) {
            CAPTURE(width);
            CAPTURE(height);
            GridRequest request{.window = {width, height}};
            const Grid normal = SizeGrid(request);
            request.want_large = true;
            const Grid large = SizeGrid(request);
            REQUIRE(normal.font_pixel >= 1);
            REQUIRE(normal.cell_width == normal.font_pixel * (normal.nine_wide ? 9 : 8));
            REQUIRE((normal.columns >= 160 && normal.rows >= 50));
            if (!large.large) continue;
            REQUIRE(large.font_pixel == normal.font_pixel + 1);
            REQUIRE((large.columns >= 80 && large.rows >= 25));
        }
    }
}

TEST_CASE("the grid is centred, and its rows cover its height without gaps") {
    for (const Look look : {Look::Classic, Look::Modern}) {
        for (const PixelSize window :
             {PixelSize{1366, 768}, {1283, 809}, {97, 31}, {3, 2}, {1, 1}}) {
            CAPTURE(window.width);
            const Grid grid = SizeGrid({.window = window, .look = look});
            const int right = window.width - grid.LeftPixels() - grid.columns * grid.cell_width;
            const int bottom = window.height - grid.RowTop(grid.rows);
            CHECK((right == grid.LeftPixels() || right == grid.LeftPixels() + 1));
            CHECK(grid.RowTop(0) == grid.TopPixels());
            if (window.height >= 3) CHECK((bottom >= 0 && bottom <= grid.TopPixels() + 1));
            for (int row = 0; row < grid.rows; ++row) {
                const int height = grid.RowTop(row + 1) - grid.RowTop(row);
                CHECK(std::abs(static_cast<float>(height) - grid.cell_height) < 1);
            }
        }
    }
}

TEST_CASE("modern lines are two pixels thick from a display scale of 1.75, where cells allow") {
    const struct {
        PixelSize window;
        float scale;
        int line_pixels;
    } cases[] = {{{3840, 2160}, 1, 1}, {{3840, 2160}, 1.5F, 1}, {{3840, 2160}, 1.75F, 2},
                 {{1280, 880}, 2, 2},  {{1279, 880}, 2, 1},     {{600, 380}, 4, 1}};
    for (const auto& c : cases) {
        CAPTURE(c.window.width);
        CAPTURE(c.scale);
        const Grid grid =
            SizeGrid({.window = c.window, .look = Look::Modern, .display_scale = c.scale});
        CHECK(grid.line_pixels == c.line_pixels);
    }
}
