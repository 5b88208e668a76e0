#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "hum/instruments.h"

namespace hum {

// White noise between -1 and 1, the same for the same seed.
class WhiteNoise {
public:
    explicit WhiteNoise(std::uint32_t seed) : x_(seed * 2654435761u | 1u) {}

    double operator()() {
        x_ ^= x_ << 13;
        x_ ^= x_ >> 17;
        x_ ^= x_ << 5;
        return static_cast<double>(x_ >> 8) / 8388608.0 - 1.0;
    }

private:
    std::uint32_t x_;
};

std::array<std::vector<float>, kKitSoundCount> MakeKit();
std::array<Instruments::Anchor, kPianoAnchorCount> MakePiano();

}  // namespace hum
