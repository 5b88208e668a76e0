#pragma once

#include <string_view>
#include <vector>

#include "ui/code_editor.h"

namespace Kest {

// The roles of a line of firmware, character by character.
void ColourFirmware(std::u16string_view line, std::vector<zo::ui::Span>& spans);

}  // namespace Kest
