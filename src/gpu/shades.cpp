#include "shades.h"

namespace zo::gpu {
namespace {

constexpr char32_t kFirst = 0x2591;
enum Shade { kLight, kMedium, kDark };

bool IsInked(int shade, int column, int row) {
    const int start = row == 0 ? 2 : 0;  // where a light shade has its dots, four columns apart
    switch (shade) {
        case kLight:
            return column % 4 == start;
        case kMedium:
            return (column + row) % 2 == 0;
        default:
            return column % 4 != start;
    }
}

}  // namespace

void ShadePatterns::Resize(int width, int dot) {
    if (width == width_ && dot == dot_) return;
    width_ = width;
    dot_ = dot;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i].assign(static_cast<std::size_t>(width), 0);
        for (int x = 0; x < width; ++x) {
            const bool inked = IsInked(static_cast<int>(i / 2), x / dot, static_cast<int>(i % 2));
            if (inked) rows_[i][static_cast<std::size_t>(x)] = kFull;
        }
    }
}

const Level* ShadePatterns::Row(char32_t glyph, int y) const {
    return rows_[(glyph - kFirst) * 2 + static_cast<std::size_t>(y / dot_ % 2)].data();
}

Level FlatShade(char32_t glyph) {
    constexpr std::array<Level, 3> kLevels = {5, 10, 19};  // 15, 30 and 60 percent
    return kLevels[glyph - kFirst];
}

}  // namespace zo::gpu
