#include "text_search.h"

#include <algorithm>

#include "vi/words.h"

namespace zo::ui {
namespace {

bool StandsAlone(const std::u16string& line, std::size_t at, std::size_t length) {
    const bool joined_before = at > 0 && vi::IsWord(line[at - 1]);
    const bool joined_behind = at + length < line.size() && vi::IsWord(line[at + length]);
    return !joined_before && !joined_behind;
}

char16_t Folded(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

bool Matches(const std::u16string& line, std::size_t at, const TextSearch& search) {
    const auto same = [&](char16_t a, char16_t b) {
        return a == b || (search.any_case && Folded(a) == Folded(b));
    };
    const auto start = line.begin() + static_cast<std::ptrdiff_t>(at);
    return std::equal(search.text.begin(), search.text.end(), start, same) &&
           (!search.whole_words || StandsAlone(line, at, search.text.size()));
}

}  // namespace

std::optional<int> NextMatch(const std::u16string& line, const TextSearch& search,
                             std::size_t from) {
    for (std::size_t at = from; at + search.text.size() <= line.size(); ++at) {
        if (Matches(line, at, search)) return static_cast<int>(at);
    }
    return std::nullopt;
}

std::optional<int> FindInLine(const std::u16string& line, const TextSearch& search,
                              std::size_t column, Way way) {
    std::optional<int> last;
    std::size_t from = 0;
    while (const auto match = NextMatch(line, search, from)) {
        const auto at = static_cast<std::size_t>(*match);
        if (way == Way::Forward && at >= column) return match;
        if (way == Way::Backward && at >= column) break;
        last = match;
        from = at + search.text.size();
    }
    return way == Way::Backward ? last : std::nullopt;
}

std::optional<TextPosition> FindText(const TextBuffer& text, const TextSearch& search,
                                     TextPosition from, Way way) {
    const bool forward = way == Way::Forward;
    if (search.text.empty()) return std::nullopt;
    const int lines = text.LineCount();
    for (int k = 0; k <= lines; ++k) {
        const int line = (from.line + (forward ? k : lines - k)) % lines;
        const std::u16string& content = text.Line(line);
        const bool here = k == 0;
        const std::size_t column =
            forward ? (here ? static_cast<std::size_t>(from.column) + 1 : 0)
                    : (here ? static_cast<std::size_t>(from.column) : content.size() + 1);
        if (column > content.size() + 1) continue;
        if (const auto at = FindInLine(content, search, column, way)) {
            return TextPosition{line, *at};
        }
    }
    return std::nullopt;
}

}  // namespace zo::ui
