#include "vi/objects.h"

#include <algorithm>

#include "vi/words.h"

namespace zo::ui::vi {
namespace {

using Result = std::optional<Extent>;

enum class Part : std::uint8_t { Inner, Outer };

// The last character of a line; its start where there is none.
TextPosition LastOf(const TextBuffer& text, int line) {
    return {line, std::max(text.Length(line) - 1, 0)};
}

// One character back, over line ends too; nothing at the text's start.
std::optional<TextPosition> CharacterBefore(const TextBuffer& text, TextPosition at) {
    if (at.column > 0) return TextPosition{at.line, at.column - 1};
    if (at.line == 0) return std::nullopt;
    return LastOf(text, at.line - 1);
}

std::optional<TextPosition> CharacterBehind(const TextBuffer& text, TextPosition at) {
    if (at.column + 1 < text.Length(at.line)) return TextPosition{at.line, at.column + 1};
    if (at.line + 1 == text.LineCount()) return std::nullopt;
    return TextPosition{at.line + 1, 0};
}

// Words. Runs of blanks count as words of their own; an outer word has the blanks behind it, or
// those before it where there are none.

class WordFinder {
public:
    WordFinder(const ObjectCall& call, Words words, Part part)
        : text_(call.text), words_(words), outer_(part == Part::Outer) {}

    Result Find(const ObjectCall& call) {
        extent_ = {.start = call.start, .caret = call.caret};
        int count = call.count;
        bool blanks_before = false;
        if (!call.Extends()) {
            extent_.start = RunStart(call.caret);
            extent_.caret = extent_.start;
            if (IsBlank(extent_.start) == outer_) {
                if (!ToWordEnd()) {
                    extent_.start = call.start;
                    return Failed();
                }
            } else {
                const Walked next = NextWord(Here(), 1, true);
                const bool nothing = !next.whole && next.at.column == 0;
                extent_.caret =
                    nothing ? next.at : CharacterBefore(text_, next.at).value_or(next.at);
                blanks_before = outer_;
            }
            --count;
        }
        for (; count > 0; --count) {
            const bool backward = extent_.caret < extent_.start;
            if (!(backward ? GrowBackward() : GrowForward(count > 1))) return Failed();
        }
        const bool ended_by_line = extent_.reach == Reach::Exclusive;
        if (blanks_before && (!IsBlank(extent_.caret) || ended_by_line)) TakeBlanksBefore();
        return extent_;
    }

private:
    Walker Here() const { return {text_, extent_.caret, words_}; }
    bool IsBlank(TextPosition at) const {
        return Walker(text_, at, words_).Class() == CharacterClass::Blank;
    }
    TextPosition RunStart(TextPosition at) const {
        const CharacterClass of = Walker(text_, at, words_).Class();
        while (at.column > 0) {
            const TextPosition before = {at.line, at.column - 1};
            if (Walker(text_, before, words_).Class() != of) break;
            at = before;
        }
        return at;
    }
    Result Failed() {
        extent_.failed = true;
        return extent_;
    }
    bool ToWordEnd() {
        const Walked end = WordEnd(Here(), 1, true, true);
        extent_.caret = end.at;
        return end.whole;
    }

    bool GrowForward(bool more) {
        extent_.reach = Reach::Inclusive;
        const auto next = CharacterBehind(text_, extent_.caret);
        if (!next) {
            extent_.caret = text_.EndOf(extent_.caret.line);
            return false;
        }
        extent_.caret = *next;
        if (IsBlank(*next) == outer_) return ToWordEnd();
        const Walked end = NextWord(Here(), 1, true);
        extent_.caret = end.at;
        if (!end.whole && more) return false;
        if (end.at.column > 0) {
            --extent_.caret.column;
        } else {
            extent_.reach = Reach::Exclusive;
        }
        return true;
    }
    bool GrowBackward() {
        const auto before = CharacterBefore(text_, extent_.caret);
        if (!before) return false;
        extent_.caret = *before;
        if (IsBlank(*before) == outer_) {
            const Walked start = PreviousWord(Here(), 1, true);
            extent_.caret = start.at;
            return start.whole;
        }
        const Walked end = PreviousWordEnd(Here(), 1, true);
        extent_.caret = end.at;
        if (!end.whole) return false;
        extent_.caret = CharacterBehind(text_, end.at).value_or(end.at);
        return true;
    }
    // Those that begin a line are its indent and stay.
    void TakeBlanksBefore() {
        const TextPosition start = extent_.start;
        if (start.column == 0 || !IsBlank({start.line, start.column - 1})) return;
        const TextPosition blanks = RunStart({start.line, start.column - 1});
        if (blanks.column > 0) extent_.start = blanks;
    }

    const TextBuffer& text_;
    Words words_;
    bool outer_;
    Extent extent_;
};

// Paragraphs: blocks of lines of text, and of blank ones between them. An outer one has both.

class ParagraphFinder {
public:
    ParagraphFinder(const ObjectCall& call, Part part)
        : call_(call), outer_(part == Part::Outer), last_line_(call.text.LineCount() - 1) {}

    Result Find() {
        int first = call_.caret.line;
        if (call_.start.line != first) return Extend(first);
        const bool on_blank = IsBlank(first);
        while (first > 0 && IsBlank(first - 1) == on_blank) --first;
        int last = first - 1;
        while (last < last_line_ && IsBlank(last + 1)) ++last;
        const int blocks = call_.count - (on_blank && !outer_ ? 1 : 0);
        for (int left = blocks; left > 0; --left) {
            if (last == last_line_) return std::nullopt;
            const bool blank = !outer_ && IsBlank(last + 1);
            if (!blank) SkipBlock(last, false);
            if (left == 1 && on_blank && outer_) break;
            if (blank || outer_) SkipBlock(last, true);
        }
        if (outer_ && !on_blank && !IsBlank(last)) {
            while (first > 0 && IsBlank(first - 1)) --first;
        }
        // The line selected already would be all that a block of one line has.
        if (call_.by_lines && first == call_.caret.line) return Extend(first);
        const bool same_line = call_.selecting && call_.start.line == first;
        return Extent{{first, same_line ? call_.start.column : 0}, {last, 0}, Reach::Lines};
    }

private:
    bool IsBlank(int line) const { return call_.text.Indent(line) == call_.text.Length(line); }
    void SkipBlock(int& last, bool blank) const {
        while (last < last_line_ && IsBlank(last + 1) == blank) ++last;
    }

    // Makes a selection longer at the caret's end.
    Result Extend(int line) const {
        const int step = line < call_.start.line ? -1 : 1;
        const int end = step < 0 ? 0 : last_line_;
        const Reach reach = call_.by_lines ? Reach::Lines : Reach::Inclusive;
        Extent extent = {.start = call_.start, .caret = {}, .reach = reach};
        for (int left = call_.count; left > 0; --left) {
            if (line == end) {
                extent.failed = true;
                break;
            }
            for (int block = 0; block < (outer_ ? 2 : 1) && line != end; ++block) {
                const bool blank = IsBlank(line + step);
                do line += step;
                while (line != end && IsBlank(line + step) == blank);
            }
        }
        extent.caret = {line, 0};
        return extent;
    }

    const ObjectCall& call_;
    bool outer_;
    int last_line_;
};

// Quotes, on the caret's line.

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

Result Quote(const ObjectCall& call, char16_t quote, Part part) {
    if (call.Extends()) return std::nullopt;
    const int line = call.caret.line;
    const std::u16string& text = call.text.Line(line);
    const auto quoted = FindQuoted(text, static_cast<std::size_t>(call.caret.column), quote);
    if (!quoted) return std::nullopt;
    int first = static_cast<int>(quoted->open);
    int last = static_cast<int>(quoted->close);
    const auto is_blank = [&](int column) { return call.text.At({line, column}) == u' '; };
    if (part == Part::Inner && call.count < 2) {
        ++first;
        --last;
    } else if (part == Part::Outer && is_blank(last + 1)) {
        while (is_blank(last + 1)) ++last;
    } else if (part == Part::Outer) {
        while (first > 0 && is_blank(first - 1)) --first;
    }
    const bool nothing = last < first && !call.selecting;
    const TextPosition from = {line, first};
    return nothing ? Extent{from, from, Reach::Exclusive} : Extent{from, {line, last}};
}

// Brackets.

struct Brackets {
    char16_t open, close;
};

// The bracket without its other half that comes first from a place on.
std::optional<TextPosition> Unmatched(const TextBuffer& text, TextPosition from, Brackets brackets,
                                      Way way) {
    Walker walker(text, from, Words::Small);
    const bool forward = way == Way::Forward;
    const char16_t wanted = forward ? brackets.close : brackets.open;
    const char16_t other = forward ? brackets.open : brackets.close;
    for (int depth = 0; forward ? walker.Forward() : walker.Backward();) {
        const char16_t c = text.At(walker.At());
        if (c == wanted && depth-- == 0) return walker.At();
        if (c == other) ++depth;
    }
    return std::nullopt;
}

Result Bracket(const ObjectCall& call, Brackets brackets, Part part) {
    const TextBuffer& text = call.text;
    const auto [low, high] = std::minmax({call.start, call.caret});
    TextPosition from = low;
    if (!call.Extends() && text.At(from) == brackets.open) ++from.column;
    // Outside of brackets, the next ones.
    const bool inside = Unmatched(text, from, brackets, Way::Backward).has_value();
    const Brackets backward = {brackets.close, brackets.open};
    std::optional<TextPosition> open = from;
    for (int k = call.count; k > 0 && open; --k) {
        open = inside ? Unmatched(text, *open, brackets, Way::Backward)
                      : Unmatched(text, *open, backward, Way::Forward);
    }
    for (; open; open = Unmatched(text, *CharacterBefore(text, low), brackets, Way::Backward)) {
        const auto close = Unmatched(text, *open, brackets, Way::Forward);
        if (!close) return std::nullopt;
        if (part == Part::Outer) return Extent{*open, *close};
        const TextPosition first = CharacterBehind(text, *open).value_or(*open);
        // Blanks alone before the closing bracket are its indent, and no part of what is inside.
        bool at_line_start = close->column == 0;
        TextPosition last = CharacterBefore(text, *close).value_or(*close);
        for (; last > *open && last.column < text.Indent(last.line); at_line_start = true) {
            last = CharacterBefore(text, last).value_or(*open);
        }
        const bool no_more = first >= low && last <= high && first != last;
        if (call.selecting && no_more && CharacterBefore(text, low)) continue;
        if (call.selecting && no_more) return std::nullopt;
        if (call.selecting) {
            const bool with_break = at_line_start && text.At(last) != 0;
            return Extent{first, with_break ? text.EndOf(last.line) : last};
        }
        if (at_line_start) return Extent{first, {last.line + 1, 0}, Reach::Exclusive};
        if (last < first) return Extent{first, first, Reach::Exclusive};
        return Extent{first, last};
    }
    return std::nullopt;
}

// What the rows of the table have in common, as functions of their own.
template <Words words, Part part>
Result WordOf(const ObjectCall& call) {
    return WordFinder(call, words, part).Find(call);
}
template <Part part>
Result ParagraphOf(const ObjectCall& call) {
    return ParagraphFinder(call, part).Find();
}
template <char16_t quote, Part part>
Result QuoteOf(const ObjectCall& call) {
    return Quote(call, quote, part);
}
template <char16_t open, char16_t close, Part part>
Result BracketOf(const ObjectCall& call) {
    return Bracket(call, {open, close}, part);
}

constexpr auto kInner = Part::Inner;
constexpr auto kOuter = Part::Outer;

constexpr TextObject kObjects[] = {
    {U"iw", WordOf<Words::Small, kInner>},  {U"aw", WordOf<Words::Small, kOuter>},
    {U"iW", WordOf<Words::Big, kInner>},    {U"aW", WordOf<Words::Big, kOuter>},
    {U"ip", ParagraphOf<kInner>},           {U"ap", ParagraphOf<kOuter>},
    {U"i'", QuoteOf<u'\'', kInner>},        {U"a'", QuoteOf<u'\'', kOuter>},
    {U"i\"", QuoteOf<u'"', kInner>},        {U"a\"", QuoteOf<u'"', kOuter>},
    {U"i(", BracketOf<u'(', u')', kInner>}, {U"a(", BracketOf<u'(', u')', kOuter>},
    {U"i)", BracketOf<u'(', u')', kInner>}, {U"a)", BracketOf<u'(', u')', kOuter>},
    {U"i[", BracketOf<u'[', u']', kInner>}, {U"a[", BracketOf<u'[', u']', kOuter>},
    {U"i]", BracketOf<u'[', u']', kInner>}, {U"a]", BracketOf<u'[', u']', kOuter>},
};

}  // namespace

std::span<const TextObject> TextObjects() {
    return kObjects;
}

}  // namespace zo::ui::vi
