#pragma once

#include "mask.h"
#include "raster.h"

namespace zo::gpu {

// A type face. It draws letters and signs; lines, blocks and shades never come from a face.
class Face {
public:
    virtual ~Face() = default;
    // Draws the glyph into the blank mask of a cell. False when the face does not have it.
    virtual bool Draw(char32_t glyph, const Raster& raster, Mask& cell) = 0;
};

}  // namespace zo::gpu
