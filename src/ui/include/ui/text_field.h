#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cells/input.h"
#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

// One line of text that the player types. Longer than its place, it scrolls under the caret.
class TextField {
public:
    void SetText(std::string_view utf8);  // the caret goes to the end; no change is reported
    std::string Text() const;
    bool Empty() const { return text_.empty(); }
    std::function<void()> changed;  // after each edit by the player

    // Left, Right, Home, End, Backspace and Delete, with Ctrl by words.
    bool Key(const KeyPress& key);
    bool Type(std::string_view utf8);  // up to the first line feed

    // The caret shows when focused.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& row, bool focused);

private:
    std::size_t WordBefore() const;
    std::size_t WordAfter() const;
    void Erase(std::size_t from, std::size_t to);
    void Follow();

    std::u32string text_;
    std::size_t caret_ = 0;
    std::size_t left_ = 0;  // the first character in sight
    Rect row_;              // as drawn last
};

}  // namespace zo::ui
