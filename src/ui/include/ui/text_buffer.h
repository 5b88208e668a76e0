#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zo::ui {

// A place in a text, between characters. Both count from 0; columns count 16-bit characters.
struct TextPosition {
    int line = 0;
    int column = 0;
    auto operator<=>(const TextPosition&) const = default;
};

// Text from elsewhere as the editor keeps it: 16-bit characters, lines that end in line feeds.
// Carriage returns end lines too, tabs become blanks up to the next multiple of 8, and other
// control characters, which nobody can see or type, are left out. `column` is where the text will
// begin.
std::u16string Normalised(std::string_view utf8, int column = 0);

// A text as lines of 16-bit characters; there is always at least one line, and none holds a line
// feed. A character above U+FFFF is a pair of them; no position that this class gives out lies
// between its halves.
class TextBuffer {
public:
    TextBuffer() : lines_(1) {}

    void Set(std::u16string_view text);
    std::u16string Text() const { return Text({}, End()); }
    // From one position up to a later one, lines joined by line feeds.
    std::u16string Text(TextPosition from, TextPosition to) const;

    int LineCount() const { return static_cast<int>(lines_.size()); }
    const std::u16string& Line(int line) const { return lines_[static_cast<std::size_t>(line)]; }
    int Length(int line) const { return static_cast<int>(Line(line).size()); }
    TextPosition End() const;
    TextPosition EndOf(int line) const { return {line, Length(line)}; }
    // The character at a position; 0 at the end of a line.
    char16_t At(TextPosition at) const;
    // The columns that a line's blanks at its start take.
    int Indent(int line) const;

    // The nearest position inside the text.
    TextPosition Clamped(TextPosition at) const;
    // One character on or back, over a line's end too; the position itself at the text's ends.
    TextPosition After(TextPosition at) const;
    TextPosition Before(TextPosition at) const;

    // Puts a text in the place of what lies between two positions; returns the position behind it.
    TextPosition Replace(TextPosition from, TextPosition to, std::u16string_view added);

private:
    std::vector<std::u16string> lines_;
};

// The position behind a text that begins at `from`.
TextPosition EndOf(std::u16string_view text, TextPosition from);

}  // namespace zo::ui
