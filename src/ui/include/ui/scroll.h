#pragma once

#include "cells/input.h"
#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

// Which rows of something long are in sight.
class Scroll {
public:
    // Both are told with each frame, before anything else is asked.
    void Measure(int total, int shown);

    int Top() const { return top_; }
    int Shown() const { return shown_; }
    bool Needed() const { return total_ > shown_; }
    void To(int top);
    void By(int rows) { To(top_ + rows); }
    void Wheel(int steps);  // up are positive
    // Brings a row into sight, with `margin` rows around it where there are that many.
    void Reveal(int row, int margin);
    // Up, Down, PgUp, PgDn, Home and End move the view.
    bool Key(const KeyPress& key);

    // In the right frame column of a pane when there is more than it shows. The pane takes the
    // wheel; arrows, track and thumb take presses and drags.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane);

private:
    struct Thumb {
        int at;      // rows behind the first track cell
        int length;  // cells
    };
    Thumb ThumbOf(int track) const;
    void Press(const PointerPress& press);
    void Drag(Point at);

    int top_ = 0;
    int total_ = 0;
    int shown_ = 0;
    Rect bar_;       // arrows and track, as drawn last
    int grip_ = -1;  // the cell of the thumb that is dragged, -1 when none is
};

}  // namespace zo::ui
