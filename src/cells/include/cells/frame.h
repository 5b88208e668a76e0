#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cells/grid_size.h"
#include "cells/theme.h"

namespace zo::ui {

enum class Style : std::uint8_t { Plain, Underline };

// One character on the screen. The role is kept beside the colours for dumps and tests.
struct Cell {
    char32_t glyph = U' ';
    Rgb ink;
    Rgb ground;
    Role role = Role::Desktop;
    Style style = Style::Plain;

    bool operator==(const Cell&) const = default;
};

enum class CaretShape : std::uint8_t { None, Block, LowerThird, Bar };

struct Caret {
    CaretShape shape = CaretShape::None;
    int x = 0;
    int y = 0;
    Ink colours;

    bool operator==(const Caret&) const = default;
};

// A finished picture: what a window, a picture file, a terminal and a test all read.
struct Frame {
    Grid grid;
    std::vector<Cell> cells;  // grid.columns x grid.rows, row by row
    Caret caret;
    bool crt = false;  // scanlines and a dark edge over the finished picture
    Rgb margin;        // around the centred grid

    void Resize(const Grid& size);
    Cell& At(int x, int y) { return cells[static_cast<std::size_t>(y * grid.columns + x)]; }
    const Cell& At(int x, int y) const {
        return cells[static_cast<std::size_t>(y * grid.columns + x)];
    }
    bool operator==(const Frame&) const = default;
};

// The glyphs alone, a line a row, blanks at the end of a line left out.
std::string TextDump(const Frame& frame);
// The role names as runs, a line a row: "0-79 panel" and so on.
std::string RoleDump(const Frame& frame);

}  // namespace zo::ui
