#pragma once

#include "mask.h"
#include "raster.h"

namespace zo::gpu {

inline bool IsBlock(char32_t glyph) {
    return (glyph >= 0x2580 && glyph <= 0x2590) || (glyph >= 0x2594 && glyph <= 0x259F);
}
// Draws a block to fractions of the whole cell, so that blocks meet across cells of any size.
void DrawBlock(char32_t glyph, Mask& cell);

inline bool IsTriangle(char32_t glyph) {
    return glyph == 0x25B2 || glyph == 0x25BA || glyph == 0x25BC || glyph == 0x25C4;
}
// Draws a triangle in whole dots, even on both sides, in the middle of the row.
void DrawTriangle(char32_t glyph, Mask& dots);

// The triangles, the diamond and the bullet, by which the screens point, rate and mark.
bool IsPointer(char32_t glyph);
// Draws one with smooth edges around a row of the cell's pixels.
void DrawPointer(char32_t glyph, int middle_row, Mask& cell);

}  // namespace zo::gpu
