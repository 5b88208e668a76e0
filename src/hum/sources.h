#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "hum/source.h"
#include "names.h"
#include "token.h"

namespace hum {

// One text that went into a program.
struct Source {
    std::string name;  // in messages
    std::string path;  // tells one text from another; empty for the program and the library
    std::string held;  // the text itself where nobody else holds it
    std::string_view text;
    bool once = false;  // it holds #pragma once
};

// A token's or a fault's place before line and column are worked out.
struct Spot {
    std::uint16_t source = 0;
    std::uint32_t line = 1;
    std::uint32_t offset = 0;
};

inline Spot SpotOf(const Token& token) {
    return {token.source, token.line, token.offset};
}

// Everything that the preprocessor hands on: the tokens, ended by one of kind End, and what they
// refer to.
struct Tokens {
    std::deque<Source> sources;
    Names names;
    std::vector<std::string_view> strings;
    std::vector<Token> list;
};

std::uint32_t ColumnOf(const Tokens& tokens, Spot spot);
Fault FaultAt(const Tokens& tokens, Spot spot, std::string message);

}  // namespace hum
