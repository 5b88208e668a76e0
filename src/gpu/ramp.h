#pragma once

#include <array>
#include <cstdint>

#include "cells/theme.h"
#include "mask.h"

namespace zo::gpu {

inline std::uint32_t Pixel(ui::Rgb colour) {
    return std::uint32_t{colour.r} << 16 | std::uint32_t{colour.g} << 8 | colour.b;
}

// The pixel for every level of coverage, for one pair of colours.
class Ramp {
public:
    // The mixes between ink and ground are worked out only when they are asked for.
    enum class Steps { Ends, All };

    void Set(const ui::Ink& colours, Steps steps) {
        pixels_[0] = Pixel(colours.ground);
        pixels_[kFull] = Pixel(colours.ink);
        if (steps == Steps::Ends) return;
        for (unsigned level = 1; level < kFull; ++level) {
            pixels_[level] = Pixel({Mix(colours.ink.r, colours.ground.r, level),
                                    Mix(colours.ink.g, colours.ground.g, level),
                                    Mix(colours.ink.b, colours.ground.b, level)});
        }
    }

    std::uint32_t operator[](Level level) const { return pixels_[level]; }

private:
    static std::uint8_t Mix(unsigned ink, unsigned ground, unsigned level) {
        return static_cast<std::uint8_t>((ink * level + ground * (kFull - level) + kFull / 2) /
                                         kFull);
    }

    std::array<std::uint32_t, kFull + 1> pixels_ = {};
};

}  // namespace zo::gpu
