#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cells/frame.h"
#include "ui/rect.h"

namespace Kest {

// What a screen has to say about where the player is, for those who do not see it.
struct Speech {
    std::string status;  // what the status line says
    bool is_alert = false;
    std::string focus;              // the screen and what has the keys there
    std::vector<std::string> rows;  // of the text that has the focus
    std::string place;              // of the line in its text, such as "Line 4 of 5"
    std::string line;               // that is chosen, or that the caret is on
    std::string note;               // of what the player points at in a picture
    std::string advice;             // that the screen gives by itself
    bool operator==(const Speech&) const = default;
};

// What the cells say of it: the title and the rows of the pane or the box that has the focus, the
// row that is chosen, the button. Lines, bars and pointers are left out, marks are put into words.
Speech ReadSpeech(const zo::ui::Frame& frame, std::optional<zo::ui::Rect> pane);

// Takes the focus from what is drawn so far, which another screen is about to cover: its roles say
// no longer that it is chosen. The colours stay.
void LetGoOfFocus(zo::ui::Frame& frame);

// A pane's title without its capitals, which would be spelt.
std::string TitleInWords(std::string_view title);
// A text of the screen as one would read it aloud.
std::string InWords(std::u32string_view cells);

}  // namespace Kest
