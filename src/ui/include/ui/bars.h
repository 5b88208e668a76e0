#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"

namespace zo::ui {

// One item of the key bar. Pressing it does what its key does. The texts are constants.
struct KeyItem {
    KeyPress key = {};          // Key::None: only shown
    std::string_view cap = {};  // empty: the key's own name
    std::string_view word = {};
    std::string_view hint = {};
    bool enabled = true;
    bool marked = false;  // pointed out by the coach
};
// Items that do not fit whole are left out from the right. The items and `press` outlive the frame.
void DrawKeyBar(Canvas& canvas, Pressables& pressables, std::span<const KeyItem> items,
                const std::function<void(const KeyPress&)>& press);

struct TopBar {
    std::string_view title = {};
    std::string_view context = {};  // cut last; its hint is then the whole
    std::string_view detail = {};   // behind the context, dropped first
    std::string_view place = {};    // right-aligned
};
void DrawTopBar(Canvas& canvas, Pressables& pressables, const TopBar& bar);

}  // namespace zo::ui
