#include <doctest/doctest.h>

#include <algorithm>
#include <map>

#include "canvas.h"

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
    for (const int width : {4, 5, 6, 7, 8, 9, 16}) {
        CAPTURE(width);
        const auto pixels = [width](char32_t glyph) {
            const std::string text = base::ToUtf8(std::u32string(1, glyph));
            return Painted(Text(Classic(width, 1, 1), {text})).pixels;
        };
        std::map<std::vector<std::uint32_t>, char32_t> seen;
        seen.emplace(pixels(U' '), U' ');
        seen.emplace(pixels(U'日'), U'日');  // shows the sign for a missing glyph
        for (const char32_t glyph : base::ToUtf32(kCodePage)) {
            if (width < 6 && glyph > U'~') continue;
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

TEST_CASE("the modern look centres a letter in rows that differ by a pixel") {
    const Grid grid = Modern(8, 1, 5);
    const auto buffer = Painted(Text(grid, {"A", "A", "A", "A", "A"}));
    for (int row = 0; row < grid.rows; ++row) {
        CAPTURE(row);
        const int top = grid.RowTop(row);
        const int above = (grid.RowTop(row + 1) - top - 16) / 2;
        CHECK(At(buffer, 3, top + above + 1) == 0);
        CHECK(At(buffer, 3, top + above + 2) == kWhite);
        CHECK(At(buffer, 1, top + above + 12) == kWhite);
        CHECK(At(buffer, 1, top + above + 13) == 0);
    }
}
