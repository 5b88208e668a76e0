#pragma once

#include <functional>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/surface.h"

namespace zo::ui {

// Unavailable: there is nothing to switch now; the value is kept in mind by the owner.
enum class Check : std::uint8_t { Off, On, Unavailable };

// "[√]", "[ ]" or "[·]".
struct CheckBox {
    static constexpr int kCells = 3;

    Check check = Check::Off;
    std::string_view hint = {};
    Surface surface = kOnDialog;  // of the row that it stands in
};
// Registers it, to be switched by a press. Returns the column behind it.
int DrawCheckBox(Canvas& canvas, Pressables& pressables, Point at, const CheckBox& box,
                 std::function<void()> toggle);

}  // namespace zo::ui
