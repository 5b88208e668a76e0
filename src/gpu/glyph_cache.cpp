#include "glyph_cache.h"

#include <algorithm>
#include <cmath>

#include "box_lines.h"
#include "signs.h"

namespace zo::gpu {
namespace {

// A table by code point does: the faces have nothing beyond that a screen shows.
constexpr char32_t kCodePoints = 0x2800;
constexpr char32_t kReplacement = 0xFFFD;  // in the table's last place

bool SameCells(const ui::Grid& a, const ui::Grid& b) {
    return a.look == b.look && a.cell_width == b.cell_width && a.cell_height == b.cell_height &&
           a.font_pixel == b.font_pixel && a.nine_wide == b.nine_wide &&
           a.line_pixels == b.line_pixels;
}

bool IsBlank(const Mask& mask) {
    return std::all_of(mask.Levels().begin(), mask.Levels().end(),
                       [](Level level) { return level == 0; });
}

}  // namespace

void GlyphCache::Prepare(const ui::Grid& grid) {
    if (grid_.columns > 0 && SameCells(grid, grid_)) return;
    grid_ = grid;
    low_cell_ = static_cast<int>(std::floor(grid.cell_height));
    for (std::size_t i = 0; i < rasters_.size(); ++i) {
        rasters_[i] = FitRaster(grid, low_cell_ + static_cast<int>(i));
        entries_[i].assign(kCodePoints + 1, {});
    }
    levels_.clear();
    classic_.Fit(grid);
    modern_.Fit(grid);
}

Glyph GlyphCache::Find(char32_t code_point, int cell_height) {
    const std::size_t height = cell_height > low_cell_ ? 1 : 0;
    const bool known = code_point < kCodePoints;
    Entry& entry = entries_[height][known ? code_point : kCodePoints];
    if (entry.offset < 0) {
        Mask cell(grid_.cell_width, cell_height);
        Draw(known ? code_point : kReplacement, height, cell);
        entry = Keep(cell);
    }
    return {levels_.data() + entry.offset, entry.blank};
}

GlyphCache::Entry GlyphCache::Keep(const Mask& mask) {
    const Entry entry = {static_cast<std::int32_t>(levels_.size()), IsBlank(mask)};
    levels_.insert(levels_.end(), mask.Levels().begin(), mask.Levels().end());
    return entry;
}

void GlyphCache::Draw(char32_t code_point, std::size_t height, Mask& cell) {
    if (IsBoxLine(code_point)) {
        DrawLine(code_point, height, cell);
    } else if (IsBlock(code_point)) {
        DrawBlock(code_point, cell);
    } else if (grid_.look == ui::Look::Modern && IsPointer(code_point)) {
        DrawPointer(code_point, static_cast<int>(std::lround(grid_.cell_height / 2)), cell);
    } else if (IsTriangle(code_point)) {
        Mask dots(rasters_[height].columns, rasters_[height].rows);
        DrawTriangle(code_point, dots);
        PutDots(dots, rasters_[height], Edge::Blank, cell);
    } else if (code_point >= U' ') {
        DrawLetter(code_point, cell);
    }
}

void GlyphCache::DrawLine(char32_t code_point, std::size_t height, Mask& cell) const {
    constexpr int kBoldLetters = 8;  // dots; letters have strokes of two dots from here
    if (grid_.look == ui::Look::Modern) {
        const int thick = grid_.line_pixels;
        DrawBoxLine(code_point, {thick, thick, true}, cell);
        return;
    }
    const Raster& raster = rasters_[height];
    const int thick = raster.columns >= kBoldLetters ? 2 : 1;
    Mask dots(raster.columns, raster.rows);
    DrawBoxLine(code_point, {thick, thick, false}, dots);
    PutDots(dots, raster, Edge::Extended, cell);
}

// What the look's own face lacks comes from the classic one.
void GlyphCache::DrawLetter(char32_t code_point, Mask& cell) {
    const auto draw = [&](char32_t glyph) {
        const bool modern = grid_.look == ui::Look::Modern && modern_.Draw(glyph, cell);
        return modern || classic_.Draw(glyph, cell);
    };
    if (!draw(code_point)) draw(kReplacement);
}

}  // namespace zo::gpu
