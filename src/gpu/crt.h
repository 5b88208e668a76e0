#pragma once

#include <cstdint>
#include <vector>

#include "outside/outside.h"

namespace zo::gpu {

// The look of a picture tube: darker scan lines and a dark edge, as one factor for every pixel of
// the window. It moves nothing and does not change with time.
class CrtFilter {
public:
    // `dot` is the height of a font pixel in pixels, 0 when it is not whole, and `top` the first
    // row of the grid, from which the font's rows are counted.
    void Resize(ui::PixelSize size, int dot, int top);
    // Darkens pixels that hold the plain picture.
    void Apply(const platform::PixelRect& rect, platform::PixelBuffer& buffer) const;

private:
    ui::PixelSize size_;
    int dot_ = 0;
    int top_ = 0;
    std::vector<std::uint16_t> factors_;  // in 65536ths
};

}  // namespace zo::gpu
