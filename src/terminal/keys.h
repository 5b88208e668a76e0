#pragma once

#include <cstdint>
#include <optional>

#include "cells/input.h"

namespace zo::term {

// What terminals' names for keys stand for. Each gives Key::None for a name that means nothing
// here.

// The modifiers of a sequence's second number; nothing when it holds one that is the desktop's.
std::optional<ui::Modifiers> ModifiersOf(int number);
// CSI ... letter and SS3 letter.
ui::Key KeyOfLetter(char letter);
// CSI number ~, and those numbers that say Shift too.
ui::Key KeyOfNumber(int number);
ui::Key ShiftedKeyOfNumber(int number);
// A key by its character or its number among those that have none, as CSI code u gives it.
ui::KeyPress KeyOfCode(char32_t code, const ui::Modifiers& with);
// A byte below a blank, or that of the erase key.
ui::KeyPress KeyOfControl(std::uint8_t byte);

}  // namespace zo::term
