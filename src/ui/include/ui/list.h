#pragma once

#include <functional>
#include <string_view>

#include "ui/scroll.h"

namespace zo::ui {

// The chosen row of a list and the part of the list in sight. What a row looks like is the
// caller's; the pointer and the selection bar are drawn here.
class List {
public:
    using DrawRow = std::function<void(Canvas& canvas, const Rect& row, int index, Role role)>;

    void SetCount(int count);
    int Chosen() const { return chosen_; }
    void Choose(int index);
    // Up, Down, Home, End, PgUp, PgDn. Stops at the edges.
    bool Key(const KeyPress& key);
    // Inside a pane whose frame is drawn already. `draw_row` gets the row without its pointer cell,
    // and the role of the selection or `role`.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused, Role role,
              const DrawRow& draw_row);
    std::function<void()> open;  // a second click on the chosen row

private:
    void Press(const PointerPress& press);

    int count_ = 0;
    int chosen_ = 0;
    bool reveal_ = true;  // the chosen row must come into sight with the next frame
    Rect rows_;           // as drawn last
    Scroll scroll_;
};

}  // namespace zo::ui
