#pragma once

#include <cstdint>
#include <string>

namespace kp {

// Two capital hexadecimal digits, "1F", at the end of a text.
void AppendHex(std::string& text, std::uint8_t byte);

// "$1F"
std::string HexByte(std::uint8_t byte);

// A byte in verdicts: "$48 ('H')", or "$1F" alone when it is not printable ASCII (32 to 126).
std::string VerdictByte(std::uint8_t byte);

// A byte in trace notes: "$48 'H'", or "$1F".
std::string NoteByte(std::uint8_t byte);

}  // namespace kp
