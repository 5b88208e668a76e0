#pragma once

#include "content/content.h"

namespace lc1 {

// The shifts with their tickets and the references' scores, for a person.
void PrintCampaign(const kp::Content& content, bool colour);

// "♦♦♦··"
std::string DifficultyText(int difficulty);

}  // namespace lc1
