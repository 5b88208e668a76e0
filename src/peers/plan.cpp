#include "plan.h"

#include <algorithm>
#include <charconv>

namespace kp {
namespace {

constexpr std::size_t kBehindAll = kLastByte - 1;

}  // namespace

std::optional<std::size_t> NumberOf(std::string_view word, std::string_view name) {
    if (!word.starts_with(name)) return std::nullopt;
    word.remove_prefix(name.size());
    if (word.size() < 2 || word.front() != ':') return std::nullopt;
    word.remove_prefix(1);
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error == std::errc::invalid_argument || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return error == std::errc::result_out_of_range ? kBehindAll : std::min(number, kBehindAll);
}

std::optional<std::size_t> GarbledByte(std::string_view word) {
    return word == "garble" ? kLastByte : NumberOf(word, "garble");
}

void Garble(Bytes& bytes, std::size_t position) {
    if (position == kLastByte) position = bytes.size() - 1;
    if (position < bytes.size()) bytes[position] ^= 0x10;
}

}  // namespace kp
