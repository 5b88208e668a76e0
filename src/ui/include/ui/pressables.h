#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cells/input.h"
#include "ui/rect.h"

namespace zo::ui {

struct PointerPress {
    Point at = {};
    int clicks = 1;  // 2 and 3 for the second and third in a row
    Modifiers with = {};
};

// Something on the screen that answers the pointer. Only what is set answers: a pane may take the
// wheel alone, and the buttons on it their presses.
struct Pressable {
    Rect area;
    std::string hint;                                // shown while the pointer is over it
    std::function<void()> act;                       // pressed and released inside
    std::function<void(const PointerPress&)> press;  // the button went down inside
    std::function<void(Point)> middle;               // the middle button went down inside
    std::function<void(Point)> drag;                 // moved with the button held, outside too
    std::function<void()> released;                  // the button was let go, wherever
    std::function<void(int steps, const Modifiers& with)> wheel;  // steps up are positive
    std::function<void()> focus;  // the button went down inside, also on what lies on top of it
};

// Everything that answers the pointer in the frame drawn last; hints, hover, press and release all
// read this list. It is filled anew with each frame. Later entries lie on top of earlier ones.
//
// What was pressed is known by the place of the press, not by the entry, so that it survives the
// list's renewal.
class Pressables {
public:
    void Clear();
    // Screens under an overlay are drawn with the list closed: they register nothing, and nothing
    // of them is hovered.
    void SetOpen(bool open) { open_ = open; }

    // The new entry, for its handlers to be set.
    Pressable& Add(const Rect& area, std::string_view hint = {});

    std::optional<Point> Pointer() const { return pointer_; }  // none while it is elsewhere
    bool Hovered(const Rect& area) const;
    // The button went down inside and is still held.
    bool Pressed(const Rect& area) const;
    // Pressed inside, and the pointer still there.
    bool Held(const Rect& area) const;
    std::string_view Hint() const;  // of the topmost entry with a hint under the pointer

    // The pointer. Each returns whether the picture may have changed.
    bool Move(Point to);
    bool Press(const PointerPress& press);
    bool PressMiddle(Point at);
    bool Release(Point at);
    bool Wheel(Point at, int steps, const Modifiers& with);
    // The wheel without the pointer.
    bool Scroll(Point at, int steps, const Modifiers& with);
    // Forgets a press that is still held, so that its release does nothing.
    void LetGo();

private:
    template <class Wanted>
    const Pressable* Topmost(Point at, Wanted wanted) const;

    std::vector<Pressable> entries_;  // only grows, so that a frame reuses the texts
    std::size_t count_ = 0;
    Pressable spare_;  // what Add hands out while closed
    bool open_ = true;
    std::optional<Point> pointer_;
    std::optional<Point> pressed_;
    std::function<void(Point)> dragging_;  // until the button is let go
    std::function<void()> released_;       // when it is
};

}  // namespace zo::ui
