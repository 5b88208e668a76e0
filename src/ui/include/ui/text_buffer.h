#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zo::ui {

// A place in a text, between characters. Both count from 0.
struct TextPosition {
    int line = 0;
    int column = 0;
    auto operator<=>(const TextPosition&) const = default;
};

// A text as lines of code points; there is always at least one line. Lines hold no line feeds,
// carriage returns or tabs: those are turned into lines and blanks on the way in.
class TextBuffer {
public:
    TextBuffer() : lines_(1) {}

    void Set(std::string_view utf8);
    std::string Text() const { return Text({}, End()); }
    // From one position up to a later one, lines joined by line feeds.
    std::string Text(TextPosition from, TextPosition to) const;

    int LineCount() const { return static_cast<int>(lines_.size()); }
    const std::u32string& Line(int line) const { return lines_[static_cast<std::size_t>(line)]; }
    int Length(int line) const { return static_cast<int>(Line(line).size()); }
    TextPosition End() const;
    // The nearest position inside the text.
    TextPosition Clamped(TextPosition at) const;

    // The position behind what was put in.
    TextPosition Insert(TextPosition at, std::string_view utf8);
    // What was taken out, lines joined by line feeds.
    std::string Erase(TextPosition from, TextPosition to);
    // Changes with each edit, so that others know when to look again.
    std::uint64_t Revision() const { return revision_; }

private:
    std::vector<std::u32string> lines_;
    std::uint64_t revision_ = 0;
};

}  // namespace zo::ui
