#pragma once

#include <string>
#include <string_view>

#include "cells/frame.h"
#include "ui/rect.h"

namespace fake {

// An empty picture of so many cells.
inline zo::ui::Frame BlankFrame(int columns, int rows, zo::ui::Look look = zo::ui::Look::Classic) {
    zo::ui::Frame frame;
    frame.Resize({.columns = columns, .rows = rows, .look = look});
    return frame;
}

// The glyphs of a part of a picture, a line a row. The desktop's fill reads as blanks, and blanks
// at the end of a line are left out.
inline std::string Text(const zo::ui::Frame& frame, const zo::ui::Rect& part) {
    zo::ui::Frame cut = BlankFrame(part.width, part.height);
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            zo::ui::Cell cell = frame.At(part.x + x, part.y + y);
            const bool desktop =
                cell.role == zo::ui::Role::Desktop || cell.role == zo::ui::Role::Shadow;
            if (desktop && cell.glyph == U'░') cell.glyph = U' ';
            cut.At(x, y) = cell;
        }
    }
    return zo::ui::TextDump(cut);
}

inline std::string Text(const zo::ui::Frame& frame) {
    return Text(frame, {0, 0, frame.grid.columns, frame.grid.rows});
}

inline std::string Row(const zo::ui::Frame& frame, int y) {
    std::string row = Text(frame, {0, y, frame.grid.columns, 1});
    row.pop_back();
    return row;
}

}  // namespace fake
