#include "ui/key_grammar.h"

#include "base/utf.h"

namespace zo::ui {

char32_t LetterOf(const KeyPress& key) {
    return key.key == Key::Character && !key.with.control ? key.character : 0;
}

int StepOf(const KeyPress& key) {
    return key.Is(Key::Left) ? -1 : key.Is(Key::Right) ? 1 : 0;
}

int TabStepOf(const KeyPress& key) {
    if (key.key != Key::Tab || key.with.alt) return 0;
    return key.with.shift ? -1 : 1;
}

char32_t FirstLetter(std::string_view utf8) {
    if (utf8.empty()) return 0;
    std::size_t at = 0;
    const char32_t c = base::NextCodePoint(utf8, at);
    return c >= U'A' && c <= U'Z' ? c - U'A' + U'a' : c;
}

}  // namespace zo::ui
