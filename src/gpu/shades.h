#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "mask.h"

namespace zo::gpu {

inline bool IsShade(char32_t glyph) {
    return glyph >= 0x2591 && glyph <= 0x2593;
}

// The patterns of dots that fill a quarter, a half and three quarters of an area. They go on across
// cells, so they are kept as rows as long as the grid is wide: every second row of dots is alike.
class ShadePatterns {
public:
    void Resize(int width, int dot);
    // The levels of a row of pixels, from the grid's left edge; y counts from the grid's top.
    const Level* Row(char32_t glyph, int y) const;

private:
    std::array<std::vector<Level>, 6> rows_;  // two rows of dots for each shade
    int width_ = 0;
    int dot_ = 0;
};

// A shade as one flat mix of the ink into the ground.
Level FlatShade(char32_t glyph);

}  // namespace zo::gpu
