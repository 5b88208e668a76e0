#pragma once

#include <string_view>

#include "cells/frame.h"
#include "ui/label.h"
#include "ui/rect.h"

namespace zo::ui {

enum class Lines : std::uint8_t { Single, Double };

// A pen over a frame's cells. It draws by role and resolves each role through the theme as it
// writes the cell. What falls outside the clip is dropped, so nothing here can miss the grid.
//
// A grid below 80x25 is drawn as 80x25 and cut at its edge: Columns and Rows are what a layout
// reckons with, never less than that floor.
class Canvas {
public:
    static constexpr int kLeastColumns = 80;
    static constexpr int kLeastRows = 25;

    Canvas(Frame& frame, int theme);

    int Columns() const;
    int Rows() const;
    Rect Area() const { return {0, 0, Columns(), Rows()}; }
    Look CurrentLook() const { return frame_.grid.look; }

    void Put(int x, int y, char32_t glyph, Role role, Style style = Style::Plain);
    // A part of a thing's shadow: the ink of a shadow on the ground that the thing stands on.
    void PutShadow(int x, int y, char32_t glyph, Role ground);
    void Fill(const Rect& area, char32_t glyph, Role role);
    // Gives cells another role and keeps their glyphs.
    void Tint(const Rect& area, Role role);

    // These return the column behind the text. Text that the clip cuts off ends in the more mark,
    // so that it is never cut silently.
    int Text(int x, int y, std::string_view utf8, Role role, Style style = Style::Plain);
    int TextRight(int right, int y, std::string_view utf8, Role role);  // ends before `right`
    int Text(int x, int y, const Label& label, Role role, Role hot_role);

    // A field of one row, padded with blanks. False when the text does not fit: the caller then
    // offers the whole text elsewhere.
    bool Field(const Rect& row, std::string_view utf8, Role role);

    // The frame's lines alone.
    void Box(const Rect& area, Lines lines, Role role);
    // A line across a box at this row, joined to its sides.
    void Separator(const Rect& box, int y, Lines lines, Role role);
    // Darkens the cells beside and below a box.
    void DropShadow(const Rect& box);
    // Mixes everything half way to the ground of the desktop.
    void Scrim();

    void SetCaret(int x, int y, CaretShape shape);

    // Restricts drawing while it lives; clips nest.
    class Clip {
    public:
        Clip(Canvas& canvas, const Rect& area);
        ~Clip() { canvas_.clip_ = before_; }
        Clip(const Clip&) = delete;
        Clip& operator=(const Clip&) = delete;

    private:
        Canvas& canvas_;
        Rect before_;
    };

private:
    Cell* CellAt(int x, int y);  // null outside the clip
    void Paint(Cell& cell, Role role) const;
    void PutMore(int x, int y, Role role);

    Frame& frame_;
    int theme_;
    Rect clip_;
};

}  // namespace zo::ui
