#include "raster.h"

namespace zo::gpu {
namespace {

// The widths at which the face's letters are whole, from the most to be preferred.
constexpr int kWidths[] = {9, 8, 7, 6};

Raster Centred(Raster raster, int cell_width, int cell_height) {
    raster.left = (cell_width - raster.columns * raster.dot) / 2;
    raster.top = (cell_height - raster.rows * raster.dot) / 2;
    return raster;
}

// Floors, so that dots before the raster have negative numbers too.
int DotAt(int pixel, int dot) {
    return pixel >= 0 ? pixel / dot : -1;
}

}  // namespace

Raster FitRaster(const ui::Grid& grid, int cell_height) {
    const int width = grid.cell_width;
    if (grid.font_pixel > 0) {
        const int columns = grid.nine_wide ? 9 : 8;
        return Centred({columns, 2 * columns, grid.font_pixel}, width, cell_height);
    }
    Raster best{width, cell_height, 1};
    int covered = 0;
    for (const int columns : kWidths) {
        const int dot = std::min(width / columns, cell_height / (2 * columns));
        if (dot * columns <= covered) continue;
        covered = dot * columns;
        best = {columns, 2 * columns, dot};
    }
    return Centred(best, width, cell_height);
}

void PutDots(const Mask& dots, const Raster& raster, Edge edge, Mask& cell) {
    for (int y = 0; y < cell.Height(); ++y) {
        for (int x = 0; x < cell.Width(); ++x) {
            int column = DotAt(x - raster.left, raster.dot);
            int row = DotAt(y - raster.top, raster.dot);
            if (edge == Edge::Extended) {
                column = std::clamp(column, 0, raster.columns - 1);
                row = std::clamp(row, 0, raster.rows - 1);
            }
            const bool inside =
                column >= 0 && column < raster.columns && row >= 0 && row < raster.rows;
            if (inside) cell.Set(x, y, dots.At(column, row));
        }
    }
}

}  // namespace zo::gpu
