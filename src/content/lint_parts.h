#pragma once

#include <string>
#include <vector>

#include "content/content.h"

namespace kp {

// Each looks at one concern of one ticket, or shift, and gives its lines without the ticket's id.

// Texts too long for the places they stand in.
std::vector<std::string> LintShiftProse(const Shift& shift);
std::vector<std::string> LintProse(const LoadedTicket& loaded);
// Tests that are one another's copies, or that have too few ticks.
std::vector<std::string> LintDeck(const LoadedTicket& loaded, Session& session);

// A line when a text has more cells than fit: what "text" has 24 cells; 21 fit
void LintLength(const std::string& what, const std::string& text, std::size_t most,
                std::vector<std::string>& lines);

}  // namespace kp
