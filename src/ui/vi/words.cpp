#include "vi/words.h"

namespace zo::ui::vi {
namespace {

// Moves on while the walker is on characters of one class; false at the text's end.
bool Leave(Walker& walker, CharacterClass of) {
    while (walker.Class() == of) {
        if (!walker.Forward()) return false;
    }
    return true;
}

bool LeaveBackward(Walker& walker, CharacterClass of) {
    while (walker.Class() == of) {
        if (!walker.Backward()) return false;
    }
    return true;
}

}  // namespace

CharacterClass ClassOf(char16_t c) {
    if (c == 0 || c == u' ' || c == u'\t') return CharacterClass::Blank;
    const bool letter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    const bool digit = c >= u'0' && c <= u'9';
    return letter || digit || c == u'_' || c > 127 ? CharacterClass::Word
                                                   : CharacterClass::Punctuation;
}

CharacterClass Walker::Class() const {
    const CharacterClass c = ClassOf(text_->At(at_));
    const bool big = words_ == Words::Big && c != CharacterClass::Blank;
    return big ? CharacterClass::Word : c;
}

bool Walker::Forward() {
    if (!AtLineEnd()) {
        ++at_.column;
        return true;
    }
    if (at_.line + 1 == text_->LineCount()) return false;
    at_ = {at_.line + 1, 0};
    return true;
}

bool Walker::Backward() {
    if (at_.column > 0) {
        --at_.column;
        return true;
    }
    if (at_.line == 0) return false;
    at_ = text_->EndOf(at_.line - 1);
    return true;
}

Walked NextWord(Walker walker, int count, bool within_line) {
    for (; count > 0; --count) {
        const bool last = within_line && count == 1;
        const CharacterClass start = walker.Class();
        const int line = walker.At().line;
        if (!walker.Forward()) return {walker.At(), false};
        const bool at_text_end = walker.OnLastLine() && walker.AtLineEnd();
        if (at_text_end && walker.At().line == line) return {walker.At(), false};
        if (last && (walker.At().line != line || walker.AtLineEnd())) break;
        while (start != CharacterClass::Blank && walker.Class() == start) {
            walker.Forward();
            if (last && walker.AtLineEnd()) return {walker.At()};
        }
        while (walker.Class() == CharacterClass::Blank && !walker.OnEmptyLine()) {
            if ((last && walker.AtLineEnd()) || !walker.Forward()) return {walker.At()};
        }
    }
    return {walker.At()};
}

Walked PreviousWord(Walker walker, int count, bool stay) {
    for (; count > 0; --count, stay = false) {
        const CharacterClass start = walker.Class();
        if (!walker.Backward()) return {walker.At(), false};
        if (stay && start != CharacterClass::Blank && walker.Class() != start) {
            walker.Forward();
            continue;
        }
        while (walker.Class() == CharacterClass::Blank && !walker.OnEmptyLine()) {
            if (!walker.Backward()) return {walker.At()};
        }
        if (walker.Class() == CharacterClass::Blank) continue;
        if (!LeaveBackward(walker, walker.Class())) return {walker.At()};
        walker.Forward();
    }
    return {walker.At()};
}

Walked WordEnd(Walker walker, int count, bool stay, bool empty_lines_are_words) {
    for (; count > 0; --count, stay = false) {
        const CharacterClass start = walker.Class();
        if (!walker.Forward()) return {walker.At(), false};
        const bool in_word = start != CharacterClass::Blank && walker.Class() == start;
        if (!in_word && stay && start != CharacterClass::Blank) {
            walker.Backward();
            continue;
        }
        if (!in_word) {
            while (walker.Class() == CharacterClass::Blank) {
                if (empty_lines_are_words && walker.OnEmptyLine()) break;
                if (!walker.Forward()) return {walker.At(), false};
            }
            if (walker.Class() == CharacterClass::Blank) continue;
        }
        if (!Leave(walker, walker.Class())) return {walker.At(), false};
        walker.Backward();
    }
    return {walker.At()};
}

Walked PreviousWordEnd(Walker walker, int count, bool within_line) {
    for (; count > 0; --count) {
        const CharacterClass start = walker.Class();
        const int line = walker.At().line;
        const auto back = [&] {
            return walker.Backward() && !(within_line && walker.At().line != line);
        };
        if (!back()) return {walker.At(), walker.At().line != line};
        while (start != CharacterClass::Blank && walker.Class() == start) {
            if (!back()) return {walker.At()};
        }
        while (walker.Class() == CharacterClass::Blank && !walker.OnEmptyLine()) {
            if (!back()) return {walker.At()};
        }
    }
    return {walker.At()};
}

}  // namespace zo::ui::vi
