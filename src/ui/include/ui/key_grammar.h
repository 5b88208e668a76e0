#pragma once

#include <string_view>

#include "cells/input.h"

namespace zo::ui {

// What keys mean in every widget.

// The letter, digit or sign that chooses something, alone or with Alt; 0 for every other key.
char32_t LetterOf(const KeyPress& key);
// Left and Right as -1 and 1; 0 for every other key.
int StepOf(const KeyPress& key);
// Tab and Shift+Tab, also with Ctrl, as 1 and -1; 0 for every other key.
int TabStepOf(const KeyPress& key);

// What a text begins with, in lower case; 0 when it is empty.
char32_t FirstLetter(std::string_view utf8);

}  // namespace zo::ui
