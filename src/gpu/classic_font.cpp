#include "classic_font.h"

#include <charconv>
#include <string_view>

#include "base/embedded.h"

// Tables of glyphs; one that stands before another wins.
extern "C" const base::EmbeddedFile classic_fonts[];

namespace zo::gpu {
namespace {

constexpr int kColumns = 8;
constexpr int kRows = 16;
constexpr std::size_t kDots = 5;                      // where a line's rows of dots begin
constexpr std::size_t kLine = kDots + 2 * kRows + 1;  // "0041 00...\n"

unsigned Hexadecimal(std::string_view digits) {
    unsigned value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return value;
}

Dots ReadDots(std::string_view line) {
    Dots dots{.columns = kColumns, .rows = kRows};
    for (std::size_t y = 0; y < kRows; ++y) {
        const unsigned row = Hexadecimal(line.substr(kDots + 2 * y, 2));
        for (unsigned x = 0; x < kColumns; ++x) {
            if ((row >> (kColumns - 1 - x) & 1) != 0)
                dots.bits[y] |= static_cast<std::uint16_t>(1 << x);
        }
    }
    return dots;
}

// The lines are of one length and sorted, so the table is searched where it lies in the program.
std::optional<Dots> Find(std::string_view table, char32_t code_point) {
    std::size_t low = 0, high = table.size() / kLine;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const std::string_view line = table.substr(middle * kLine, kLine);
        const char32_t found = Hexadecimal(line.substr(0, kDots - 1));
        if (found == code_point) return ReadDots(line);
        (found < code_point ? low : high) = found < code_point ? middle + 1 : middle;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Dots> FindClassicGlyph(char32_t code_point) {
    for (const base::EmbeddedFile* table = classic_fonts; table->name != nullptr; ++table) {
        if (auto dots = Find({table->data, table->size}, code_point)) return dots;
    }
    return std::nullopt;
}

}  // namespace zo::gpu
