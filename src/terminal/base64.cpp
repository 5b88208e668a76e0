#include "base64.h"

#include <algorithm>
#include <cstdint>

namespace zo::term {

void AppendBase64(std::string& out, std::string_view bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(bytes.size() - at, 3);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8 | (k < count ? static_cast<std::uint8_t>(bytes[at + k]) : 0);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            out += k <= count ? kDigits[group >> (18 - 6 * k) & 63] : '=';
        }
    }
}

}  // namespace zo::term
