#pragma once

#include <algorithm>
#include <cmath>

#include "cells/theme.h"

namespace support {

inline double Linear(std::uint8_t channel) {
    const double coded = channel / 255.0;
    return coded <= 0.03928 ? coded / 12.92 : std::pow((coded + 0.055) / 1.055, 2.4);
}

inline double Luminance(zo::ui::Rgb colour) {
    return 0.2126 * Linear(colour.r) + 0.7152 * Linear(colour.g) + 0.0722 * Linear(colour.b);
}

// The contrast ratio of the Web Content Accessibility Guidelines 2.
inline double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

}  // namespace support
