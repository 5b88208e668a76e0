#pragma once

#include <string_view>
#include <vector>

namespace base {

// A row of two texts laid side by side: of both, or of one alone.
struct DiffRow {
    enum class Of : char { Both = ' ', First = '-', Second = '+' };
    Of of = Of::Both;
    int number = 0;  // of the line in its text from 1; the second's where it is in both
    std::string_view line;
};

// What turns the first text into the second with the fewest lines changed, by the longest common
// subsequence of lines; those taken away stand before those that come in their place. Blanks at a
// line's end do not count. The rows point into the texts. Of texts with many thousands of different
// lines everything between the first and the last difference counts as changed.
std::vector<DiffRow> DiffLines(std::string_view first, std::string_view second);

}  // namespace base
