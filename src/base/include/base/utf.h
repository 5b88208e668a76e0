#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

// Reads the code point that starts at `at` and moves `at` past it. A malformed sequence, an
// overlong form and a surrogate each read as U+FFFD and take one byte. `at` must be inside the
// text.
char32_t NextCodePoint(std::string_view utf8, std::size_t& at);

// Appends a code point as UTF-8 (1 to 4 bytes); values that are no code point become U+FFFD.
void AppendUtf8(std::string& text, char32_t code_point);

std::u32string ToUtf32(std::string_view utf8);
std::string ToUtf8(std::u32string_view text);

// Code points above U+FFFF are pairs in UTF-16; half a pair alone is written as U+FFFD.
std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view text);
constexpr bool IsHighHalf(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool IsLowHalf(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}
void AppendUtf16(std::u16string& text, char32_t code_point);

// The number of code points, which is the number of cells that the text takes on a screen.
std::size_t CodePoints(std::string_view utf8);

}  // namespace base
