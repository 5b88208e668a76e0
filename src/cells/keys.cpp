#include <array>

#include "base/utf.h"
#include "cells/input.h"

namespace zo::ui {
namespace {

// In the order of Key.
constexpr std::array<const char*, 27> kNames = {
    "",     "Esc",  "Enter", "Tab",   "Backspace", "Del",  "Ins", "Home", "End",
    "PgUp", "PgDn", "Left",  "Right", "Up",        "Down", "F1",  "F2",   "F3",
    "F4",   "F5",   "F6",    "F7",    "F8",        "F9",   "F10", "F11",  "F12",
};
static_assert(kNames.size() == static_cast<std::size_t>(Key::Character));

std::string CharacterName(char32_t character) {
    if (character == U' ') return "Space";
    const bool small = character >= U'a' && character <= U'z';
    std::string name;
    base::AppendUtf8(name, small ? character - U'a' + U'A' : character);
    return name;
}

}  // namespace

std::string KeyName(const KeyPress& key) {
    std::string name;
    if (key.with.control) name += "Ctrl+";
    if (key.with.alt) name += "Alt+";
    if (key.with.shift) name += "Shift+";
    if (key.key == Key::Character) return name + CharacterName(key.character);
    return name + kNames[static_cast<std::size_t>(key.key)];
}

}  // namespace zo::ui
