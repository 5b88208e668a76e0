#pragma once

#include "cells/grid_size.h"
#include "mask.h"

namespace zo::gpu {

// How the classic face's dots lie in a cell: as many whole dots as fit, centred.
struct Raster {
    int columns = 8;
    int rows = 16;
    int dot = 1;   // pixels
    int left = 0;  // pixels before the first dot
    int top = 0;
};

// Cells under six pixels wide have a dot for every pixel.
Raster FitRaster(const ui::Grid& grid, int cell_height);

enum class Edge : std::uint8_t {
    Blank,     // nothing outside the raster
    Extended,  // its outer dots go on to the cell's edge, where they meet the next cell's
};

// Draws the dots, one a pixel in `dots`, into a cell.
void PutDots(const Mask& dots, const Raster& raster, Edge edge, Mask& cell);

}  // namespace zo::gpu
