#include "logo.h"

#include <string_view>

namespace Kest {
namespace {

// Six by five to a letter, one column between letters.
constexpr std::string_view kLetters[] = {
    "##  ##  ####  ##  ## ######  ####  #####      ##  ## ######  ##### ######",
    "##  ## ##  ## ### ##   ##   ##  ## ##  ##     ## ##  ##     ##       ##  ",
    "##  ## ###### ######   ##   ##  ## #####      ####   ####    ####    ##  ",
    " ####  ##  ## ## ###   ##   ##  ## ## ##      ## ##  ##         ##   ##  ",
    "  ##   ##  ## ##  ##   ##    ####  ##  ##     ##  ## ###### #####    ##  ",
};
constexpr int kWidth = static_cast<int>(kLetters[0].size());
constexpr int kHeight = static_cast<int>(std::size(kLetters));

constexpr int kBigColumns = 150;
constexpr int kTallRows = 40;  // from which the title spreads over the height

}  // namespace

Logo::Logo(int columns, int rows) {
    scale = columns >= kBigColumns && rows >= kTallRows ? 2 : 1;
    const int width = kWidth * scale;
    area = {(columns - width) / 2, rows < kTallRows ? 2 : rows * 6 / 50, width, kHeight * scale};
}

void Logo::Draw(zo::ui::Canvas& canvas) const {
    for (int y = 0; y < area.height; ++y) {
        const std::string_view row = kLetters[y / scale];
        for (int x = 0; x < area.width; ++x) {
            const char mark = row[static_cast<std::size_t>(x / scale)];
            canvas.Put(area.x + x, area.y + y, static_cast<char32_t>(mark), zo::ui::Role::Logo);
        }
    }
}

}  // namespace Kest
