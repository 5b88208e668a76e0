#pragma once

#include <string>
#include <string_view>

namespace Kest {

// The binder page on the word of a line of firmware at a column, or just before it: an
// instruction's own page, that of the registers, or that of names. Empty where no word stands.
std::string HelpPageAt(std::u16string_view line, int column);

}  // namespace Kest
