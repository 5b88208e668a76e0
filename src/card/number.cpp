#include "number.h"

#include <algorithm>

#include "names.h"

namespace kp {
namespace {

// Counting stops here, far beyond any word and far from the end of 64 bits.
constexpr std::int64_t kUncounted = 1'000'000'000'000'000;

// The escapes of a character literal and the bytes they stand for.
constexpr std::string_view kEscapes = "nrt0\\'";
constexpr std::string_view kEscaped{"\n\r\t\0\\'", kEscapes.size()};

Reading ReadCharacter(std::string_view text) {
    const auto byte = [](char c) {
        return Reading{Reading::Number, static_cast<unsigned char>(c)};
    };
    if (!text.ends_with('\'')) return {};
    if (text.size() == 3 && text[1] != '\'' && text[1] != '\\') return byte(text[1]);
    if (text.size() != 4 || text[1] != '\\') return {};
    const std::size_t escape = kEscapes.find(text[2]);
    return escape == std::string_view::npos ? Reading() : byte(kEscaped[escape]);
}

// Removes a prefix and gives the base that it stands for.
int TakeBase(std::string_view& digits) {
    static constexpr struct {
        std::string_view prefix;
        int base;
    } kPrefixes[] = {{"$", 16}, {"0x", 16}, {"0X", 16}, {"%", 2}, {"0b", 2}, {"0B", 2}};
    for (const auto& [prefix, base] : kPrefixes) {
        if (!digits.starts_with(prefix)) continue;
        digits.remove_prefix(prefix.size());
        return base;
    }
    return 10;
}

// 16 and above for a character that is no digit in any base.
int DigitValue(char c) {
    if (IsDigit(c)) return c - '0';
    return IsLetter(c) ? Lower(c) - 'a' + 10 : 16;
}

bool StartsNumber(char c) {
    return IsDigit(c) || c == '$' || c == '%' || c == '+' || c == '-';
}

}  // namespace

Reading ReadNumber(std::string_view text) {
    if (text.starts_with('\'')) return ReadCharacter(text);
    if (text.empty() || !StartsNumber(text[0])) return {Reading::Name};
    const bool negative = text[0] == '-';
    if (negative || text[0] == '+') text.remove_prefix(1);
    const int base = TakeBase(text);
    std::int64_t value = 0;
    bool has_digits = false;
    for (const char c : text) {
        if (c == '_') continue;
        const int digit = DigitValue(c);
        if (digit >= base) return {};
        value = std::min(value * base + digit, kUncounted);
        has_digits = true;
    }
    if (!has_digits) return {};
    if (negative) value = -value;
    return {value < -32768 || value > 65535 ? Reading::OutOfRange : Reading::Number, value};
}

std::string RangeMessage(const Reading& reading, std::string_view text) {
    const bool counted = reading.value > -kUncounted && reading.value < kUncounted;
    return "The number " + (counted ? std::to_string(reading.value) : std::string(text)) +
           " does not fit in 16 bits.";
}

}  // namespace kp
