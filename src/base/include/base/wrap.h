#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

// All wraps take UTF-8 without line feeds, break at blanks, count one cell a code point, and break
// a word longer than the width at the width. An empty text gives one empty line. `width` is at
// least 1.

// Where a line lies in the text, in bytes; the blanks that it was broken at belong to no line.
struct LineRange {
    std::size_t from = 0;
    std::size_t to = 0;
    bool operator==(const LineRange&) const = default;
};

// Greedy: every line takes as many words as fit.
std::vector<LineRange> BreakPlain(std::string_view text, int width);
std::vector<std::string> WrapPlain(std::string_view text, int width);

// Greedy to the smallest width that needs no more lines than `width` does, so that no line is left
// much shorter than the others.
std::vector<LineRange> BreakEven(std::string_view text, int width);
std::vector<std::string> WrapEven(std::string_view text, int width);

}  // namespace base
