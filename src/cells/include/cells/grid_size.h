#pragma once

#include <cstdint>

#include "cells/theme.h"

namespace zo::ui {

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

// What decides the size of the cells.
struct GridRequest {
    PixelSize window;  // each taken as at least 1
    Look look = Look::Classic;
    bool want_large = false;
    bool nine_wide_face = true;  // the face with glyphs nine font pixels wide is there
    float classic_scale = 1;     // 0.8 for the reduced classic grid
    float display_scale = 1;     // modern only: from the window's dots per inch
    bool in_cells = false;       // the window's size is its columns and rows, as a terminal's is
};

struct Grid {
    int columns = 1;
    int rows = 1;
    float left_margin = 0;  // in units in which a cell is 9 wide
    float top_margin = 0;
    Look look = Look::Classic;
    int cell_width = 1;     // pixels
    float cell_height = 2;  // pixels: 2 x width, or 2.2 x width in the modern look
    int font_pixel = 0;     // screen pixels to a font pixel; 0 when the cell is not a whole number
    bool nine_wide = false;
    int line_pixels = 1;           // thickness of a single line in the modern look
    bool large = false;            // in effect
    bool large_available = false;  // a larger size fits the window

    // The pixel rows that row r of the grid takes: from RowTop(r) up to RowTop(r + 1).
    int RowTop(int row) const;
    int LeftPixels() const;
    int TopPixels() const;
    bool operator==(const Grid&) const = default;
};

Grid SizeGrid(const GridRequest& request);

}  // namespace zo::ui
