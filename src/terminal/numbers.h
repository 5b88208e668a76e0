#pragma once

#include <charconv>
#include <string>

namespace zo::term {

inline void AppendNumber(std::string& out, unsigned number) {
    char digits[12];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

// How many digits a number takes.
constexpr int Digits(int number) {
    int digits = 1;
    for (; number >= 10; number /= 10) ++digits;
    return digits;
}

}  // namespace zo::term
