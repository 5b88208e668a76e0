#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kp {

// Firmware is ASCII where it is not text of the player's own, so these know no locale.
constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool IsLetter(char c) {
    return Lower(c) >= 'a' && Lower(c) <= 'z';
}

// Names are compared without regard to case.
struct SameName {
    constexpr bool operator()(std::string_view a, std::string_view b) const {
        return std::ranges::equal(a, b, {}, Lower, Lower);
    }
};

// FNV-1a, alike for names that SameName holds equal.
struct NameHash {
    constexpr std::size_t operator()(std::string_view name) const {
        std::uint32_t hash = 2166136261u;
        for (const char c : name) hash = (hash ^ static_cast<std::uint8_t>(Lower(c))) * 16777619u;
        return hash;
    }
};

// A text of the player's as messages show it.
inline std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

}  // namespace kp
