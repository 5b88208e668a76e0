#include "keys.h"

#include <algorithm>
#include <iterator>

namespace zo::term {
namespace {

using ui::Key;
using ui::KeyPress;

template <class Name>
struct Named {
    Name name;
    Key key;
};

template <class Name, std::size_t count>
Key Find(const Named<Name> (&table)[count], Name name) {
    const auto* const found = std::ranges::find(table, name, &Named<Name>::name);
    return found == std::end(table) ? Key::None : found->key;
}

constexpr Named<char> kLetters[] = {{'A', Key::Up},   {'B', Key::Down}, {'C', Key::Right},
                                    {'D', Key::Left}, {'H', Key::Home}, {'F', Key::End},
                                    {'P', Key::F1},   {'Q', Key::F2},   {'R', Key::F3},
                                    {'S', Key::F4},   {'Z', Key::Tab},  {'M', Key::Enter}};

constexpr Named<int> kNumbers[] = {
    {1, Key::Home},     {2, Key::Insert}, {3, Key::Delete}, {4, Key::End},  {5, Key::PageUp},
    {6, Key::PageDown}, {7, Key::Home},   {8, Key::End},    {11, Key::F1},  {12, Key::F2},
    {13, Key::F3},      {14, Key::F4},    {15, Key::F5},    {17, Key::F6},  {18, Key::F7},
    {19, Key::F8},      {20, Key::F9},    {21, Key::F10},   {23, Key::F11}, {24, Key::F12}};

// F keys with Shift, as the system's own console numbers them.
constexpr Named<int> kShifted[] = {{25, Key::F1}, {26, Key::F2}, {28, Key::F3}, {29, Key::F4},
                                   {31, Key::F5}, {32, Key::F6}, {33, Key::F7}, {34, Key::F8}};

// The keypad has numbers of its own.
constexpr Named<char32_t> kCodes[] = {
    {8, Key::Backspace},   {9, Key::Tab},       {13, Key::Enter},     {27, Key::Escape},
    {127, Key::Backspace}, {57414, Key::Enter}, {57417, Key::Left},   {57418, Key::Right},
    {57419, Key::Up},      {57420, Key::Down},  {57421, Key::PageUp}, {57422, Key::PageDown},
    {57423, Key::Home},    {57424, Key::End},   {57425, Key::Insert}, {57426, Key::Delete}};
constexpr char32_t kFirstKeypad = 57399;
constexpr char32_t kKeypad[] = U"0123456789./*-+";
constexpr char32_t kFirstWithoutCharacter = 57344;
constexpr char32_t kLastWithoutCharacter = 63743;

constexpr ui::Modifiers kControl{.shift = false, .control = true, .alt = false};

}  // namespace

std::optional<ui::Modifiers> ModifiersOf(int number) {
    const int bits = std::max(number, 1) - 1;
    constexpr int kDesktop = 8 | 16 | 32;
    if ((bits & kDesktop) != 0) return std::nullopt;
    return ui::Modifiers{
        .shift = (bits & 1) != 0, .control = (bits & 4) != 0, .alt = (bits & 2) != 0};
}

Key KeyOfLetter(char letter) {
    return Find(kLetters, letter);
}

Key KeyOfNumber(int number) {
    return Find(kNumbers, number);
}

Key ShiftedKeyOfNumber(int number) {
    return Find(kShifted, number);
}

KeyPress KeyOfCode(char32_t code, const ui::Modifiers& with) {
    if (const Key key = Find(kCodes, code); key != Key::None) return {.key = key, .with = with};
    if (code >= kFirstKeypad && code < kFirstKeypad + std::size(kKeypad) - 1) {
        code = kKeypad[code - kFirstKeypad];
    } else if (code < U' ' || (code >= kFirstWithoutCharacter && code <= kLastWithoutCharacter) ||
               code > 0x10FFFF) {
        return {};
    }
    KeyPress press{.key = Key::Character, .character = code, .with = with};
    if (code >= U'A' && code <= U'Z') {
        press.character = code - U'A' + U'a';
        press.with.shift = true;
    }
    return press;
}

KeyPress KeyOfControl(std::uint8_t byte) {
    switch (byte) {
        case 0x00:
            return {.key = Key::Character, .character = U' ', .with = kControl};
        case 0x09:
            return {.key = Key::Tab};
        case 0x0A:  // some send it for Enter; a line pasted without brackets ends in it too
        case 0x0D:
            return {.key = Key::Enter};
        case 0x1B:
            return {.key = Key::Escape};
        case 0x7F:
            return {.key = Key::Backspace};
        case 0x1F:  // Ctrl and the key of the slash
            return {.key = Key::Character, .character = U'/', .with = kControl};
        default:
            break;
    }
    const auto letter = static_cast<char32_t>(byte | (byte < 0x1B ? 0x60 : 0x40));
    return {.key = Key::Character, .character = letter, .with = kControl};
}

}  // namespace zo::term
