#include "classic_face.h"

#include <optional>

#include "classic_font.h"
#include "raster.h"

namespace zo::gpu {
namespace {

constexpr int kColumns = 8;  // of the face as it is drawn
constexpr int kRows = 16;
constexpr char32_t kFirstSign = 0x2000;  // letters come before

// Takes out columns for a narrow cell. Letters keep the blank column at their right, which parts
// them from the next letter; signs that fill their cell go on filling it.
void Narrow(Dots& dots, char32_t glyph, int columns) {
    if (dots.columns > columns && dots.ColumnIsBlank(0)) dots.TakeOutColumn(0, 0);
    while (dots.columns > columns) {
        const int last = dots.columns - 1;
        const bool keep_gap = glyph < kFirstSign && dots.ColumnIsBlank(last);
        dots.TakeOutColumn(0, keep_gap ? last - 1 : last);
    }
}

// Takes rows out of the same zones of every glyph, so that baseline and heights stay common: one
// above the small letters, one of their height and, for the lowest cells, one of each again.
void Lower(Dots& dots, int rows) {
    int baseline = kBaselineRow;
    const auto take = [&](int first, int last) {
        if (dots.rows <= rows) return;
        dots.TakeOutRow(first, last);
        --baseline;
    };
    take(0, kSmallLetterRow - 2);
    take(kSmallLetterRow, baseline - 2);
    take(1, kSmallLetterRow - 2);
    take(kSmallLetterRow - 1, baseline - 2);
}

Mask AsMask(const Dots& dots, int columns, int rows) {
    Mask mask(columns, rows);
    const int top = (rows - dots.rows) / 2;
    for (int y = 0; y < dots.rows; ++y) {
        for (int x = 0; x < dots.columns; ++x) {
            if (dots.At(x, y)) mask.Set(x, top + y, kFull);
        }
    }
    return mask;
}

// The length that two stretches have in common.
int Overlap(int from, int to, int other_from, int other_to) {
    return std::max(0, std::min(to, other_to) - std::max(from, other_from));
}

// The part of each pixel that the face's dots cover.
Mask Sample(const Dots& dots, int width, int height) {
    Mask mask(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int covered = 0;  // a dot is width x height of these units, a pixel kColumns x kRows
            for (int row = 0; row < dots.rows; ++row) {
                const int high =
                    Overlap(y * kRows, (y + 1) * kRows, row * height, (row + 1) * height);
                if (high == 0) continue;
                for (int column = 0; column < dots.columns; ++column) {
                    if (!dots.At(column, row)) continue;
                    const int left = column * width;
                    covered += high * Overlap(x * kColumns, (x + 1) * kColumns, left, left + width);
                }
            }
            mask.Set(x, y, static_cast<Level>(covered * kFull / (kColumns * kRows)));
        }
    }
    return mask;
}

int Sharpness(const Mask& mask) {
    int sum = 0;
    for (const Level level : mask.Levels()) sum += level * level;
    return sum;
}

// As the glyph stands in its cell or a dot to the left, whichever puts its strokes better on the
// pixels. Never to the right, so that the gaps between letters stay even.
Mask SampleSharpest(const Dots& dots, int width, int height) {
    Mask best = Sample(dots, width, height);
    if (!dots.ColumnIsBlank(0)) return best;
    Dots moved = dots;
    for (std::uint16_t& row : moved.bits) row = static_cast<std::uint16_t>(row >> 1);
    Mask other = Sample(moved, width, height);
    return Sharpness(other) > Sharpness(best) ? other : best;
}

Mask Draw(Dots dots, char32_t glyph, const Raster& raster) {
    constexpr int kNarrowest = 6;  // the least width that holds a letter's strokes
    if (raster.columns < kNarrowest) return SampleSharpest(dots, raster.columns, raster.rows);
    Narrow(dots, glyph, raster.columns);
    Lower(dots, raster.rows);
    return AsMask(dots, raster.columns, raster.rows);
}

}  // namespace

bool ClassicFace::Draw(char32_t glyph, Mask& cell) {
    const std::optional<Dots> dots = FindClassicGlyph(glyph);
    if (!dots) return false;
    const Raster raster = FitRaster(grid_, cell.Height());
    PutDots(gpu::Draw(*dots, glyph, raster), raster, Edge::Blank, cell);
    return true;
}

}  // namespace zo::gpu
