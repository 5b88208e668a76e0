#include "small_screen.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/format.h"
#include "base/wrap.h"

namespace zo::term {

ui::Frame TooSmall(ui::PixelSize size, ui::PixelSize least) {
    const std::string sentence = base::Format(
        "Vantor Kest needs %d columns and %d rows; this terminal has %d and %d. Make it larger, or "
        "press Esc to leave.",
        least.width, least.height, size.width, size.height);
    const std::vector<std::string> lines = base::WrapEven(sentence, std::max(size.width, 1));
    ui::Frame frame;
    frame.Resize({.columns = size.width, .rows = size.height, .cell_height = 1});
    const ui::Ink colours = ui::Colours(ui::Look::Classic, 0, ui::Role::Status);
    const auto count = static_cast<int>(lines.size());
    const int top = std::max((size.height - count) / 2, 0);
    for (int y = 0; y < size.height; ++y) {
        const bool has_line = y >= top && y - top < count;
        const std::string line = has_line ? lines[static_cast<std::size_t>(y - top)] : "";
        const auto cells = static_cast<int>(line.size());
        const int left = (size.width - cells) / 2;
        for (int x = 0; x < size.width; ++x) {
            const bool inside = x >= left && x - left < cells;
            const char glyph = inside ? line[static_cast<std::size_t>(x - left)] : ' ';
            frame.At(x, y) = {.glyph = static_cast<char32_t>(glyph),
                              .ink = colours.ink,
                              .ground = colours.ground,
                              .role = ui::Role::Status};
        }
    }
    return frame;
}

}  // namespace zo::term
