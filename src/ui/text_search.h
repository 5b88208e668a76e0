#pragma once

#include <optional>
#include <string>

#include "ui/text_buffer.h"

namespace zo::ui {

struct TextSearch {
    std::u16string text;
    bool whole_words = false;
    bool any_case = false;  // capital letters are as good as small ones
};

enum class Way : std::uint8_t { Forward, Backward };

// Matches do not overlap: the next one begins behind the end of the one before it. `from` is such
// an end, or 0.
std::optional<int> NextMatch(const std::u16string& line, const TextSearch& search,
                             std::size_t from);

// In one line, the first match from a column on; or, backward, the last one before it.
std::optional<int> FindInLine(const std::u16string& line, const TextSearch& search,
                              std::size_t column, Way way);

// The next match behind a position, or the one before it, around the text's ends.
std::optional<TextPosition> FindText(const TextBuffer& text, const TextSearch& search,
                                     TextPosition from, Way way);

}  // namespace zo::ui
