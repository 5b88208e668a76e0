#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kp {

// What a text is where a number may stand.
struct Reading {
    enum Kind : std::uint8_t { Name, Malformed, OutOfRange, Number };
    Kind kind = Malformed;
    std::int64_t value = 0;  // as written, so -1 stays -1; of Number and OutOfRange
};

// Reads decimal, hexadecimal ($, 0x), binary (%, 0b) and character forms. A text that does not
// start like a number is a name.
Reading ReadNumber(std::string_view text);

// "The number 70000 does not fit in 16 bits.", for a text that reads as OutOfRange.
std::string RangeMessage(const Reading& reading, std::string_view text);

}  // namespace kp
