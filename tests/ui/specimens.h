#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"

namespace fake {

// A widget, with an owner that writes down what it is told.
struct Specimen {
    std::function<void(zo::ui::Canvas&, zo::ui::Pressables&)> draw;
    std::function<bool(const zo::ui::KeyPress&)> key = [](const zo::ui::KeyPress&) {
        return false;
    };
    std::function<bool(std::string_view)> type = [](std::string_view) { return false; };
    std::function<std::string_view()> hint = [] { return std::string_view(); };
    std::function<std::string()> state = [] { return std::string(); };
    int columns = 80;
};

// A kind of widget by its name, such as "slider", and what it holds, such as "45 muted".
Specimen MakeSpecimen(std::string_view kind, const std::string& words,
                      const std::function<void(std::string)>& log);

}  // namespace fake
