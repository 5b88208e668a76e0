#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "canvas.h"
#include "gpu/fonts.h"

using namespace gpu_test;
using zo::ui::Grid;

namespace {

// What code page 437 has from 32 to 254, and its signs below 32.
constexpr const char* kCodePage =
    "!\"#$%&'()*+,-./"
    "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"
    "ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌"
    "▐▀"
    "αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼⌂";

std::string GlyphArt(const Grid& grid, char32_t glyph) {
    std::string text;
    base::AppendUtf8(text, glyph);
    return Art(Painted(Text(grid, {text})));
}

}  // namespace

TEST_CASE("a letter is drawn dot by dot, nine wide with a blank column and two blank rows") {
    const std::string eight =
        "........\n........\n...##...\n..####..\n.##..##.\n.##..##.\n.##..##.\n.######.\n"
        ".##..##.\n.##..##.\n.##..##.\n.##..##.\n.##..##.\n........\n........\n........\n";
    CHECK(GlyphArt(Classic(8, 1, 1), U'A') == eight);

    std::string nine = ".........\n";
    for (std::size_t row = 0; row < eight.size(); row += 9) nine += eight.substr(row, 8) + ".\n";
    nine += ".........\n";
    CHECK(GlyphArt(Classic(9, 1, 1), U'A') == nine);

    // Two dots high and wide, the same picture four times as large.
    const std::string sixteen = GlyphArt(Classic(16, 1, 1), U'A');
    for (std::size_t y = 0; y < 32; ++y) {
        for (std::size_t x = 0; x < 16; ++x) {
            CHECK(sixteen[y * 17 + x] == eight[y / 2 * 9 + x / 2]);
        }
    }
}

TEST_CASE("narrow cells keep a letter's strokes, its gap to the next and a common baseline") {
    CHECK(
        GlyphArt(Classic(7, 1, 1), U'g') ==
        ".......\n.......\n.......\n.......\n.......\n.#####.\n##..##.\n##..##.\n##..##.\n##..##.\n"
        ".#####.\n....##.\n....##.\n#####..\n");
    CHECK(GlyphArt(Classic(6, 1, 1), U'm') ==
          "......\n......\n......\n......\n#..##.\n#####.\n#.#.#.\n#.#.#.\n#...#.\n......\n......\n"
          "......\n");
    for (const int width : {6, 7, 12, 13, 14, 19, 22, 26}) {
        CAPTURE(width);
        for (const char32_t letter : base::ToUtf32("AHMWmwx%&@08")) {
            const std::string art = GlyphArt(Classic(width, 1, 1), letter);
            CHECK(art.find('+') == std::string::npos);
            const auto row = static_cast<std::size_t>(width + 1);
            for (std::size_t y = 0; y < art.size(); y += row) CHECK(art[y + row - 2] == '.');
        }
    }
}

TEST_CASE("every glyph of the code page is there and unlike any other, ASCII in small cells too") {
    std::vector<Grid> grids;
    for (const int width : {4, 5, 6, 7, 8, 9, 16}) grids.push_back(Classic(width, 1, 1));
    for (const int width : {5, 6, 7, 8, 9, 11, 15, 18}) grids.push_back(Modern(width, 1, 1));
    for (const Grid& grid : grids) {
        CAPTURE(grid.look);
        CAPTURE(grid.cell_width);
        const auto pixels = [&grid](char32_t glyph) {
            const std::string text = base::ToUtf8(std::u32string(1, glyph));
            return Painted(Text(grid, {text})).pixels;
        };
        std::map<std::vector<std::uint32_t>, char32_t> seen;
        seen.emplace(pixels(U' '), U' ');
        seen.emplace(pixels(U'日'), U'日');  // shows the sign for a missing glyph
        for (const char32_t glyph : base::ToUtf32(kCodePage)) {
            if (grid.cell_width < 6 && glyph > U'~') continue;
            const auto [other, is_new] = seen.emplace(pixels(glyph), glyph);
            CHECK_MESSAGE(is_new, base::ToUtf8(std::u32string{glyph, U' ', other->second}));
        }
    }
}

TEST_CASE("glyphs outside the face show as the sign for a missing glyph, controls as blanks") {
    const Grid grid = Classic(8, 1, 1);
    CHECK(GlyphArt(grid, U'日') == GlyphArt(grid, 0xFFFD));
    CHECK(GlyphArt(grid, U'😀') == GlyphArt(grid, 0x2EF));
    CHECK(GlyphArt(grid, U'\t') == GlyphArt(grid, U' '));
}

TEST_CASE("the faces built in are listed, the modern one by the name that its font has") {
    CHECK(zo::gpu::FontFamilies() ==
          std::vector<std::string>{"Unscii 16", "Unscii 18", "JetBrains Mono"});
}

TEST_CASE("modern letters stand whole on one baseline in rows that differ by a pixel") {
    for (const int width : {5, 6, 7, 8, 9, 11, 15, 18}) {
        CAPTURE(width);
        const Grid grid = Modern(width, 10, 5);
        const auto buffer = Painted(Text(grid, std::vector<std::string>(5, "HmxE1gpqyQ")));
        const auto at = [&](int row, int x, int y) { return At(buffer, x, grid.RowTop(row) + y); };
        const int low = static_cast<int>(grid.cell_height);  // the height of every row at least
        const int below = width / 3;  // pixel rows for what hangs under the line, at least
        for (int x = 0; x < 10 * width; ++x) {
            for (int row = 0; row < grid.rows; ++row) {
                for (int y = 0; y < low; ++y) REQUIRE(at(row, x, y) == at(0, x, y));
                if (x >= 5 * width) continue;
                for (int y = low - below; y < low; ++y) REQUIRE(at(row, x, y) == 0);
            }
        }
    }
}

TEST_CASE("modern pointers are even on both sides, and stand in the middle of the letters") {
    for (const int width : {5, 7, 8, 9, 15, 18}) {
        CAPTURE(width);
        const auto pixels = [width](char32_t glyph) {
            return Painted(Text(Modern(width, 1, 1), {base::ToUtf8(std::u32string(1, glyph))}));
        };
        const auto right = pixels(U'►'), left = pixels(U'◄'), up = pixels(U'▲'),
                   down = pixels(U'▼');
        const int middle = static_cast<int>(std::lround(1.1 * width));
        for (int y = 0; y < 2 * middle && y < up.size.height; ++y) {
            const int mirrored = 2 * middle - 1 - y;
            for (int x = 0; x < width; ++x) {
                REQUIRE(At(right, x, y) == At(left, width - 1 - x, y));
                REQUIRE(At(up, x, y) == At(up, width - 1 - x, y));
                if (mirrored < up.size.height) REQUIRE(At(up, x, y) == At(down, x, mirrored));
            }
        }
        CHECK(At(right, (width + 5) / 10, middle) == kWhite);
    }
}
