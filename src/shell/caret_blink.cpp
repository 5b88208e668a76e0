#include "shell/caret_blink.h"

#include <cmath>

namespace Kest {
namespace {

constexpr double kPhaseSeconds = 0.53;
constexpr double kRestSeconds = 20;

}  // namespace

bool CaretBlink::Stir(double now) {
    const bool rested = Rests(now);
    if (rested) since_ = now;
    stirred_ = now;
    return rested;
}

bool CaretBlink::IsLit(double now) const {
    return Rests(now) || std::fmod(Phases(now), 2) == 0;
}

std::optional<double> CaretBlink::NextChange(double now) const {
    if (Rests(now)) return std::nullopt;
    return since_ + (Phases(now) + 1) * kPhaseSeconds;
}

bool CaretBlink::Rests(double now) const {
    return now - stirred_ >= kRestSeconds;
}

double CaretBlink::Phases(double now) const {
    return std::floor((now - since_) / kPhaseSeconds);
}

}  // namespace Kest
