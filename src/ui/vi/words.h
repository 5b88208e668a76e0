#pragma once

#include <cstdint>

#include "ui/text_buffer.h"

namespace zo::ui::vi {

enum class CharacterClass : std::uint8_t { Blank, Punctuation, Word };

// Of what w, b and e call a word; a line's end counts as a blank.
CharacterClass ClassOf(char16_t c);
inline bool IsWord(char16_t c) {
    return ClassOf(c) == CharacterClass::Word;
}

enum class Words : std::uint8_t { Small, Big };  // big ones end at blanks alone

// A place in the text that moves over its characters and the ends of its lines.
class Walker {
public:
    Walker(const TextBuffer& text, TextPosition at, Words words)
        : text_(&text), at_(at), words_(words) {}

    TextPosition At() const { return at_; }
    CharacterClass Class() const;
    bool OnEmptyLine() const { return text_->Length(at_.line) == 0; }
    bool AtLineEnd() const { return at_.column == text_->Length(at_.line); }
    bool OnLastLine() const { return at_.line + 1 == text_->LineCount(); }
    // Both are false, and nothing moves, at the text's end or start.
    bool Forward();
    bool Backward();

private:
    const TextBuffer* text_;
    TextPosition at_;
    Words words_;
};

// These stop at the text's ends, whatever the count.
struct Walked {
    TextPosition at;
    bool whole = true;  // not cut short by the text's end or start
};

// `within_line`: the last of the words ends with its line.
Walked NextWord(Walker walker, int count, bool within_line);
// `stay`: a walker on the start of a word is there already.
Walked PreviousWord(Walker walker, int count, bool stay = false);
// `stay`: a walker on the end of a word is there already.
Walked WordEnd(Walker walker, int count, bool stay, bool empty_lines_are_words = false);
// `within_line`: a line's start ends the way back.
Walked PreviousWordEnd(Walker walker, int count, bool within_line = false);

}  // namespace zo::ui::vi
