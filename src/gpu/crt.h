#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "outside/outside.h"

namespace zo::gpu {

// The look of a picture tube: darker scan lines and a dark edge. It moves nothing and does not
// change with time.
class CrtFilter {
public:
    // `dot` is the height of a font pixel in pixels, 0 when it is not whole, and `top` the first
    // row of the grid, from which the font's rows are counted.
    void Resize(ui::PixelSize size, int dot, int top);
    // Darkens pixels that hold the plain picture.
    void Apply(const platform::PixelRect& rect, platform::PixelBuffer& buffer) const;

private:
    // Of brightness between the corners and the middle; more would change no channel by 1.
    static constexpr std::size_t kSteps = 36;
    // Where a row's edge lightens by a step, from its left end to its middle; its right half is
    // the same mirrored.
    using Lightens = std::array<std::uint16_t, kSteps>;
    // In 65536ths, for a row without and with a scan line, by the steps that the edge takes.
    using Factors = std::array<std::array<std::uint16_t, kSteps + 1>, 2>;

    void ApplyRow(int y, int left, int right, std::uint32_t* row) const;

    ui::PixelSize size_;
    int dot_ = 0;
    int top_ = 0;
    Factors factors_;
    std::vector<Lightens> edges_;  // by row
};

}  // namespace zo::gpu
