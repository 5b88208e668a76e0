#pragma once

#include <cstddef>
#include <cstdint>

#include "mask.h"
#include "ramp.h"

namespace zo::gpu {

// A rectangle of a picture in memory.
struct Pixels {
    std::uint32_t* first;
    std::ptrdiff_t stride;  // pixels from one row to the next
    int width;
    int height;

    Pixels Rows(int from, int count) const { return {first + from * stride, stride, width, count}; }
};

void Fill(const Pixels& target, std::uint32_t pixel);

// Draws levels, a row of which is `level_stride` long.
void Mix(const Pixels& target, const Level* levels, int level_stride, const Ramp& ramp);

}  // namespace zo::gpu
