#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/surface.h"

namespace zo::ui {

// Choices side by side, of which one holds: "(•) VGA  ( ) Amber  ( ) LCD". Hotkeys stand between
// tildes.
struct RadioRow {
    std::span<const std::string_view> labels;
    int chosen = 0;
    int least_cells = 0;  // that a choice takes, so that rows above each other line up
    std::string_view hint = {};
    Surface surface = kOnDialog;  // of the row that it stands in
};
// Registers every choice, to be pressed; the wheel takes the next one. Returns the column behind
// the row.
int DrawRadioRow(Canvas& canvas, Pressables& pressables, Point at, const RadioRow& row,
                 const std::function<void(int)>& choose);

// What a key chooses: Left and Right the neighbours, a marked letter its own choice. Nothing when
// the key is not for this row.
std::optional<int> RadioKey(const RadioRow& row, const KeyPress& key);
// The choice that this letter marks.
std::optional<int> RadioLetter(const RadioRow& row, const KeyPress& key);

}  // namespace zo::ui
