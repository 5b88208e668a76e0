#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zo::gpu {

// How much of a pixel the ink covers, from 0 to kFull.
using Level = std::uint8_t;
inline constexpr Level kFull = 32;

// A picture of coverage, such as a glyph in its cell.
class Mask {
public:
    Mask(int width, int height)
        : width_(width), height_(height), levels_(static_cast<std::size_t>(width * height)) {}

    int Width() const { return width_; }
    int Height() const { return height_; }
    Level At(int x, int y) const { return levels_[Index(x, y)]; }
    void Set(int x, int y, Level level) { levels_[Index(x, y)] = level; }
    const std::vector<Level>& Levels() const { return levels_; }

    // The columns from left and the rows from top, up to but not including right and bottom, as far
    // as they are in the mask.
    void Fill(int left, int top, int right, int bottom, Level level = kFull) {
        for (int y = std::max(top, 0); y < std::min(bottom, height_); ++y) {
            for (int x = std::max(left, 0); x < std::min(right, width_); ++x) Set(x, y, level);
        }
    }

private:
    std::size_t Index(int x, int y) const { return static_cast<std::size_t>(y * width_ + x); }

    int width_;
    int height_;
    std::vector<Level> levels_;
};

}  // namespace zo::gpu
