#pragma once

#include <algorithm>

namespace zo::ui {

// A place in the grid of cells.
struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

// A rectangle of cells; empty when it has no width or no height.
struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Right() const { return x + width; }    // the first column behind it
    int Bottom() const { return y + height; }  // the first row below it
    bool Empty() const { return width <= 0 || height <= 0; }
    bool Contains(Point p) const { return p.x >= x && p.x < Right() && p.y >= y && p.y < Bottom(); }
    // What is left inside a frame one cell thick.
    Rect Inner() const { return {x + 1, y + 1, width - 2, height - 2}; }
    Rect Row(int row) const { return {x, y + row, width, 1}; }
    bool operator==(const Rect&) const = default;
};

inline Rect Intersect(const Rect& a, const Rect& b) {
    const int x = std::max(a.x, b.x);
    const int y = std::max(a.y, b.y);
    return {x, y, std::max(std::min(a.Right(), b.Right()) - x, 0),
            std::max(std::min(a.Bottom(), b.Bottom()) - y, 0)};
}

// Where an overlay of this size stands on a screen of these columns and rows.
inline Rect OverlayRect(int columns, int rows, int width, int height) {
    return {(columns - width) / 2, 1 + (rows - 3 - height) / 2, width, height};
}

}  // namespace zo::ui
