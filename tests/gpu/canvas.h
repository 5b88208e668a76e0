#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf.h"
#include "gpu/renderer.h"

namespace gpu_test {

inline constexpr zo::ui::Rgb kInk = {255, 255, 255};
inline constexpr zo::ui::Rgb kGround = {0, 0, 0};
inline constexpr zo::ui::Rgb kMargin = {1, 2, 3};
inline constexpr std::uint32_t kWhite = 0xFFFFFF;

inline zo::ui::Grid Classic(int width, int columns, int rows) {
    zo::ui::Grid grid{.columns = columns, .rows = rows, .cell_width = width};
    grid.cell_height = static_cast<float>(2 * width);
    grid.nine_wide = width % 9 == 0;
    const int glyph_width = grid.nine_wide ? 9 : 8;
    grid.font_pixel = width % glyph_width == 0 ? width / glyph_width : 0;
    return grid;
}

inline zo::ui::Grid Modern(int width, int columns, int rows) {
    zo::ui::Grid grid{.columns = columns, .rows = rows, .look = zo::ui::Look::Modern};
    grid.cell_width = width;
    grid.cell_height = 2.2F * static_cast<float>(width);
    return grid;
}

inline zo::ui::Frame Blank(const zo::ui::Grid& grid) {
    zo::ui::Frame frame;
    frame.margin = kMargin;
    frame.Resize(grid);
    for (zo::ui::Cell& cell : frame.cells) cell = {U' ', kInk, kGround};
    return frame;
}

// White text on black, a string a row; a cell a character.
inline zo::ui::Frame Text(const zo::ui::Grid& grid, const std::vector<std::string>& rows) {
    zo::ui::Frame frame = Blank(grid);
    for (int y = 0; y < static_cast<int>(rows.size()); ++y) {
        int x = 0;
        for (const char32_t glyph : base::ToUtf32(rows[static_cast<std::size_t>(y)])) {
            frame.At(x++, y).glyph = glyph;
        }
    }
    return frame;
}

inline zo::platform::PixelBuffer Painted(const zo::ui::Frame& frame, zo::ui::PixelSize size) {
    zo::platform::PixelBuffer buffer{.size = size, .pixels = {}};
    zo::gpu::MakeRenderer()->Paint(frame, buffer);
    return buffer;
}

inline zo::platform::PixelBuffer Painted(const zo::ui::Frame& frame) {
    const zo::ui::Grid& grid = frame.grid;
    return Painted(frame, {grid.columns * grid.cell_width, grid.RowTop(grid.rows)});
}

inline std::uint32_t At(const zo::platform::PixelBuffer& buffer, int x, int y) {
    return buffer.pixels[static_cast<std::size_t>(y * buffer.size.width + x)];
}

// '#' for ink, '.' for ground, '+' for a mix; a line a row of pixels.
inline std::string Art(const zo::platform::PixelBuffer& buffer) {
    std::string art;
    for (int y = 0; y < buffer.size.height; ++y) {
        for (int x = 0; x < buffer.size.width; ++x) {
            const std::uint32_t pixel = At(buffer, x, y);
            art += pixel == kWhite ? '#' : pixel == 0 ? '.' : '+';
        }
        art += '\n';
    }
    return art;
}

}  // namespace gpu_test
