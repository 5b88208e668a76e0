#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "ui/frame_line.h"
#include "ui/pressables.h"

namespace zo::ui {

struct Tab {
    std::string_view label;  // with its hotkey between tildes, if it has one
    std::string_view hint = {};
    bool marked = false;  // pointed out by the coach
};
// The names of the panes that share a frame, in its line; the chosen one in brackets:
// "[TICKET]─HINTS─SPEC". A press chooses.
void DrawTabs(FrameLine& line, Canvas& canvas, Pressables& pressables, std::span<const Tab> tabs,
              int chosen, const std::function<void(int)>& choose);

}  // namespace zo::ui
