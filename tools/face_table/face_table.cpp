// face_table FONT: writes an 8x16 outline font as a text table of glyphs to the standard output, a
// line a glyph: the code point and the 16 rows, the leftmost dot in the highest bit.
#include <ft2build.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>

#include FT_FREETYPE_H

namespace {

constexpr int kColumns = 8;
constexpr int kRows = 16;
constexpr int kBaseline = 13;  // rows above it

struct Range {
    FT_ULong first, last;
};

// Lines, blocks and shades (U+2500 to U+259F) are left out: the renderer draws them.
constexpr Range kRanges[] = {
    {0x0020, 0x007E},  // ASCII
    {0x00A0, 0x024F},  // Latin
    {0x0370, 0x052F},  // Greek, Cyrillic
    {0x1E00, 0x1EFF},  // Latin with more accents
    {0x2010, 0x205E},  // punctuation
    {0x2070, 0x209C},  // superscripts, subscripts
    {0x20A0, 0x20BF},  // currencies
    {0x2100, 0x218F},  // letterlike signs, fractions
    {0x2190, 0x23FF},  // arrows, mathematics, technical signs
    {0x25A0, 0x27BF},  // shapes, symbols
};

using Rows = std::array<std::uint8_t, kRows>;

std::optional<Rows> Draw(FT_Face face, FT_ULong code_point) {
    const FT_UInt index = FT_Get_Char_Index(face, code_point);
    if (index == 0) return std::nullopt;
    constexpr FT_Int32 kFlags = FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_NO_HINTING;
    if (FT_Load_Glyph(face, index, kFlags) != 0) return std::nullopt;
    const FT_GlyphSlot slot = face->glyph;
    Rows rows = {};
    for (int y = 0; y < static_cast<int>(slot->bitmap.rows); ++y) {
        for (int x = 0; x < static_cast<int>(slot->bitmap.width); ++x) {
            const int byte = slot->bitmap.buffer[y * slot->bitmap.pitch + x / 8];
            if ((byte >> (7 - x % 8) & 1) == 0) continue;
            const int column = slot->bitmap_left + x;
            const int row = kBaseline - slot->bitmap_top + y;
            if (column < 0 || column >= kColumns || row < 0 || row >= kRows) return std::nullopt;
            rows[static_cast<std::size_t>(row)] |= static_cast<std::uint8_t>(0x80 >> column);
        }
    }
    return rows;
}

}  // namespace

int main(int argc, char** argv) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (argc != 2 || FT_Init_FreeType(&library) != 0 ||
        FT_New_Face(library, argv[1], 0, &face) != 0 || FT_Set_Pixel_Sizes(face, 0, kRows) != 0) {
        std::fputs("usage: face_table FONT, a font file that can be read\n", stderr);
        return 1;
    }
    for (const Range& range : kRanges) {
        for (FT_ULong code_point = range.first; code_point <= range.last; ++code_point) {
            const std::optional<Rows> rows = Draw(face, code_point);
            if (!rows) continue;
            std::printf("%04lX ", code_point);
            for (const std::uint8_t row : *rows) std::printf("%02X", row);
            std::putchar('\n');
        }
    }
    FT_Done_FreeType(library);
    return 0;
}
