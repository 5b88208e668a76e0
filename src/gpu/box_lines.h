#pragma once

#include "mask.h"

namespace zo::gpu {

// How thick the lines of a frame are, in pixels of the mask that they are drawn into.
struct LineStyle {
    int across = 2;             // of a light vertical line
    int along = 2;              // of a light horizontal line
    bool solid_double = false;  // a double line is one line twice as thick
};

inline bool IsBoxLine(char32_t glyph) {
    return glyph >= 0x2500 && glyph <= 0x257F;
}

// Draws one of the lines U+2500 to U+257F. Every line runs to the mask's edge, where it meets the
// line of the next cell.
void DrawBoxLine(char32_t glyph, const LineStyle& style, Mask& mask);

}  // namespace zo::gpu
