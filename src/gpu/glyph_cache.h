#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "cells/grid_size.h"
#include "classic_face.h"
#include "modern_face.h"
#include "raster.h"

namespace zo::gpu {

struct Glyph {
    const Level* levels;  // of the cell's pixels, row by row
    bool blank;           // no pixel is inked
};

// The glyphs of one grid's cells, each drawn when it is first asked for. Shades are none: they run
// on across cells.
class GlyphCache {
public:
    // Forgets the glyphs when the grid's cells are not like the last one's.
    void Prepare(const ui::Grid& grid);
    // Of a cell this high: modern rows are not all of one height. What the face lacks shows as a
    // sign that stands for it. The levels are valid until the next call.
    Glyph Find(char32_t code_point, int cell_height);

    const Raster& DotRaster() const { return rasters_[0]; }

private:
    struct Entry {
        std::int32_t offset = -1;  // into levels_
        bool blank = true;
    };

    void Draw(char32_t code_point, std::size_t height, Mask& cell);
    void DrawLine(char32_t code_point, std::size_t height, Mask& cell) const;
    void DrawLetter(char32_t code_point, Mask& cell);
    Entry Keep(const Mask& mask);

    ui::Grid grid_ = {.columns = 0};
    int low_cell_ = 0;  // height of the lower of the two kinds of rows, the other is a pixel higher
    std::array<Raster, 2> rasters_;
    std::array<std::vector<Entry>, 2> entries_;  // by code point, for each height
    std::vector<Level> levels_;
    ClassicFace classic_;
    ModernFace modern_;
};

}  // namespace zo::gpu
