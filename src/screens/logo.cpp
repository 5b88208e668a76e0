#include "logo.h"

#include <string>
#include <string_view>

#include "base/version.h"

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
constexpr std::string_view kTagline = "LC-1 service bench";

void DrawLogo(zo::ui::Canvas& canvas, const NamePlace& place) {
    for (int y = 0; y < place.logo.height; ++y) {
        const std::string_view row = kLetters[y / place.scale];
        for (int x = 0; x < place.logo.width; ++x) {
            const char mark = row[static_cast<std::size_t>(x / place.scale)];
            canvas.Put(place.logo.x + x, place.logo.y + y, static_cast<char32_t>(mark),
                       zo::ui::Role::Logo);
        }
    }
}

void DrawCentred(zo::ui::Canvas& canvas, int y, std::string_view text) {
    const int x = (canvas.Columns() - static_cast<int>(text.size())) / 2;
    canvas.Text(x, y, text, zo::ui::Role::BootDim);
}

}  // namespace

NamePlace::NamePlace(int columns, int rows) {
    const bool tall = rows >= kTallRows;
    scale = columns >= kBigColumns && tall ? 2 : 1;
    const int width = kWidth * scale;
    logo = {(columns - width) / 2, tall ? rows * 6 / 50 : 2, width, kHeight * scale};
    tagline = logo.Bottom() + 1;
    version = tagline + 1;
    menu = tagline + (tall ? 7 : 3);
}

void DrawName(zo::ui::Canvas& canvas) {
    const NamePlace place(canvas.Columns(), canvas.Rows());
    canvas.Fill({0, place.logo.y - 1, canvas.Columns(), place.version + 3 - place.logo.y}, U' ',
                zo::ui::Role::Boot);
    DrawLogo(canvas, place);
    DrawCentred(canvas, place.tagline, kTagline);
    DrawCentred(canvas, place.version, "Version " + std::string(base::Version()));
}

}  // namespace Kest
