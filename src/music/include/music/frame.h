#pragma once

#include <algorithm>
#include <cmath>

namespace Kest {

inline constexpr int kSampleRate = 48000;

// One sample of both channels, 1 at full scale.
struct Frame {
    float left = 0;
    float right = 0;

    Frame operator*(float gain) const { return {left * gain, right * gain}; }
    Frame& operator+=(Frame other) {
        left += other.left;
        right += other.right;
        return *this;
    }
    bool operator==(const Frame&) const = default;
};

constexpr int SamplesOf(float milliseconds) {
    return static_cast<int>(milliseconds * (kSampleRate / 1000.0F) + 0.5F);
}

// Where a sound sits between the left (-1) and the right (1), at the same power throughout.
inline Frame Panned(float pan) {
    return {std::sqrt(1.0F - pan), std::sqrt(1.0F + pan)};
}

// A gain that reaches a new value in a straight line, so that nothing clicks.
class Ramp {
public:
    // `step` is the most it moves a sample; it starts at `value`.
    explicit Ramp(float step, float value = 0) : step_(step), value_(value) {}
    float Next(float target) {
        value_ += std::clamp(target - value_, -step_, step_);
        return value_;
    }
    float Value() const { return value_; }

private:
    float step_;
    float value_;
};

}  // namespace Kest
