#include "card/byte_text.h"

#include "base/format.h"

namespace kp {
namespace {

bool IsPrintable(std::uint8_t byte) {
    return byte >= 32 && byte <= 126;
}

}  // namespace

std::string HexByte(std::uint8_t byte) {
    return base::Format("$%02X", byte);
}

std::string VerdictByte(std::uint8_t byte) {
    return IsPrintable(byte) ? base::Format("$%02X ('%c')", byte, byte) : HexByte(byte);
}

std::string NoteByte(std::uint8_t byte) {
    return IsPrintable(byte) ? base::Format("$%02X '%c'", byte, byte) : HexByte(byte);
}

}  // namespace kp
