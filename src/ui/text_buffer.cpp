#include "ui/text_buffer.h"

#include <algorithm>

#include "base/utf.h"

namespace zo::ui {
namespace {

constexpr std::size_t kTabStop = 8;  // of tabs in loaded text

std::vector<std::u32string> SplitLines(std::string_view utf8, std::size_t first_column) {
    std::vector<std::u32string> lines(1);
    std::size_t shift = first_column;  // of the line being read
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t c = base::NextCodePoint(utf8, at);
        if (c == U'\n') {
            lines.emplace_back();
            shift = 0;
        } else if (c == U'\t') {
            const std::size_t column = shift + lines.back().size();
            lines.back().append(kTabStop - column % kTabStop, U' ');
        } else if (c != U'\r') {
            lines.back() += c;
        }
    }
    return lines;
}

}  // namespace

void TextBuffer::Set(std::string_view utf8) {
    lines_ = SplitLines(utf8, 0);
    ++revision_;
}

TextPosition TextBuffer::End() const {
    return {LineCount() - 1, static_cast<int>(lines_.back().size())};
}

TextPosition TextBuffer::Clamped(TextPosition at) const {
    const int line = std::clamp(at.line, 0, LineCount() - 1);
    return {line, std::clamp(at.column, 0, Length(line))};
}

TextPosition TextBuffer::Insert(TextPosition at, std::string_view utf8) {
    ++revision_;
    std::vector<std::u32string> added = SplitLines(utf8, static_cast<std::size_t>(at.column));
    std::u32string& line = lines_[static_cast<std::size_t>(at.line)];
    const std::u32string rest = line.substr(static_cast<std::size_t>(at.column));
    line.resize(static_cast<std::size_t>(at.column));
    line += added.front();
    lines_.insert(lines_.begin() + at.line + 1, added.begin() + 1, added.end());
    const int last = at.line + static_cast<int>(added.size()) - 1;
    const TextPosition end = {last, Length(last)};
    lines_[static_cast<std::size_t>(last)] += rest;
    return end;
}

std::string TextBuffer::Text(TextPosition from, TextPosition to) const {
    std::string text;
    for (int line = from.line; line <= to.line; ++line) {
        const int start = line == from.line ? from.column : 0;
        const int end = line == to.line ? to.column : Length(line);
        text += base::ToUtf8(
            std::u32string_view(Line(line))
                .substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)));
        if (line < to.line) text += '\n';
    }
    return text;
}

std::string TextBuffer::Erase(TextPosition from, TextPosition to) {
    ++revision_;
    std::string erased = Text(from, to);
    const std::u32string rest = Line(to.line).substr(static_cast<std::size_t>(to.column));
    std::u32string& line = lines_[static_cast<std::size_t>(from.line)];
    line.resize(static_cast<std::size_t>(from.column));
    line += rest;
    lines_.erase(lines_.begin() + from.line + 1, lines_.begin() + to.line + 1);
    return erased;
}

}  // namespace zo::ui
