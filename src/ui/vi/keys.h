#pragma once

namespace zo::ui::vi {

// Keys as the layer sees them: characters, and codes for keys that type none. Control and a letter
// are the letter's control code.
using Key = char32_t;
inline constexpr Key kEscape = 0x1B;
inline constexpr Key kEnter = U'\r';
inline constexpr Key kBackspace = U'\b';
inline constexpr Key kTab = U'\t';
inline constexpr Key kDelete = 0x7F;
inline constexpr Key kFirstUnprintable = 0x110000;  // the keys from here on have no code elsewhere
inline constexpr Key kLeft = kFirstUnprintable;
inline constexpr Key kRight = kLeft + 1;
inline constexpr Key kUp = kLeft + 2;
inline constexpr Key kDown = kLeft + 3;
inline constexpr Key kHome = kLeft + 4;
inline constexpr Key kEnd = kLeft + 5;
constexpr Key Control(char letter) {
    return static_cast<Key>(letter) & 0x1F;
}
constexpr bool IsText(Key key) {
    return key >= U' ' && key != kDelete && key < kFirstUnprintable;
}

}  // namespace zo::ui::vi
