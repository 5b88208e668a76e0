#pragma once

#include <array>
#include <cstddef>
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
    Ramp() = default;  // of black on black
    explicit Ramp(const ui::Ink& colours) {
        for (unsigned level = 0; level <= kFull; ++level) {
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

// The ramps in use. A screen has a few dozen pairs of colours in thousands of cells, so the last
// ramp asked for in each place is kept.
class Ramps {
public:
    const Ramp& Find(const ui::Ink& colours) {
        Entry& entry = entries_[Place(colours)];
        if (entry.colours != colours) entry = {colours, Ramp(colours)};
        return entry.ramp;
    }

private:
    static constexpr unsigned kPlaceBits = 8;

    struct Entry {
        ui::Ink colours;  // black on black at first, as its ramp is
        Ramp ramp;
    };

    static std::size_t Place(const ui::Ink& colours) {
        const std::uint32_t mixed =
            Pixel(colours.ink) * 0x9E3779B1U ^ Pixel(colours.ground) * 0x85EBCA6BU;
        return mixed >> (32 - kPlaceBits);
    }

    std::array<Entry, 1U << kPlaceBits> entries_;
};

}  // namespace zo::gpu
