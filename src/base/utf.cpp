#include "base/utf.h"

namespace base {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Lead {
    int more;         // bytes that follow
    char32_t bits;    // the lead byte's own bits
    char32_t lowest;  // the least code point of this length
};

Lead ReadLead(unsigned char byte) {
    if (byte >= 0xC2 && byte < 0xE0) return {1, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {2, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {3, byte & 0x07u, 0x10000};
    return {0, kReplacement, 0};
}

bool IsCodePoint(char32_t value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

}  // namespace

char32_t NextCodePoint(std::string_view utf8, std::size_t& at) {
    const auto first = static_cast<unsigned char>(utf8[at++]);
    if (first < 0x80) return first;
    const Lead lead = ReadLead(first);
    if (lead.more == 0 || utf8.size() - at < static_cast<std::size_t>(lead.more)) {
        return kReplacement;
    }
    char32_t value = lead.bits;
    for (int k = 0; k < lead.more; ++k) {
        const auto byte = static_cast<unsigned char>(utf8[at + static_cast<std::size_t>(k)]);
        if ((byte & 0xC0) != 0x80) return kReplacement;
        value = value << 6 | (byte & 0x3Fu);
    }
    if (value < lead.lowest || !IsCodePoint(value)) return kReplacement;
    at += static_cast<std::size_t>(lead.more);
    return value;
}

void AppendUtf8(std::string& text, char32_t code_point) {
    const char32_t c = IsCodePoint(code_point) ? code_point : kReplacement;
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

std::u32string ToUtf32(std::string_view utf8) {
    std::u32string text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) text += NextCodePoint(utf8, at);
    return text;
}

std::string ToUtf8(std::u32string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char32_t c : text) AppendUtf8(utf8, c);
    return utf8;
}

void AppendUtf16(std::u16string& text, char32_t code_point) {
    if (code_point <= 0xFFFF) {
        text += static_cast<char16_t>(code_point);
        return;
    }
    const char32_t rest = code_point - 0x10000;
    text += static_cast<char16_t>(0xD800 + (rest >> 10));
    text += static_cast<char16_t>(0xDC00 + (rest & 0x3FF));
}

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) AppendUtf16(text, NextCodePoint(utf8, at));
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t c = text[at];
        if (IsHighHalf(text[at]) && at + 1 < text.size() && IsLowHalf(text[at + 1])) {
            c = 0x10000 + ((c & 0x3FF) << 10) + (text[++at] & 0x3FFu);
        }
        AppendUtf8(utf8, c);
    }
    return utf8;
}

std::size_t CodePoints(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < utf8.size(); ++count) NextCodePoint(utf8, at);
    return count;
}

}  // namespace base
