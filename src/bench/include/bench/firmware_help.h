#pragma once

#include <string_view>
#include <vector>

#include "card/assembler.h"
#include "ui/code_editor.h"

namespace Kest {

// What can be typed behind the start of a line: instructions that the card runs, with what they do;
// behind one, the registers fitted and the firmware's labels and constants. Nothing in a comment.
std::vector<zo::ui::CompletionItem> CompleteFirmware(std::u16string_view before,
                                                     const kp::CardConfig& card,
                                                     const kp::Assembly& firmware);

// The operands of a line's instruction, the one at a column marked, and what it does. Empty without
// an instruction.
zo::ui::TypingHint DescribeInstruction(std::u16string_view line, int column);

}  // namespace Kest
