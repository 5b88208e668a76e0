#include "colours.h"

#include <array>
#include <cstdlib>

#include "numbers.h"

namespace zo::term {
namespace {

using ui::Rgb;

constexpr int kCubeStart = 16;
constexpr int kGreyStart = 232;
constexpr int kGreys = 24;
constexpr std::array<int, 6> kCubeLevels = {0, 95, 135, 175, 215, 255};

// The sixteen in the terminal's order, which is not that of a VGA card.
constexpr std::array<Rgb, 16> kSixteen = {{
    {0x00, 0x00, 0x00},
    {0xAA, 0x00, 0x00},
    {0x00, 0xAA, 0x00},
    {0xAA, 0x55, 0x00},
    {0x00, 0x00, 0xAA},
    {0xAA, 0x00, 0xAA},
    {0x00, 0xAA, 0xAA},
    {0xAA, 0xAA, 0xAA},
    {0x55, 0x55, 0x55},
    {0xFF, 0x55, 0x55},
    {0x55, 0xFF, 0x55},
    {0xFF, 0xFF, 0x55},
    {0x55, 0x55, 0xFF},
    {0xFF, 0x55, 0xFF},
    {0x55, 0xFF, 0xFF},
    {0xFF, 0xFF, 0xFF},
}};

int Distance(Rgb a, Rgb b) {
    const int r = a.r - b.r, g = a.g - b.g, blue = a.b - b.b;
    return r * r + g * g + blue * blue;
}

int NearestLevel(int value) {
    int nearest = 0;
    for (int k = 1; k < 6; ++k) {
        const auto at = [](int level) { return kCubeLevels[static_cast<std::size_t>(level)]; };
        if (std::abs(at(k) - value) < std::abs(at(nearest) - value)) nearest = k;
    }
    return nearest;
}

Rgb CubeColour(int r, int g, int b) {
    const auto level = [](int k) {
        return static_cast<std::uint8_t>(kCubeLevels[static_cast<std::size_t>(k)]);
    };
    return {level(r), level(g), level(b)};
}

Colour NearestOfSixteen(Rgb colour) {
    std::size_t nearest = 0;
    for (std::size_t k = 1; k < kSixteen.size(); ++k) {
        if (Distance(kSixteen[k], colour) < Distance(kSixteen[nearest], colour)) nearest = k;
    }
    return static_cast<Colour>(nearest);
}

Colour Direct(Rgb colour) {
    return static_cast<Colour>(colour.r << 16 | colour.g << 8 | colour.b);
}

enum class Side : std::uint8_t { Ink, Ground };

void AppendColour(std::string& out, Colour colour, Side side, Depth depth) {
    const unsigned base = side == Side::Ink ? 30 : 40;
    switch (depth) {
        case Depth::Sixteen:
            AppendNumber(out, colour < 8 ? base + colour : base + 60 + colour - 8);
            break;
        case Depth::Palette:
            AppendNumber(out, base + 8);
            out += ";5;";
            AppendNumber(out, colour);
            break;
        case Depth::Direct:
            AppendNumber(out, base + 8);
            out += ";2;";
            AppendNumber(out, colour >> 16 & 0xFF);
            out += ';';
            AppendNumber(out, colour >> 8 & 0xFF);
            out += ';';
            AppendNumber(out, colour & 0xFF);
            break;
    }
}

}  // namespace

Colour NearestOfPalette(Rgb colour) {
    const int r = NearestLevel(colour.r), g = NearestLevel(colour.g), b = NearestLevel(colour.b);
    const int mean = (colour.r + colour.g + colour.b) / 3;
    const int grey = mean < 3 ? 0 : mean > 238 ? kGreys - 1 : (mean - 3) / 10;
    const auto level = static_cast<std::uint8_t>(8 + 10 * grey);
    const bool is_grey =
        Distance({level, level, level}, colour) < Distance(CubeColour(r, g, b), colour);
    return static_cast<Colour>(is_grey ? kGreyStart + grey : kCubeStart + 36 * r + 6 * g + b);
}

Pen PenOf(const ui::Cell& cell, Depth depth) {
    Pen pen;
    pen.underline = cell.style == ui::Style::Underline;
    switch (depth) {
        case Depth::Sixteen: {
            const ui::Ink colours = ui::Colours(ui::Look::Classic, 0, cell.role);
            pen.ink = NearestOfSixteen(colours.ink);
            pen.ground = NearestOfSixteen(colours.ground);
            break;
        }
        case Depth::Palette:
            pen.ink = NearestOfPalette(cell.ink);
            pen.ground = NearestOfPalette(cell.ground);
            break;
        case Depth::Direct:
            pen.ink = Direct(cell.ink);
            pen.ground = Direct(cell.ground);
            break;
    }
    return pen;
}

void ChangePen(std::string& out, const Pen& from, const Pen& to, Depth depth, bool all) {
    if (!all && from == to) return;
    const std::size_t start = out.size();
    const auto part = [&] {
        if (out.size() == start) {
            out += "\x1b[";
        } else {
            out += ';';
        }
    };
    if (all || from.underline != to.underline) {
        part();
        out += to.underline ? "4" : "24";
    }
    if (all || from.ink != to.ink) {
        part();
        AppendColour(out, to.ink, Side::Ink, depth);
    }
    if (all || from.ground != to.ground) {
        part();
        AppendColour(out, to.ground, Side::Ground, depth);
    }
    out += 'm';
}

}  // namespace zo::term
