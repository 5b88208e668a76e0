#include "gpu/renderer.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "crt.h"
#include "glyph_cache.h"
#include "pixels.h"
#include "ramp.h"
#include "shades.h"

namespace zo::gpu {
namespace {

using platform::PixelBuffer;
using platform::PixelRect;
using ui::Cell;
using ui::Frame;

// Cells between two changed ones of a row that are presented with them, and rectangles presented in
// all: past these a call costs more than the pixels that it saves.
constexpr int kNearCells = 8;
constexpr std::size_t kMostRects = 32;

// Equal cells are equal bytes, so that rows compare fast.
static_assert(std::has_unique_object_representations_v<Cell>);

int Bottom(const PixelRect& rect) {
    return rect.y + rect.height;
}
int Right(const PixelRect& rect) {
    return rect.x + rect.width;
}

PixelRect Union(const PixelRect& a, const PixelRect& b) {
    const int x = std::min(a.x, b.x), y = std::min(a.y, b.y);
    return {x, y, std::max(Right(a), Right(b)) - x, std::max(Bottom(a), Bottom(b)) - y};
}

// The part of the rectangle that is in the buffer; a size of it may be 0 or less.
PixelRect Clipped(PixelRect rect, ui::PixelSize size) {
    rect.width = std::min(Right(rect), size.width) - rect.x;
    rect.height = std::min(Bottom(rect), size.height) - rect.y;
    return rect;
}

bool IsEmpty(const PixelRect& rect) {
    return rect.width <= 0 || rect.height <= 0;
}

Pixels PixelsOf(const PixelRect& rect, PixelBuffer& buffer) {
    const std::ptrdiff_t stride = buffer.size.width;
    return {buffer.pixels.data() + rect.y * stride + rect.x, stride, rect.width, rect.height};
}

void FillRect(const PixelRect& wanted, std::uint32_t pixel, PixelBuffer& buffer) {
    const PixelRect rect = Clipped(wanted, buffer.size);
    if (!IsEmpty(rect)) Fill(PixelsOf(rect, buffer), pixel);
}

// The end of the cells from x on that are one stretch of ground, or of a shade.
int RunEnd(int x, int y, const Frame& frame) {
    const Cell& first = frame.At(x, y);
    const bool runs = first.glyph == U' ' || IsShade(first.glyph);
    if (!runs || first.style != ui::Style::Plain) return x;
    const auto alike = [&](const Cell& cell) {
        return cell.glyph == first.glyph && cell.ink == first.ink && cell.ground == first.ground &&
               cell.style == first.style;
    };
    while (x < frame.grid.columns && alike(frame.At(x, y))) ++x;
    return x;
}

class Renderer final : public platform::Painter {
public:
    Renderer() { changed_.reserve(kMostRects); }
    const std::vector<PixelRect>& Paint(const Frame& frame, PixelBuffer& buffer) override;

private:
    PixelRect CellRect(int x, int y, int columns) const;
    bool MustPaintWhole(const Frame& frame, const PixelBuffer& buffer) const;
    void PaintWhole(const Frame& frame, PixelBuffer& buffer);
    void PaintMargins(const Frame& frame, PixelBuffer& buffer) const;
    void PaintRow(int y, const Frame& frame, PixelBuffer& buffer);
    void Darken(int top, int bottom, PixelBuffer& buffer) const;
    void PaintChanges(const Frame& frame, PixelBuffer& buffer);
    void PaintChangedRow(int y, const Frame& frame, PixelBuffer& buffer);
    bool CaretMoved(int x, int y, const Frame& frame) const;
    void PaintCell(int x, int y, const Frame& frame, PixelBuffer& buffer);
    void PaintGlyph(const Cell& cell, const PixelRect& rect, int first_row, PixelBuffer& buffer);
    void PaintPattern(char32_t shade, int x, int y, const Ramp& ramp, const Pixels& target);
    void PaintCaret(const Cell& cell, const PixelRect& rect, const ui::Caret& caret,
                    PixelBuffer& buffer);
    void AddChange(const PixelRect& rect, int near_pixels);

    GlyphCache glyphs_;
    ShadePatterns shades_;
    CrtFilter crt_;
    Ramps ramps_;
    Frame shown_;
    ui::PixelSize shown_size_;
    int left_ = 0;           // of the grid shown, in pixels
    std::vector<int> tops_;  // of its rows, and the end of the last
    std::vector<PixelRect> changed_;
};

const std::vector<PixelRect>& Renderer::Paint(const Frame& frame, PixelBuffer& buffer) {
    changed_.clear();
    if (MustPaintWhole(frame, buffer)) {
        PaintWhole(frame, buffer);
    } else {
        PaintChanges(frame, buffer);
    }
    return changed_;
}

PixelRect Renderer::CellRect(int x, int y, int columns) const {
    const auto row = static_cast<std::size_t>(y);
    const int width = shown_.grid.cell_width;
    return {left_ + x * width, tops_[row], columns * width, tops_[row + 1] - tops_[row]};
}

bool Renderer::MustPaintWhole(const Frame& frame, const PixelBuffer& buffer) const {
    return buffer.size != shown_size_ || frame.grid != shown_.grid || frame.crt != shown_.crt ||
           frame.margin != shown_.margin;
}

void Renderer::PaintWhole(const Frame& frame, PixelBuffer& buffer) {
    const ui::Grid& grid = frame.grid;
    const auto [width, height] = buffer.size;
    buffer.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    glyphs_.Prepare(grid);
    shades_.Resize(grid.columns * grid.cell_width, glyphs_.DotRaster().dot);
    if (frame.crt) crt_.Resize(buffer.size, grid.font_pixel, grid.TopPixels());
    shown_ = frame;
    shown_size_ = buffer.size;
    left_ = grid.LeftPixels();
    tops_.clear();
    for (int y = 0; y <= grid.rows; ++y) tops_.push_back(grid.RowTop(y));
    PaintMargins(frame, buffer);
    Darken(0, tops_.front(), buffer);
    for (int y = 0; y < grid.rows; ++y) {
        const auto row = static_cast<std::size_t>(y);
        PaintRow(y, frame, buffer);
        Darken(tops_[row], tops_[row + 1], buffer);  // while the processor has it at hand
    }
    Darken(tops_.back(), height, buffer);
    changed_.push_back({0, 0, width, height});
}

void Renderer::PaintMargins(const Frame& frame, PixelBuffer& buffer) const {
    const ui::Grid& grid = frame.grid;
    const auto [width, height] = buffer.size;
    const std::uint32_t pixel = Pixel(frame.margin);
    const int right = left_ + grid.columns * grid.cell_width;
    const int bottom = tops_.back();
    FillRect({0, 0, width, tops_.front()}, pixel, buffer);
    FillRect({0, 0, left_, height}, pixel, buffer);
    FillRect({right, 0, width - right, height}, pixel, buffer);
    FillRect({0, bottom, width, height - bottom}, pixel, buffer);
}

void Renderer::Darken(int top, int bottom, PixelBuffer& buffer) const {
    const PixelRect rows = Clipped({0, top, buffer.size.width, bottom - top}, buffer.size);
    if (shown_.crt && !IsEmpty(rows)) crt_.Apply(rows, buffer);
}

// Cells alike that show no glyph of their own are painted as one.
void Renderer::PaintRow(int y, const Frame& frame, PixelBuffer& buffer) {
    for (int x = 0; x < frame.grid.columns;) {
        const int end = frame.caret.y == y ? x : RunEnd(x, y, frame);
        if (end > x) {
            PaintGlyph(frame.At(x, y), CellRect(x, y, end - x), 0, buffer);
            x = end;
        } else {
            PaintCell(x++, y, frame, buffer);
        }
    }
}

void Renderer::PaintChanges(const Frame& frame, PixelBuffer& buffer) {
    const auto row_bytes = static_cast<std::size_t>(frame.grid.columns) * sizeof(Cell);
    const bool caret_changed = frame.caret != shown_.caret;
    for (int y = 0; y < frame.grid.rows; ++y) {
        const bool has_caret = caret_changed && (y == frame.caret.y || y == shown_.caret.y);
        const bool same = std::memcmp(&frame.At(0, y), &shown_.At(0, y), row_bytes) == 0;
        if (!same || has_caret) PaintChangedRow(y, frame, buffer);
    }
    shown_.caret = frame.caret;
}

void Renderer::PaintChangedRow(int y, const Frame& frame, PixelBuffer& buffer) {
    const int columns = frame.grid.columns;
    const auto changed = [&](int x) {
        return frame.At(x, y) != shown_.At(x, y) || CaretMoved(x, y, frame);
    };
    for (int x = 0; x < columns; ++x) {
        if (!changed(x)) continue;
        const int first = x;
        for (; x < columns && changed(x); ++x) {
            PaintCell(x, y, frame, buffer);
            shown_.At(x, y) = frame.At(x, y);
        }
        const PixelRect rect = Clipped(CellRect(first, y, x - first), buffer.size);
        if (IsEmpty(rect)) continue;
        if (frame.crt) crt_.Apply(rect, buffer);
        AddChange(rect, kNearCells * frame.grid.cell_width);
    }
}

bool Renderer::CaretMoved(int x, int y, const Frame& frame) const {
    const auto at = [x, y](const ui::Caret& caret) {
        return caret.shape != ui::CaretShape::None && caret.x == x && caret.y == y;
    };
    return frame.caret != shown_.caret && (at(frame.caret) || at(shown_.caret));
}

void Renderer::PaintCell(int x, int y, const Frame& frame, PixelBuffer& buffer) {
    const PixelRect rect = CellRect(x, y, 1);
    const Cell& cell = frame.At(x, y);
    PaintGlyph(cell, rect, 0, buffer);
    if (frame.caret.x == x && frame.caret.y == y) PaintCaret(cell, rect, frame.caret, buffer);
}

// Paints the pixel rows of a cell, or of a stretch of cells, from the first one given down.
void Renderer::PaintGlyph(const Cell& cell, const PixelRect& rect, int first_row,
                          PixelBuffer& buffer) {
    const PixelRect seen = Clipped(rect, buffer.size);
    if (IsEmpty(seen)) return;
    const bool classic = shown_.grid.look == ui::Look::Classic;
    const Pixels target = PixelsOf(seen, buffer).Rows(first_row, seen.height - first_row);
    const Ramp& ramp = ramps_.Find({cell.ink, cell.ground});
    if (cell.glyph == U' ') {
        Fill(target, ramp[0]);
    } else if (IsShade(cell.glyph) && classic) {
        PaintPattern(cell.glyph, seen.x - left_, rect.y + first_row - tops_.front(), ramp, target);
    } else if (IsShade(cell.glyph)) {
        Fill(target, ramp[FlatShade(cell.glyph)]);
    } else if (const Glyph glyph = glyphs_.Find(cell.glyph, rect.height); glyph.blank) {
        Fill(target, ramp[0]);
    } else {
        Mix(target, glyph.levels + first_row * rect.width, rect.width, ramp);
    }
    if (cell.style == ui::Style::Underline) {
        const int thick = classic ? glyphs_.DotRaster().dot : 1;
        FillRect({rect.x, Bottom(rect) - thick, rect.width, thick}, ramp[kFull], buffer);
    }
}

// x and y count from the grid's corner.
void Renderer::PaintPattern(char32_t shade, int x, int y, const Ramp& ramp, const Pixels& target) {
    for (int row = 0; row < target.height; ++row) {
        Mix(target.Rows(row, 1), shades_.Row(shade, y + row) + x, 0, ramp);
    }
}

// A block shows the whole cell in the caret's colours, a lower third the third, so that the glyph
// stays to be read in both.
void Renderer::PaintCaret(const Cell& cell, const PixelRect& rect, const ui::Caret& caret,
                          PixelBuffer& buffer) {
    constexpr int kBarPixels = 2;
    Cell inverse = cell;
    inverse.ink = caret.colours.ink;
    inverse.ground = caret.colours.ground;
    switch (caret.shape) {
        case ui::CaretShape::None:
            return;
        case ui::CaretShape::Block:
            return PaintGlyph(inverse, rect, 0, buffer);
        case ui::CaretShape::LowerThird:
            return PaintGlyph(inverse, rect, rect.height - (rect.height + 1) / 3, buffer);
        case ui::CaretShape::Bar:
            return FillRect({rect.x, rect.y, std::min(kBarPixels, rect.width), rect.height},
                            Pixel(caret.colours.ground), buffer);
    }
}

// Joins the rectangle to one at its left or above where they make a rectangle.
void Renderer::AddChange(const PixelRect& rect, int near_pixels) {
    if (!changed_.empty()) {
        PixelRect& last = changed_.back();
        const bool same_row = last.y == rect.y && last.height == rect.height;
        if (same_row && rect.x - Right(last) <= near_pixels) {
            last = Union(last, rect);
            return;
        }
    }
    for (PixelRect& above : changed_) {
        if (above.x != rect.x || above.width != rect.width || Bottom(above) != rect.y) continue;
        above = Union(above, rect);
        return;
    }
    if (changed_.size() < kMostRects) {
        changed_.push_back(rect);
    } else {
        changed_.back() = Union(changed_.back(), rect);
    }
}

}  // namespace

std::unique_ptr<platform::Painter> MakeRenderer() {
    return std::make_unique<Renderer>();
}

}  // namespace zo::gpu
