#pragma once

#include "cells/grid_size.h"
#include "mask.h"

namespace zo::gpu {

// A type face. It draws letters and signs; lines, blocks and shades never come from a face.
class Face {
public:
    virtual ~Face() = default;
    // Says for which grid's cells the glyphs to come are.
    virtual void Fit(const ui::Grid& grid) = 0;
    // Draws the glyph into the blank mask of a cell. False when the face does not have it.
    virtual bool Draw(char32_t glyph, Mask& cell) = 0;
};

}  // namespace zo::gpu
