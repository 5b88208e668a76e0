#pragma once

#include <cstdint>
#include <string_view>

namespace kp {

// The seed of a ticket's expanded test: 64-bit FNV-1a over the ticket id, "#" and the position from
// 0 in decimal, with the starting value 0x14650fb0739d0383.
std::uint64_t TestSeed(std::string_view ticket_id, int position);
// That of the same test's draw number `draw`, with "/" and its number behind the position; 0 is the
// deck's own.
std::uint64_t FreshSeed(std::string_view ticket_id, int position, std::uint32_t draw);

// SplitMix64 (Steele, Lea and Flood, "Fast splittable pseudorandom number generators", 2014).
class Generator {
public:
    explicit Generator(std::uint64_t seed) : state_(seed) {}

    // A number in [low, high]. With high at or below low the result is low and the state stays.
    std::int64_t Draw(std::int64_t low, std::int64_t high);
    // Whether any number depended on the seed.
    bool HasDrawn() const { return drawn_; }

private:
    std::uint64_t state_;
    bool drawn_ = false;
};

}  // namespace kp
