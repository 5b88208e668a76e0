#pragma once

#include "face.h"

namespace zo::gpu {

// The text-mode face: sharp dots wherever a cell has room for its letters, and shades of coverage
// in cells too small for them.
class ClassicFace final : public Face {
public:
    bool Draw(char32_t glyph, const Raster& raster, Mask& cell) override;
};

}  // namespace zo::gpu
