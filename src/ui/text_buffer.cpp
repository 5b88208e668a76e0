#include "ui/text_buffer.h"

#include <algorithm>
#include <iterator>

#include "base/utf.h"

namespace zo::ui {
namespace {

constexpr std::size_t kTabStop = 8;
constexpr char32_t kByteOrderMark = 0xFEFF;

bool IsInvisible(char32_t c) {
    return c < U' ' || (c >= 0x7F && c < 0xA0) || c == kByteOrderMark;
}

std::vector<std::u16string> SplitLines(std::u16string_view text) {
    std::vector<std::u16string> lines;
    lines.reserve(1 + static_cast<std::size_t>(std::ranges::count(text, u'\n')));
    for (;;) {
        const std::size_t end = text.find(u'\n');
        lines.emplace_back(text.substr(0, end));
        if (end == std::u16string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::u16string Normalised(std::string_view utf8, int column) {
    std::u16string text;
    text.reserve(utf8.size());
    std::size_t line_start = 0;  // in the text, less the column that its first line begins at
    line_start -= static_cast<std::size_t>(column);
    for (std::size_t at = 0; at < utf8.size();) {
        char32_t c = base::NextCodePoint(utf8, at);
        if (c == U'\r') {
            if (at < utf8.size() && utf8[at] == '\n') continue;
            c = U'\n';
        }
        if (c == U'\t') {
            text.append(kTabStop - (text.size() - line_start) % kTabStop, u' ');
        } else if (c == U'\n') {
            text += u'\n';
            line_start = text.size();
        } else if (!IsInvisible(c)) {
            base::AppendUtf16(text, c);
        }
    }
    return text;
}

void TextBuffer::Set(std::u16string_view text) {
    lines_ = SplitLines(text);
}

TextPosition TextBuffer::End() const {
    return EndOf(LineCount() - 1);
}

char16_t TextBuffer::At(TextPosition at) const {
    return at.column < Length(at.line) ? Line(at.line)[static_cast<std::size_t>(at.column)]
                                       : char16_t{0};
}

int TextBuffer::Indent(int line) const {
    const std::size_t text = Line(line).find_first_not_of(u' ');
    return text == std::u16string::npos ? Length(line) : static_cast<int>(text);
}

TextPosition TextBuffer::Clamped(TextPosition at) const {
    at.line = std::clamp(at.line, 0, LineCount() - 1);
    at.column = std::clamp(at.column, 0, Length(at.line));
    if (at.column > 0 && base::IsLowHalf(At(at)) &&
        base::IsHighHalf(At({at.line, at.column - 1}))) {
        --at.column;
    }
    return at;
}

TextPosition TextBuffer::After(TextPosition at) const {
    if (at.column == Length(at.line)) {
        return at.line + 1 < LineCount() ? TextPosition{at.line + 1, 0} : at;
    }
    const TextPosition next = {at.line, at.column + 1};
    return Clamped(next) == next ? next : TextPosition{at.line, at.column + 2};
}

TextPosition TextBuffer::Before(TextPosition at) const {
    if (at.column > 0) return Clamped({at.line, at.column - 1});
    return at.line > 0 ? EndOf(at.line - 1) : at;
}

TextPosition TextBuffer::Replace(TextPosition from, TextPosition to, std::u16string_view added) {
    const auto first = static_cast<std::size_t>(from.line);
    const auto start = static_cast<std::size_t>(from.column);
    if (from.line == to.line && added.find(u'\n') == std::u16string_view::npos) {
        lines_[first].replace(start, static_cast<std::size_t>(to.column - from.column), added);
        return {from.line, from.column + static_cast<int>(added.size())};
    }
    std::vector<std::u16string> lines = SplitLines(added);
    const TextPosition end = zo::ui::EndOf(added, from);
    lines.back() += std::u16string_view(Line(to.line)).substr(static_cast<std::size_t>(to.column));
    lines_[first].replace(start, std::u16string::npos, lines.front());
    const auto behind = lines_.begin() + from.line + 1;
    const auto kept = lines_.begin() + to.line + 1;
    const auto shared = std::min(kept - behind, static_cast<std::ptrdiff_t>(lines.size()) - 1);
    std::move(lines.begin() + 1, lines.begin() + 1 + shared, behind);
    if (behind + shared < kept) {
        lines_.erase(behind + shared, kept);
    } else {
        lines_.insert(kept, std::make_move_iterator(lines.begin() + 1 + shared),
                      std::make_move_iterator(lines.end()));
    }
    return end;
}

std::u16string TextBuffer::Text(TextPosition from, TextPosition to) const {
    std::u16string text;
    for (int line = from.line; line <= to.line; ++line) {
        const int start = line == from.line ? from.column : 0;
        const int end = line == to.line ? to.column : Length(line);
        text.append(Line(line), static_cast<std::size_t>(start),
                    static_cast<std::size_t>(end - start));
        if (line < to.line) text += u'\n';
    }
    return text;
}

TextPosition EndOf(std::u16string_view text, TextPosition from) {
    const std::size_t last = text.rfind(u'\n');
    if (last == std::u16string_view::npos) {
        return {from.line, from.column + static_cast<int>(text.size())};
    }
    return {from.line + static_cast<int>(std::ranges::count(text, u'\n')),
            static_cast<int>(text.size() - last - 1)};
}

}  // namespace zo::ui
