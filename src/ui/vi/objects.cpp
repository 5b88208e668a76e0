#include "vi/objects.h"

#include <algorithm>

#include "vi/words.h"

namespace zo::ui::vi {
namespace {

using Result = std::optional<Extent>;

// A line as runs of characters of one class.
class Runs {
public:
    Runs(const TextBuffer& text, int line, Words words) : text_(text), line_(line), words_(words) {}

    bool Blank(int column) const { return ClassAt(column) == CharacterClass::Blank; }
    bool Inside(int column) const { return column >= 0 && column < text_.Length(line_); }
    int First(int column) const {  // of the run that a character is in
        while (column > 0 && ClassAt(column - 1) == ClassAt(column)) --column;
        return column;
    }
    int Last(int column) const {
        while (Inside(column + 1) && ClassAt(column + 1) == ClassAt(column)) ++column;
        return column;
    }

private:
    CharacterClass ClassAt(int column) const {
        return Walker(text_, {line_, column}, words_).Class();
    }

    const TextBuffer& text_;
    int line_;
    Words words_;
};

// Runs of blanks are words of their own.
Result InnerWord(const ObjectCall& call, Words words) {
    const int line = call.to.line;
    const Runs runs(call.text, line, words);
    const bool extends = call.from != call.to;
    if (call.text.Length(line) == 0) return Extent{call.from, call.to, false, false};
    int last = extends ? call.to.column : runs.Last(call.to.column);
    for (int k = extends ? 0 : 1; k < call.count; ++k) {
        if (!runs.Inside(last + 1)) return std::nullopt;
        last = runs.Last(last + 1);
    }
    const TextPosition from =
        extends ? call.from : TextPosition{line, runs.First(call.from.column)};
    return Extent{from, {line, last}};
}

// A word with the blanks behind it; where there are none, with those before it that are no indent.
Result OuterWord(const ObjectCall& call, Words words) {
    const int line = call.to.line;
    const Runs runs(call.text, line, words);
    const bool extends = call.from != call.to;
    int first = extends ? call.from.column : runs.First(call.from.column);
    int last = extends ? call.to.column : first - 1;
    bool blanks = true;  // every word has some
    for (int k = 0; k < call.count; ++k) {
        if (!runs.Inside(last + 1) && call.text.Length(line) > 0) return std::nullopt;
        const bool blank_first = runs.Blank(last + 1);
        last = runs.Last(last + 1);
        const bool goes_on = runs.Inside(last + 1);
        // From the blanks at a line's end the next word may stand on another line.
        if (blank_first && !goes_on) {
            if (call.count > 1) return std::nullopt;
            const Walker blanks_end(call.text, {line, std::max(last, 0)}, words);
            const TextPosition end = WordEnd(blanks_end, 1, true, true);
            const bool on_empty_line = end.line > line && call.text.Length(end.line) == 0;
            if (call.text.At(end) == 0 && !on_empty_line) return std::nullopt;
            return Extent{{line, first}, end};
        }
        blanks = blank_first || (goes_on && runs.Blank(last + 1));
        if (blanks) last = runs.Last(last + 1);
    }
    if (!blanks && !extends && first > 0 && runs.Blank(first - 1)) {
        const int start = runs.First(first - 1);
        if (start > 0) first = start;
    }
    return Extent{extends ? call.from : TextPosition{line, first}, {line, last}};
}

bool IsBlankLine(const TextBuffer& text, int line) {
    return text.Indent(line) == text.Length(line);
}

int LastOfBlock(const TextBuffer& text, int line) {
    const bool blank = IsBlankLine(text, line);
    while (line + 1 < text.LineCount() && IsBlankLine(text, line + 1) == blank) ++line;
    return line;
}

int FirstOfBlock(const TextBuffer& text, int line) {
    const bool blank = IsBlankLine(text, line);
    while (line > 0 && IsBlankLine(text, line - 1) == blank) --line;
    return line;
}

// Blocks of lines of text, and of blank ones between them; an outer one has a block of each.
Result Paragraph(const ObjectCall& call, bool outer) {
    const TextBuffer& text = call.text;
    const bool extends = call.from.line != call.to.line;
    int first = extends ? call.from.line : FirstOfBlock(text, call.from.line);
    int last = extends ? call.to.line : first - 1;
    for (int k = 0; k < call.count; ++k) {
        if (last + 1 == text.LineCount()) return std::nullopt;
        const bool blank = IsBlankLine(text, last + 1);
        last = LastOfBlock(text, last + 1);
        if (!outer) continue;
        if (last + 1 < text.LineCount()) {
            last = LastOfBlock(text, last + 1);
        } else if (blank) {
            return std::nullopt;
        } else if (!extends && first > 0) {
            first = FirstOfBlock(text, first - 1);
        }
    }
    return Extent{{first, extends ? call.from.column : 0}, {last, 0}, true};
}

// The quote that ends what begins behind a column; a backslash takes the character behind it along.
std::size_t ClosingQuote(const std::u16string& line, std::size_t at, char16_t quote) {
    for (; at < line.size(); ++at) {
        if (line[at] == u'\\') {
            ++at;
        } else if (line[at] == quote) {
            return at;
        }
    }
    return std::u16string::npos;
}

struct Quoted {
    std::size_t open, close;
};

// The caret on a quote belongs to the pair that counting from the line's start makes of it.
std::optional<Quoted> FindQuoted(const std::u16string& line, std::size_t column, char16_t quote) {
    std::size_t open = std::u16string::npos;
    if (column < line.size() && line[column] == quote) {
        for (std::size_t at = 0;;) {
            open = line.find(quote, at);
            const std::size_t close = ClosingQuote(line, open + 1, quote);
            if (close == std::u16string::npos) return std::nullopt;
            if (column <= close) return Quoted{open, close};
            at = close + 1;
        }
    }
    open = column > 0 ? line.rfind(quote, column - 1) : open;
    if (open == std::u16string::npos) open = line.find(quote, column);
    if (open == std::u16string::npos) return std::nullopt;
    const std::size_t close = ClosingQuote(line, open + 1, quote);
    if (close == std::u16string::npos) return std::nullopt;
    return Quoted{open, close};
}

Extent OnLine(int line, std::size_t first, std::size_t behind) {
    const int last = static_cast<int>(behind) - 1;
    const int from = static_cast<int>(first);
    return {{line, from}, {line, std::max(last, from)}, false, last < from};
}

Result Quote(const ObjectCall& call, char16_t quote, bool outer) {
    const int line = call.from.line;
    const std::u16string& text = call.text.Line(line);
    const auto quoted = FindQuoted(text, static_cast<std::size_t>(call.from.column), quote);
    if (!quoted) return std::nullopt;
    if (!outer) return OnLine(line, quoted->open + 1, quoted->close);
    std::size_t first = quoted->open;
    std::size_t behind = quoted->close + 1;
    while (behind < text.size() && text[behind] == u' ') ++behind;
    if (behind == quoted->close + 1) {
        while (first > 0 && text[first - 1] == u' ') --first;
    }
    return OnLine(line, first, behind);
}

Result Bracket(const ObjectCall& call, char16_t open, char16_t close, bool outer) {
    const int line = call.from.line;
    const std::u16string& text = call.text.Line(line);
    int first = call.from.column;
    const auto at = [&](int column) { return text[static_cast<std::size_t>(column)]; };
    if (first >= call.text.Length(line)) return std::nullopt;
    int depth = call.count;
    if (at(first) == close) --first;
    for (; first >= 0; --first) {
        if (at(first) == close) ++depth;
        if (at(first) == open && --depth == 0) break;
    }
    if (first < 0) return std::nullopt;
    int last = first + 1;
    for (depth = 1; last < call.text.Length(line); ++last) {
        if (at(last) == open) ++depth;
        if (at(last) == close && --depth == 0) break;
    }
    if (last == call.text.Length(line)) return std::nullopt;
    const auto behind = static_cast<std::size_t>(last);
    const auto start = static_cast<std::size_t>(first);
    return outer ? OnLine(line, start, behind + 1) : OnLine(line, start + 1, behind);
}

// What the rows of the table have in common, as functions of their own.
template <Words words>
Result InnerWordOf(const ObjectCall& call) {
    return InnerWord(call, words);
}
template <Words words>
Result OuterWordOf(const ObjectCall& call) {
    return OuterWord(call, words);
}
template <bool outer>
Result ParagraphOf(const ObjectCall& call) {
    return Paragraph(call, outer);
}
template <char16_t quote, bool outer>
Result QuoteOf(const ObjectCall& call) {
    return Quote(call, quote, outer);
}
template <char16_t open, char16_t close, bool outer>
Result BracketOf(const ObjectCall& call) {
    return Bracket(call, open, close, outer);
}

constexpr TextObject kObjects[] = {
    {U"iw", InnerWordOf<Words::Small>},    {U"aw", OuterWordOf<Words::Small>},
    {U"iW", InnerWordOf<Words::Big>},      {U"aW", OuterWordOf<Words::Big>},
    {U"ip", ParagraphOf<false>},           {U"ap", ParagraphOf<true>},
    {U"i'", QuoteOf<u'\'', false>},        {U"a'", QuoteOf<u'\'', true>},
    {U"i\"", QuoteOf<u'"', false>},        {U"a\"", QuoteOf<u'"', true>},
    {U"i(", BracketOf<u'(', u')', false>}, {U"a(", BracketOf<u'(', u')', true>},
    {U"i)", BracketOf<u'(', u')', false>}, {U"a)", BracketOf<u'(', u')', true>},
    {U"i[", BracketOf<u'[', u']', false>}, {U"a[", BracketOf<u'[', u']', true>},
    {U"i]", BracketOf<u'[', u']', false>}, {U"a]", BracketOf<u'[', u']', true>},
};

}  // namespace

std::span<const TextObject> TextObjects() {
    return kObjects;
}

}  // namespace zo::ui::vi
