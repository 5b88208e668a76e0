#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

// The same numbers for the same seed on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15u + 0x2545F491u) {
        if (state_ == 0) state_ = 1;
        for (int i = 0; i < 4; ++i) Next();
    }

    std::uint32_t Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<std::uint32_t>(state_ >> 32);
    }
    // 0 up to `end`, without it.
    std::uint32_t Below(std::size_t end) {
        return static_cast<std::uint32_t>(Next() % (end == 0 ? 1 : end));
    }
    bool OneIn(std::uint32_t chances) { return Below(chances) == 0; }

    template <std::size_t size>
    std::string_view Pick(const std::string_view (&choices)[size]) {
        return choices[Below(size)];
    }

private:
    std::uint64_t state_;
};

}  // namespace fuzz
