#include "ticket/hex.h"

namespace kp {
namespace {

constexpr std::string_view kSeparators = "\t $,-:";

int NibbleOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::optional<Bytes> ReadHex(std::string_view text) {
    Bytes bytes;
    int high = -1;
    for (const char c : text) {
        if (kSeparators.find(c) != std::string_view::npos) continue;
        const int nibble = NibbleOf(c);
        if (nibble < 0) return std::nullopt;
        if (high < 0) {
            high = nibble;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4 | nibble));
            high = -1;
        }
    }
    if (high >= 0) return std::nullopt;
    return bytes;
}

}  // namespace kp
