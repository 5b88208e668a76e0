#include "card/byte_text.h"

#include "base/format.h"

namespace kp {
namespace {

bool IsPrintable(std::uint8_t byte) {
    return byte >= 32 && byte <= 126;
}

}  // namespace

void AppendHex(std::string& text, std::uint8_t byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

std::string HexByte(std::uint8_t byte) {
    std::string text = "$";
    AppendHex(text, byte);
    return text;
}

std::string VerdictByte(std::uint8_t byte) {
    return IsPrintable(byte) ? base::Format("$%02X ('%c')", byte, byte) : HexByte(byte);
}

std::string NoteByte(std::uint8_t byte) {
    return IsPrintable(byte) ? base::Format("$%02X '%c'", byte, byte) : HexByte(byte);
}

}  // namespace kp
