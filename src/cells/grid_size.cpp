#include "cells/grid_size.h"

#include <algorithm>
#include <cmath>

namespace zo::ui {
namespace {

constexpr PixelSize kClassicFloor = {160, 50};  // cells that the normal classic grid holds at least
constexpr PixelSize kLargeFloor = {80, 25};
constexpr double kModernHeight = 2.2;     // cell height over cell width
constexpr double kSlack = 0.000001;       // so that an exact fit is not lost to rounding
constexpr float kUnitsPerCell = 9;        // of the margins
constexpr float kThickLineScale = 1.75F;  // of the display; modern lines are two pixels from here
constexpr int kThickLineCell = 8;         // pixels that a cell must have for them

struct ClassicCell {
    int width = 1;
    int font_pixel = 0;
    bool nine_wide = false;
};

ClassicCell WholeFontPixels(int font_pixel, bool nine_wide) {
    return {(nine_wide ? 9 : 8) * font_pixel, font_pixel, nine_wide};
}

// The largest cell that still gives the full grid, in whole font pixels from eight pixels up.
ClassicCell NormalCell(PixelSize window, bool nine_wide_face) {
    const int widest = std::max(1, std::min(window.height / (2 * kClassicFloor.height),
                                            window.width / kClassicFloor.width));
    if (widest < 8) return {widest, 0, false};
    const bool nine_wide = nine_wide_face && 9 * (widest / 9) >= 8 * (widest / 8);
    return WholeFontPixels(widest / (nine_wide ? 9 : 8), nine_wide);
}

bool HoldsLarge(PixelSize window, const ClassicCell& cell) {
    return window.width / cell.width >= kLargeFloor.width &&
           window.height / (2 * cell.width) >= kLargeFloor.height;
}

// The cell one font pixel larger; its width is 0 when no larger one fits.
ClassicCell LargeCell(PixelSize window, bool nine_wide_face, int normal_font_pixel) {
    for (const bool nine_wide : {true, false}) {
        const ClassicCell cell = WholeFontPixels(normal_font_pixel + 1, nine_wide);
        if ((!nine_wide || nine_wide_face) && HoldsLarge(window, cell)) return cell;
    }
    return {0, 0, false};
}

ClassicCell Scaled(ClassicCell cell, float scale) {
    if (scale <= 0 || scale == 1) return cell;
    cell.width = std::max(1, static_cast<int>(std::lround(double{scale} * cell.width)));
    const int glyph_width = cell.nine_wide ? 9 : 8;
    cell.font_pixel = cell.width % glyph_width == 0 ? cell.width / glyph_width : 0;
    return cell;
}

int ModernRows(int height, int cell_width) {
    return static_cast<int>(std::floor(height / (kModernHeight * cell_width) + kSlack));
}

// The widest cell, at least `least` and at most `start`, of which `rows` rows fit.
int LoweredToRows(int start, int least, int height, int rows) {
    int width = start;
    while (width > least && ModernRows(height, width) < rows) --width;
    return width;
}

// A display scale times a number of pixels, rounded so that a quarter is enough for the next one.
int ScaledPixels(double pixels, float display_scale) {
    return static_cast<int>(std::floor(pixels * std::max(display_scale, 0.5F) + 0.25));
}

int NormalModernWidth(PixelSize window, float display_scale) {
    const int full = LoweredToRows(std::max(1, window.width / kClassicFloor.width), 1,
                                   window.height, kClassicFloor.height);
    return std::max(1, std::min(ScaledPixels(7.5, display_scale), full));
}

// Not above the normal width when no larger cell fits.
int LargeModernWidth(PixelSize window, float display_scale, int normal) {
    const int largest = std::min({2 * normal, window.width / kLargeFloor.width,
                                  std::max(normal + 1, ScaledPixels(9, display_scale))});
    return LoweredToRows(largest, normal, window.height, kLargeFloor.height);
}

// Counts the cells that fit and centres them.
void Place(Grid& grid, PixelSize window) {
    const bool modern = grid.look == Look::Modern;
    const double height = modern ? kModernHeight * grid.cell_width : 2.0 * grid.cell_width;
    grid.cell_height = static_cast<float>(height);
    grid.columns = std::max(1, window.width / grid.cell_width);
    grid.rows = std::max(1, modern ? ModernRows(window.height, grid.cell_width)
                                   : window.height / (2 * grid.cell_width));
    const int left = (window.width - grid.columns * grid.cell_width) / 2;
    const int top = static_cast<int>((window.height - grid.rows * height) / 2);
    const float units = kUnitsPerCell / static_cast<float>(grid.cell_width);
    grid.left_margin = static_cast<float>(left) * units;
    grid.top_margin = static_cast<float>(top) * units;
}

int MarginPixels(float units, int cell_width) {
    return static_cast<int>(std::lround(units * static_cast<float>(cell_width) / kUnitsPerCell));
}

void SizeClassic(Grid& grid, const GridRequest& request, PixelSize window) {
    const ClassicCell normal = NormalCell(window, request.nine_wide_face);
    const ClassicCell large = LargeCell(window, request.nine_wide_face, normal.font_pixel);
    grid.large_available = large.width > 0;
    grid.large = request.want_large && grid.large_available;
    const ClassicCell cell = Scaled(grid.large ? large : normal, request.classic_scale);
    grid.cell_width = cell.width;
    grid.font_pixel = cell.font_pixel;
    grid.nine_wide = cell.nine_wide;
}

void SizeModern(Grid& grid, const GridRequest& request, PixelSize window) {
    const int normal = NormalModernWidth(window, request.display_scale);
    const int large = LargeModernWidth(window, request.display_scale, normal);
    grid.large_available = large > normal;
    grid.large = request.want_large && grid.large_available;
    grid.cell_width = grid.large ? large : normal;
    const bool thick =
        request.display_scale >= kThickLineScale && grid.cell_width >= kThickLineCell;
    grid.line_pixels = thick ? 2 : 1;
}

}  // namespace

int Grid::RowTop(int row) const {
    return TopPixels() + static_cast<int>(std::lround(static_cast<float>(row) * cell_height));
}

int Grid::LeftPixels() const {
    return MarginPixels(left_margin, cell_width);
}
int Grid::TopPixels() const {
    return MarginPixels(top_margin, cell_width);
}

Grid SizeGrid(const GridRequest& request) {
    const PixelSize window = {std::max(1, request.window.width),
                              std::max(1, request.window.height)};
    Grid grid;
    grid.look = request.look;
    if (request.in_cells) {
        grid.columns = window.width;
        grid.rows = window.height;
        grid.cell_height = 1;
        return grid;
    }
    if (request.look == Look::Classic) {
        SizeClassic(grid, request, window);
    } else {
        SizeModern(grid, request, window);
    }
    Place(grid, window);
    return grid;
}

}  // namespace zo::ui
