#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "json/value.h"

namespace json {

// Where and why a text did not parse. Lines and columns count from 1, columns in bytes.
struct Error {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::string message;  // empty: no error

    bool operator==(const Error&) const = default;
};

// Reads one document. Lenient in three ways: a byte-order mark, `//` comments and trailing commas;
// containers nest at most 129 deep. On failure returns false with the first error filled in.
bool Parse(std::string_view text, Value& value, Error& error);

}  // namespace json
