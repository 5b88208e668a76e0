#include "ticket/generator.h"

#include <charconv>

namespace kp {
namespace {

constexpr std::uint64_t kFnvStart = 0x14650fb0739d0383;
constexpr std::uint64_t kFnvPrime = 0x100000001b3;

std::uint64_t HashOn(std::uint64_t hash, std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<std::uint8_t>(c)) * kFnvPrime;
    return hash;
}

// How many numbers [low, high] holds.
std::uint64_t Span(std::int64_t low, std::int64_t high) {
    return static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low) + 1;
}

std::uint64_t HashOnNumber(std::uint64_t hash, std::int64_t number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return HashOn(hash, {digits, static_cast<std::size_t>(end - digits)});
}

}  // namespace

std::uint64_t TestSeed(std::string_view ticket_id, int position) {
    return HashOnNumber(HashOn(HashOn(kFnvStart, ticket_id), "#"), position);
}

std::uint64_t FreshSeed(std::string_view ticket_id, int position, std::uint32_t draw) {
    const std::uint64_t seed = TestSeed(ticket_id, position);
    return draw == 0 ? seed : HashOnNumber(HashOn(seed, "/"), draw);
}

std::int64_t Generator::Draw(std::int64_t low, std::int64_t high) {
    if (high <= low) return low;
    drawn_ = true;
    state_ += 0x9e3779b97f4a7c15;
    std::uint64_t z = state_;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
    z = (z ^ z >> 27) * 0x94d049bb133111eb;
    z ^= z >> 31;
    return low + static_cast<std::int64_t>(z % Span(low, high));
}

}  // namespace kp
