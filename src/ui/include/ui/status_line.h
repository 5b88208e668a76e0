#pragma once

#include <string_view>

#include "ui/canvas.h"

namespace zo::ui {

struct StatusLine {
    std::string_view mode = {};     // a label before the message, may be empty
    std::string_view message = {};  // may take up to three rows, upward
    bool alert = false;
    std::string_view hint = {};   // of what the pointer is over; the message gives way to it
    std::string_view right = {};  // the screen's own text, which gives way to the message
    std::string_view entry = {};  // is being typed, in place of the message
};
void DrawStatusLine(Canvas& canvas, const StatusLine& line);

}  // namespace zo::ui
