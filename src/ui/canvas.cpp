#include "ui/canvas.h"

#include "base/utf.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

struct LineGlyphs {
    char32_t across, down;
    char32_t top_left, top_right, bottom_left, bottom_right;
    char32_t join_left, join_right;  // of a single line that crosses the box
};
constexpr LineGlyphs kLines[] = {
    {U'─', U'│', U'┌', U'┐', U'└', U'┘', U'├', U'┤'},  // Single
    {U'═', U'║', U'╔', U'╗', U'╚', U'╝', U'╟', U'╢'},  // Double
};
constexpr int kShadowColumns = 2;
constexpr int kShadowRows = 1;

const LineGlyphs& GlyphsOf(Lines lines) {
    return kLines[static_cast<std::size_t>(lines)];
}

std::uint8_t HalfWay(std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>((a + b) / 2);
}

Rgb HalfWay(Rgb a, Rgb b) {
    return {HalfWay(a.r, b.r), HalfWay(a.g, b.g), HalfWay(a.b, b.b)};
}

}  // namespace

Canvas::Canvas(Frame& frame, int theme)
    : frame_(frame), theme_(theme), clip_{0, 0, frame.grid.columns, frame.grid.rows} {}

int Canvas::Columns() const {
    return std::max(frame_.grid.columns, kLeastColumns);
}

int Canvas::Rows() const {
    return std::max(frame_.grid.rows, kLeastRows);
}

Cell* Canvas::CellAt(int x, int y) {
    return clip_.Contains({x, y}) ? &frame_.At(x, y) : nullptr;
}

void Canvas::Paint(Cell& cell, Role role) const {
    const Ink colours = Colours(frame_.grid.look, theme_, role);
    cell.role = role;
    cell.ink = colours.ink;
    cell.ground = colours.ground;
}

void Canvas::Put(int x, int y, char32_t glyph, Role role, Style style) {
    Cell* cell = CellAt(x, y);
    if (!cell) return;
    cell->glyph = glyph;
    cell->style = style;
    Paint(*cell, role);
}

void Canvas::PutShadow(int x, int y, char32_t glyph, Role ground) {
    Put(x, y, glyph, Role::Shadow);
    if (Cell* cell = CellAt(x, y)) cell->ground = Colours(CurrentLook(), theme_, ground).ground;
}

// Rows copied from the first are faster than rows filled.
void Canvas::Fill(const Rect& area, char32_t glyph, Role role) {
    const Rect seen = Intersect(area, clip_);
    if (seen.Empty()) return;
    Cell cell;
    cell.glyph = glyph;
    Paint(cell, role);
    const Cell* const first_row = &frame_.At(seen.x, seen.y);
    std::fill_n(&frame_.At(seen.x, seen.y), seen.width, cell);
    for (int y = seen.y + 1; y < seen.Bottom(); ++y) {
        std::copy_n(first_row, seen.width, &frame_.At(seen.x, y));
    }
}

void Canvas::Tint(const Rect& area, Role role) {
    const Rect seen = Intersect(area, clip_);
    for (int y = seen.y; y < seen.Bottom(); ++y) {
        for (int x = seen.x; x < seen.Right(); ++x) Paint(frame_.At(x, y), role);
    }
}

int Canvas::Text(int x, int y, std::string_view utf8, Role role, Style style) {
    const bool begins_inside = x < clip_.Right();
    for (std::size_t at = 0; at < utf8.size();) {
        Put(x++, y, base::NextCodePoint(utf8, at), role, style);
    }
    if (begins_inside && x > clip_.Right()) PutMore(clip_.Right() - 1, y, role);
    return x;
}

void Canvas::PutMore(int x, int y, Role role) {
    Put(x, y, U'»', role == Role::Panel ? Role::PanelDim : role);
}

int Canvas::TextRight(int right, int y, std::string_view utf8, Role role) {
    return Text(right - Cells(utf8), y, utf8, role);
}

int Canvas::Text(int x, int y, const Label& label, Role role, Role hot_role) {
    x = Text(x, y, label.before, role);
    x = Text(x, y, label.hot, hot_role, Style::Underline);
    return Text(x, y, label.after, role);
}

bool Canvas::Field(const Rect& row, std::string_view utf8, Role role) {
    Fill(row, U' ', role);
    const Clip clip(*this, row);
    return Text(row.x, row.y, utf8, role) <= row.Right();
}

void Canvas::Box(const Rect& area, Lines lines, Role role) {
    const LineGlyphs& g = GlyphsOf(lines);
    const int right = area.Right() - 1;
    const int bottom = area.Bottom() - 1;
    Fill({area.x, area.y, area.width, 1}, g.across, role);
    Fill({area.x, bottom, area.width, 1}, g.across, role);
    Fill({area.x, area.y, 1, area.height}, g.down, role);
    Fill({right, area.y, 1, area.height}, g.down, role);
    Put(area.x, area.y, g.top_left, role);
    Put(right, area.y, g.top_right, role);
    Put(area.x, bottom, g.bottom_left, role);
    Put(right, bottom, g.bottom_right, role);
}

void Canvas::Separator(const Rect& box, int y, Lines lines, Role role) {
    const LineGlyphs& g = GlyphsOf(lines);
    Fill({box.x, y, box.width, 1}, U'─', role);
    Put(box.x, y, g.join_left, role);
    Put(box.Right() - 1, y, g.join_right, role);
}

void Canvas::DropShadow(const Rect& box) {
    const int below = box.y + kShadowRows;
    Tint({box.Right(), below, kShadowColumns, box.height}, Role::Shadow);
    Tint({box.x + kShadowColumns, box.Bottom(), box.width, kShadowRows}, Role::Shadow);
}

void Canvas::Scrim() {
    const Rgb ground = Colours(frame_.grid.look, theme_, Role::Desktop).ground;
    for (Cell& cell : frame_.cells) {
        cell.ink = HalfWay(cell.ink, ground);
        cell.ground = HalfWay(cell.ground, ground);
    }
}

void Canvas::SetCaret(int x, int y, CaretShape shape) {
    if (!clip_.Contains({x, y})) return;
    frame_.caret = {shape, x, y, Colours(frame_.grid.look, theme_, Role::Caret)};
}

Canvas::Clip::Clip(Canvas& canvas, const Rect& area) : canvas_(canvas), before_(canvas.clip_) {
    canvas.clip_ = Intersect(canvas.clip_, area);
}

}  // namespace zo::ui
