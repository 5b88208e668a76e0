#include "vi/motions.h"

#include <algorithm>

#include "base/utf.h"
#include "vi/keys.h"
#include "vi/words.h"

namespace zo::ui::vi {
namespace {

using Result = std::optional<Target>;

// The last place of a line where the caret of Normal mode stands.
TextPosition LastIn(const TextBuffer& text, int line) {
    const int length = text.Length(line);
    return length > 0 ? text.Before({line, length}) : TextPosition{line, 0};
}

TextPosition FirstNonBlank(const TextBuffer& text, int line) {
    return {line, std::min(text.Indent(line), LastIn(text, line).column)};
}

TextPosition InGoal(const MotionCall& call, int line) {
    const int most =
        call.asker == Asker::Selection ? call.text.Length(line) : LastIn(call.text, line).column;
    return call.text.Clamped({line, std::min(call.goal, most)});
}

// Nowhere to go, but j and k aim for this from now on.
Target Nowhere(const MotionCall& call, int goal = kOwnColumn) {
    return {.at = call.from, .goal = goal, .failed = true};
}

Walker WalkerOf(const MotionCall& call, Words words) {
    return {call.text, call.from, words};
}

Result Left(const MotionCall& call) {
    const int column = call.from.column;
    if (column == 0 && !call.Operating()) return std::nullopt;
    TextPosition at = call.from;
    for (int k = std::min(call.Times(), column); k > 0 && at.column > 0; --k) {
        at = call.text.Before(at);
    }
    return Target{at};
}

Result Right(const MotionCall& call) {
    const int line = call.from.line;
    const int most =
        call.asker == Asker::Caret ? LastIn(call.text, line).column : call.text.Length(line);
    if (call.from.column >= most && !call.Operating()) return std::nullopt;
    TextPosition at = call.from;
    for (int k = call.Times(); k > 0 && at.column < most; --k) at = call.text.After(at);
    return Target{at};
}

// Space and Backspace go on over the ends of lines, which count as characters for an operator.
Result Onward(const MotionCall& call) {
    TextPosition at = call.from;
    Target target{at};
    for (int k = call.Times(); k > 0; --k) {
        const int length = call.text.Length(at.line);
        const bool last = at.line + 1 == call.text.LineCount();
        const int most = call.asker == Asker::Caret ? LastIn(call.text, at.line).column : length;
        if (at.column < most) {
            at = call.text.After(at);
        } else if (last) {
            break;
        } else {
            at = {at.line + 1, 0};
        }
    }
    if (at == call.from && !call.Operating()) return std::nullopt;
    target.at = at;
    return target;
}

Result Backward(const MotionCall& call) {
    TextPosition at = call.from;
    Reach reach = Reach::Exclusive;
    for (int k = call.Times(); k > 0; --k) {
        const bool wraps = at.column == 0 && at.line > 0;
        at = call.text.Before(at);
        if (!wraps) continue;
        // What removes text takes the end of the line above, and so may a selection.
        if (call.Removing() && at.column > 0) {
            reach = Reach::Exactly;
        } else if (call.asker != Asker::Selection) {
            at = LastIn(call.text, at.line);
        }
    }
    if (at == call.from && !call.Operating()) return std::nullopt;
    return Target{at, reach};
}

Result LineBy(const MotionCall& call, int by) {
    const int last = call.text.LineCount() - 1;
    const int line = std::clamp(call.from.line + by, 0, last);
    if (line == call.from.line) return std::nullopt;
    return Target{InGoal(call, line), Reach::Lines, call.goal};
}
Result Down(const MotionCall& call) {
    return LineBy(call, call.Times());
}
Result Up(const MotionCall& call) {
    return LineBy(call, -call.Times());
}

Result ToLine(const MotionCall& call, int line) {
    line = std::clamp(line, 0, call.text.LineCount() - 1);
    return Target{FirstNonBlank(call.text, line), Reach::Lines};
}
Result FirstLine(const MotionCall& call) {
    return ToLine(call, call.Times() - 1);
}
Result LastLine(const MotionCall& call) {
    return ToLine(call, call.count > 0 ? call.count - 1 : call.text.LineCount() - 1);
}
Result LineBelow(const MotionCall& call) {
    return call.from.line + 1 < call.text.LineCount() ? ToLine(call, call.from.line + call.Times())
                                                      : std::nullopt;
}
Result LineAbove(const MotionCall& call) {
    return call.from.line > 0 ? ToLine(call, call.from.line - call.Times()) : std::nullopt;
}
Result ThisLine(const MotionCall& call) {
    const bool below = call.Times() > 1;
    if (below && call.from.line + 1 == call.text.LineCount()) return std::nullopt;
    return ToLine(call, call.from.line + call.Times() - 1);
}

Result InView(const MotionCall& call, int row) {
    return ToLine(call, std::min(call.view.top + row, call.view.top + call.view.rows - 1));
}
Result TopOfView(const MotionCall& call) {
    return InView(call, call.Times() - 1);
}
Result MiddleOfView(const MotionCall& call) {
    const int shown = std::min(call.view.rows, call.text.LineCount() - call.view.top);
    return InView(call, (shown - 1) / 2);
}
Result BottomOfView(const MotionCall& call) {
    const int shown = std::min(call.view.rows, call.text.LineCount() - call.view.top);
    return InView(call, std::max(shown - call.Times(), 0));
}

Result LineStart(const MotionCall& call) {
    return Target{{call.from.line, 0}};
}
Result TextStart(const MotionCall& call) {
    return Target{FirstNonBlank(call.text, call.from.line)};
}
Result LineEnd(const MotionCall& call) {
    const int line = std::min(call.from.line + call.Times() - 1, call.text.LineCount() - 1);
    if (line == call.from.line && call.Times() > 1) return Nowhere(call, kLineEnd);
    const TextPosition end =
        call.asker == Asker::Selection ? call.text.EndOf(line) : LastIn(call.text, line);
    return Target{end, Reach::Inclusive, kLineEnd};
}
Result TextEnd(const MotionCall& call) {
    const int line = std::min(call.from.line + call.Times() - 1, call.text.LineCount() - 1);
    if (line == call.from.line && call.Times() > 1) return Nowhere(call, kLineEnd);
    const std::size_t last = call.text.Line(line).find_last_not_of(u' ');
    const int column = last == std::u16string::npos ? 0 : static_cast<int>(last);
    return Target{{line, column}, Reach::Inclusive};
}
Result Column(const MotionCall& call) {
    const int most = call.asker == Asker::Selection ? call.text.Length(call.from.line)
                                                    : LastIn(call.text, call.from.line).column;
    const int column = call.Times() - 1;
    return Target{.at = {call.from.line, std::min(column, most)}, .goal = column};
}

// The caret does not stay behind a line's last character; an operator still takes that one.
Target OffTheLineEnd(const MotionCall& call, TextPosition at, Reach reach) {
    const bool behind = at.column > 0 && at.column == call.text.Length(at.line);
    if (!behind || at <= call.from || call.asker == Asker::Selection) return {at, reach};
    return {call.text.Before(at), Reach::Inclusive};
}

Result EndOfWords(const MotionCall& call, Words words, bool stay) {
    const TextPosition end = WordEnd(WalkerOf(call, words), call.Times(), stay).at;
    return OffTheLineEnd(call, end, Reach::Inclusive);
}
Result SmallWordEnd(const MotionCall& call) {
    return EndOfWords(call, Words::Small, false);
}
Result BigWordEnd(const MotionCall& call) {
    return EndOfWords(call, Words::Big, false);
}

// cw changes a word without the blanks behind it, even if the caret stands on its last character.
Result Word(const MotionCall& call, Words words) {
    const bool on_word = ClassOf(call.text.At(call.from)) != CharacterClass::Blank;
    if (call.asker == Asker::ChangeOperator && on_word) return EndOfWords(call, words, true);
    const TextPosition next = NextWord(WalkerOf(call, words), call.Times(), call.Operating()).at;
    return OffTheLineEnd(call, next, Reach::Exclusive);
}
Result SmallWord(const MotionCall& call) {
    return Word(call, Words::Small);
}
Result BigWord(const MotionCall& call) {
    return Word(call, Words::Big);
}

Result Back(const MotionCall& call, Words words) {
    const Walked start = PreviousWord(WalkerOf(call, words), call.Times());
    return Target{.at = start.at, .failed = !start.whole};
}
Result BackWord(const MotionCall& call) {
    return Back(call, Words::Small);
}
Result BackBigWord(const MotionCall& call) {
    return Back(call, Words::Big);
}

Result BackToEnd(const MotionCall& call, Words words) {
    const Walked end = PreviousWordEnd(WalkerOf(call, words), call.Times());
    return Target{.at = end.at, .reach = Reach::Inclusive, .failed = !end.whole};
}
Result BackToWordEnd(const MotionCall& call) {
    return BackToEnd(call, Words::Small);
}
Result BackToBigWordEnd(const MotionCall& call) {
    return BackToEnd(call, Words::Big);
}

// An empty line behind lines of text, as often as counted; nothing when there are not so many.
std::optional<int> Paragraphs(const MotionCall& call, int step) {
    const int last = call.text.LineCount() - 1;
    int line = call.from.line;
    for (int k = call.Times(); k > 0; --k) {
        bool in_paragraph = false;
        for (bool first = true;; first = false) {
            const bool empty = call.text.Length(line) == 0;
            in_paragraph |= !empty;
            if (!first && in_paragraph && empty) break;
            if (line + step < 0 || line + step > last) {
                if (k > 1) return std::nullopt;
                break;
            }
            line += step;
        }
    }
    return line;
}
Result ParagraphDown(const MotionCall& call) {
    const std::optional<int> line = Paragraphs(call, 1);
    if (!line) return Nowhere(call);
    const bool in_text = call.text.Length(*line) > 0;
    if (*line + 1 < call.text.LineCount() || !in_text) return Target{{*line, 0}};
    return Target{LastIn(call.text, *line), Reach::Inclusive};
}
Result ParagraphUp(const MotionCall& call) {
    const std::optional<int> line = Paragraphs(call, -1);
    if (!line) return Nowhere(call);
    return Target{{*line, 0}};
}

// `past_neighbour`: the repetition of a t must not be held by the character that it stands before.
Result FindCharacter(const MotionCall& call, const CharacterSearch& search, bool past_neighbour) {
    const std::u16string& line = call.text.Line(call.from.line);
    const int step = search.forward ? 1 : -1;
    int column = call.from.column;
    for (int k = call.Times(); k > 0; --k) {
        bool skip = past_neighbour;
        past_neighbour = false;
        do {
            column += step;
            if (column < 0 || column >= static_cast<int>(line.size())) return std::nullopt;
            const bool found = line[static_cast<std::size_t>(column)] == search.character;
            if (found && !skip) break;
            skip = false;
        } while (true);
    }
    if (search.till) column -= step;
    return Target{{call.from.line, column}, search.forward ? Reach::Inclusive : Reach::Exclusive};
}
Result FindNew(const MotionCall& call, bool forward, bool till) {
    if (call.character > 0xFFFF) return std::nullopt;
    call.searches.character = {static_cast<char16_t>(call.character), forward, till};
    return FindCharacter(call, call.searches.character, false);
}
Result Find(const MotionCall& call) {
    return FindNew(call, true, false);
}
Result FindBack(const MotionCall& call) {
    return FindNew(call, false, false);
}
Result Till(const MotionCall& call) {
    return FindNew(call, true, true);
}
Result TillBack(const MotionCall& call) {
    return FindNew(call, false, true);
}
Result FindAgain(const MotionCall& call, bool same_way) {
    CharacterSearch search = call.searches.character;
    if (search.character == 0) return std::nullopt;
    search.forward = search.forward == same_way;
    return FindCharacter(call, search, search.till && call.Times() == 1);
}
Result FindNext(const MotionCall& call) {
    return FindAgain(call, true);
}
Result FindReverse(const MotionCall& call) {
    return FindAgain(call, false);
}

Result SearchAgain(const MotionCall& call, bool same_way) {
    const TextSearch& search = call.searches.text;
    if (search.text.empty()) return Nowhere(call);
    const bool forward = call.searches.text_forward == same_way;
    const Way way = forward ? Way::Forward : Way::Backward;
    TextPosition at = call.from;
    for (int k = call.Times(); k > 0; --k) {
        const auto found = FindText(call.text, search, at, way);
        if (!found) return Nowhere(call);
        at = *found;
    }
    return Target{at};
}
// The text of / and ? is in the searches before either is asked.
Result SearchNext(const MotionCall& call) {
    return SearchAgain(call, true);
}
Result SearchPrevious(const MotionCall& call) {
    return SearchAgain(call, false);
}

// The word under the caret or behind it on the line; else the other characters there.
Result SearchWord(const MotionCall& call, bool forward) {
    const std::u16string& line = call.text.Line(call.from.line);
    const auto caret = line.begin() + call.from.column;
    auto start = std::find_if(caret, line.end(), IsWord);
    const bool word = start != line.end();
    const auto belongs = [word](char16_t c) {
        return word ? IsWord(c) : ClassOf(c) == CharacterClass::Punctuation;
    };
    start = std::find_if(caret, line.end(), belongs);
    if (start == line.end()) return std::nullopt;
    const auto end = std::find_if_not(start, line.end(), belongs);
    while (start != line.begin() && belongs(*(start - 1))) --start;
    call.searches.text = {.text = std::u16string(start, end), .whole_words = word};
    call.searches.text_forward = forward;
    MotionCall from_start = call;
    from_start.from.column = static_cast<int>(start - line.begin());
    return SearchAgain(from_start, true);
}
Result SearchWordForward(const MotionCall& call) {
    return SearchWord(call, true);
}
Result SearchWordBackward(const MotionCall& call) {
    return SearchWord(call, false);
}

constexpr std::u16string_view kBrackets = u"()[]{}";

// The bracket that belongs to the first one on the line from the caret on; with a count, the line
// at so many percent of the text.
Result MatchingBracket(const MotionCall& call) {
    if (call.count > 100) return std::nullopt;
    if (call.count > 0) return ToLine(call, (call.count * call.text.LineCount() + 99) / 100 - 1);
    const std::u16string& line = call.text.Line(call.from.line);
    const TextPosition from = std::min(call.from, LastIn(call.text, call.from.line));
    const std::size_t column = line.find_first_of(kBrackets, static_cast<std::size_t>(from.column));
    if (column == std::u16string::npos) return std::nullopt;
    const char16_t here = line[column];
    const std::size_t which = kBrackets.find(here);
    const char16_t other = kBrackets[which ^ 1];
    const bool forward = which % 2 == 0;
    Walker walker(call.text, {call.from.line, static_cast<int>(column)}, Words::Small);
    for (int depth = 1; depth > 0;) {
        if (!(forward ? walker.Forward() : walker.Backward())) return std::nullopt;
        const char16_t c = call.text.At(walker.At());
        if (c == here) ++depth;
        if (c == other) --depth;
    }
    return Target{walker.At(), Reach::Inclusive};
}

// The cursor block, which has no characters.
constexpr Key kBlock[] = {kLeft, kRight, kUp, kDown, kHome, kEnd};
constexpr std::u32string_view InBlock(Key key) {
    return {&kBlock[key - kLeft], 1};
}

constexpr auto kCharacter = Motion::Takes::Character;
constexpr auto kText = Motion::Takes::Text;

constexpr Motion kMotions[] = {
    {U"h", Left},
    {U"j", Down},
    {U"k", Up},
    {U"l", Right},
    {U" ", Onward},
    {U"\b", Backward},
    {U"\r", LineBelow},
    {U"+", LineBelow},
    {U"-", LineAbove},
    {U"_", ThisLine},
    {U"w", SmallWord},
    {U"W", BigWord},
    {U"b", BackWord},
    {U"B", BackBigWord},
    {U"e", SmallWordEnd},
    {U"E", BigWordEnd},
    {U"ge", BackToWordEnd},
    {U"gE", BackToBigWordEnd},
    {U"0", LineStart},
    {U"^", TextStart},
    {U"$", LineEnd},
    {U"g_", TextEnd},
    {U"|", Column},
    {U"gg", FirstLine},
    {U"G", LastLine},
    {U"H", TopOfView},
    {U"M", MiddleOfView},
    {U"L", BottomOfView},
    {U"{", ParagraphUp},
    {U"}", ParagraphDown},
    {U"f", Find, kCharacter},
    {U"F", FindBack, kCharacter},
    {U"t", Till, kCharacter},
    {U"T", TillBack, kCharacter},
    {U";", FindNext},
    {U",", FindReverse},
    {U"/", SearchNext, kText},
    {U"?", SearchNext, kText},
    {U"n", SearchNext},
    {U"N", SearchPrevious},
    {U"*", SearchWordForward},
    {U"#", SearchWordBackward},
    {U"%", MatchingBracket},
    {InBlock(kLeft), Left},
    {InBlock(kRight), Right},
    {InBlock(kUp), Up},
    {InBlock(kDown), Down},
    {InBlock(kHome), LineStart},
    {InBlock(kEnd), LineEnd},
};

}  // namespace

std::span<const Motion> Motions() {
    return kMotions;
}

}  // namespace zo::ui::vi
