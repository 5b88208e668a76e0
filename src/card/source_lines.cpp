#include "source_lines.h"

#include <algorithm>

#include "names.h"

namespace kp {
namespace {

bool IsLabelStart(char c) {
    return IsLetter(c) || c == '_' || c == '.';
}

bool IsLabelCharacter(char c) {
    return IsLabelStart(c) || IsDigit(c);
}

// The end of the character literal that opens at `at`, or of its quote alone when nothing closes
// it: only a closed literal keeps a comma or a semicolon.
std::size_t SkipQuote(std::string_view text, std::size_t at) {
    const auto closes = [&](std::size_t end) { return end < text.size() && text[end] == '\''; };
    if (closes(at + 3) && text[at + 1] == '\\') return at + 4;
    return closes(at + 2) ? at + 3 : at + 1;
}

// Where `sought` first stands outside a character literal, or the end.
std::size_t FindOutsideQuotes(std::string_view text, char sought, std::size_t at) {
    while (at < text.size() && text[at] != sought) {
        at = text[at] == '\'' ? SkipQuote(text, at) : at + 1;
    }
    return at;
}

// Reads the pieces of one line, without its comment, from left to right.
class LineReader {
public:
    explicit LineReader(std::string_view text)
        : text_(text.substr(0, FindOutsideQuotes(text, ';', 0))) {
        while (!text_.empty() && IsBlank(text_.back())) text_.remove_suffix(1);
        SkipBlanks();
    }

    bool AtEnd() const { return at_ == text_.size(); }

    // A label up to and with its colon; leaves the cursor alone when there is none.
    bool TakeLabel(Piece& label) {
        if (AtEnd() || !IsLabelStart(text_[at_])) return false;
        const std::size_t start = at_;
        const std::size_t end = TakeWhile(IsLabelCharacter);
        SkipBlanks();
        if (!TakeCharacter(':')) {
            at_ = start;
            return false;
        }
        label = Cut(start, end);
        return true;
    }

    Piece TakeWord() {
        return TakeUpTo([](char c) { return IsBlank(c); });
    }

    // The name of a constant, with the comma that may follow it.
    Piece TakeConstantName() {
        const Piece name = TakeUpTo([](char c) { return IsBlank(c) || c == ','; });
        TakeCharacter(',');
        return name;
    }

    Piece TakeRest() {
        const std::size_t start = at_;
        at_ = text_.size();
        return Cut(start, at_);
    }

    // Everything to the next comma, without the blanks around it, and the comma. False after the
    // last operand; nothing behind a comma is an operand too.
    bool TakeOperand(Piece& operand) {
        if (AtEnd() && !after_comma_) return false;
        const std::size_t start = at_;
        const std::size_t comma = FindOutsideQuotes(text_, ',', at_);
        std::size_t end = comma;
        while (end > start && IsBlank(text_[end - 1])) --end;
        operand = Cut(start, end);
        at_ = comma;
        after_comma_ = TakeCharacter(',');
        return true;
    }

private:
    void SkipBlanks() { TakeWhile(IsBlank); }

    std::size_t TakeWhile(bool (*belongs)(char)) {
        while (!AtEnd() && belongs(text_[at_])) ++at_;
        return at_;
    }

    template <class Ends>
    Piece TakeUpTo(Ends ends) {
        const std::size_t start = at_;
        while (!AtEnd() && !ends(text_[at_])) ++at_;
        const Piece piece = Cut(start, at_);
        SkipBlanks();
        return piece;
    }

    bool TakeCharacter(char c) {
        if (AtEnd() || text_[at_] != c) return false;
        ++at_;
        SkipBlanks();
        return true;
    }

    Piece Cut(std::size_t start, std::size_t end) const {
        return {text_.substr(start, end - start), static_cast<std::int32_t>(start + 1)};
    }

    std::string_view text_;
    std::size_t at_ = 0;
    bool after_comma_ = false;
};

}  // namespace

SourceLines::SourceLines(std::string_view text) {
    const auto count = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    lines_.reserve(count);
    pieces_.reserve(2 * count);
    std::int32_t number = 1;
    for (std::size_t end; (end = text.find('\n')) != std::string_view::npos; ++number) {
        const bool has_return = end > 0 && text[end - 1] == '\r';
        ReadLine(text.substr(0, has_return ? end - 1 : end), number);
        text.remove_prefix(end + 1);
    }
    ReadLine(text, number);
}

void SourceLines::ReadLine(std::string_view text, std::int32_t number) {
    LineReader reader(text);
    if (reader.AtEnd()) return;
    SourceLine line;
    line.number = number;
    line.first = static_cast<std::uint32_t>(pieces_.size());
    Piece piece;
    for (; reader.TakeLabel(piece); ++line.labels) pieces_.push_back(piece);
    line.name = reader.TakeWord();
    line.is_def = SameName()(line.name.text, "def");
    if (line.is_def) {
        pieces_.push_back(reader.TakeConstantName());
        pieces_.push_back(reader.TakeRest());
        line.operands = 2;
    } else {
        for (; reader.TakeOperand(piece); ++line.operands) pieces_.push_back(piece);
    }
    lines_.push_back(line);
}

}  // namespace kp
