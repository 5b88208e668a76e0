#pragma once

#include "face.h"

namespace zo::gpu {

// The text-mode face: sharp dots wherever a cell has room for its letters, and shades of coverage
// in cells too small for them.
class ClassicFace final : public Face {
public:
    void Fit(const ui::Grid& grid) override { grid_ = grid; }
    bool Draw(char32_t glyph, Mask& cell) override;

private:
    ui::Grid grid_;
};

}  // namespace zo::gpu
