#pragma once

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "json/parser.h"

namespace support {

// The value of a JSON text that a test wrote itself.
inline json::Value Json(std::string_view text) {
    json::Value value;
    json::Error error;
    const bool parsed = json::Parse(text, value, error);
    INFO("line " << error.line << ", column " << error.column << ": " << error.message);
    REQUIRE(parsed);
    return value;
}

inline std::vector<std::uint8_t> ToBytes(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace support
