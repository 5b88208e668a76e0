#pragma once

#include <functional>

#include "ui/text_field.h"

namespace zo::ui {

// A row in which words are looked for: " Find crc____ 2 of 5 [▲][▼][x]". What is found, and where,
// is its owner's business.
class FindBox {
public:
    TextField field;                     // `field.changed` is the owner's
    std::function<void(int step)> move;  // to the next place, 1, or the one before it, -1
    std::function<void()> close;

    // The places found and the one that the owner stands at, from 1; 0 while at none.
    void SetCount(int found, int at);

    // Enter next, Shift+Enter previous, Esc closes; the rest is the field's.
    bool Key(const KeyPress& key);
    bool Type(std::string_view utf8) { return field.Type(utf8); }
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& row, bool focused);

private:
    int DrawCount(Canvas& canvas, int right, int y) const;

    int found_ = 0;
    int at_ = 0;
};

}  // namespace zo::ui
