#pragma once

#include <cstdint>

namespace Kest {

// Marsaglia's xorshift with 32 bits, "Xorshift RNGs", 2003. Never 0.
class Xorshift {
public:
    explicit Xorshift(std::uint32_t seed) : state_(seed == 0 ? 1 : seed) {}
    std::uint32_t Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return state_;
    }

private:
    std::uint32_t state_;
};

// Equally distributed between -1 and 1.
class WhiteNoise {
public:
    explicit WhiteNoise(std::uint32_t seed = 0x9E3779B9) : random_(seed) {}
    float Next() {
        return static_cast<float>(static_cast<std::int32_t>(random_.Next())) * 0x1p-31F;
    }

private:
    Xorshift random_;
};

}  // namespace Kest
