#include "music/loudness.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace Kest {
namespace {

// The two stages of the weighting at 48000 Hz: the head's, then the high-pass.
struct Stage {
    double b0, b1, b2, a1, a2;

    double Next(double x, double* state) const {
        const double y = b0 * x + state[0];
        state[0] = b1 * x - a1 * y + state[1];
        state[1] = b2 * x - a2 * y;
        return y;
    }
};
constexpr Stage kHead = {1.53512486, -2.69169619, 1.19839281, -1.69065929, 0.73248077};
constexpr Stage kHighPass = {1, -2, 1, -1.99004745, 0.99007225};

constexpr double kAbsoluteGate = -70;
constexpr double kRelativeGate = -10;

double LoudnessOf(double energy) {
    return -0.691 + 10 * std::log10(std::max(energy, 1e-12));
}

// The loudness of the blocks above a gate together.
double GatedLoudness(const std::vector<double>& blocks, double gate) {
    double sum = 0;
    std::size_t count = 0;
    for (const double energy : blocks) {
        if (LoudnessOf(energy) < gate) continue;
        sum += energy;
        ++count;
    }
    return count == 0 ? kAbsoluteGate : LoudnessOf(sum / static_cast<double>(count));
}

}  // namespace

Loudness::Loudness() {
    // A windowed sinc, cut into the parts that give each point between two samples.
    for (std::size_t phase = 0; phase < kPhases; ++phase) {
        double sum = 0;
        std::array<double, kTaps> taps{};
        for (std::size_t tap = 0; tap < kTaps; ++tap) {
            const double x = static_cast<double>(tap) - kTaps / 2.0 +
                             static_cast<double>(phase) / static_cast<double>(kPhases);
            const double turn = std::numbers::pi * x;
            const double window = std::pow(std::cos(turn / (kTaps + 1)), 2);
            taps[tap] = (x == 0 ? 1 : std::sin(turn) / turn) * window;
            sum += taps[tap];
        }
        for (std::size_t tap = 0; tap < kTaps; ++tap) {
            phases_[phase][tap] = static_cast<float>(taps[tap] / sum);
        }
    }
}

double Loudness::Weighted(Channel& channel, float sample) const {
    return kHighPass.Next(kHead.Next(sample, channel.filters.data()), &channel.filters[2]);
}

double Loudness::Peak(Channel& channel, float sample) const {
    channel.past[at_] = channel.past[at_ + kTaps] = sample;
    const auto past = std::span(channel.past).subspan(at_ + 1, kTaps);
    float peak = 0;
    for (const auto& phase : phases_) {
        peak = std::max(
            peak, std::abs(std::inner_product(past.begin(), past.end(), phase.begin(), 0.0F)));
    }
    return peak;
}

void Loudness::Add(std::span<const Frame> frames) {
    for (const Frame& frame : frames) {
        const double left = Weighted(channels_[0], frame.left);
        const double right = Weighted(channels_[1], frame.right);
        step_energy_ += left * left + right * right;
        peak_ = std::max({peak_, Peak(channels_[0], frame.left), Peak(channels_[1], frame.right)});
        at_ = (at_ + 1) % kTaps;
        if (++in_step_ < kStep) continue;
        steps_.push_back(step_energy_ / kStep);
        step_energy_ = 0;
        in_step_ = 0;
    }
}

double Loudness::Integrated() const {
    std::vector<double> blocks;
    for (std::size_t k = 0; k + kSteps <= steps_.size(); ++k) {
        const auto first = steps_.begin() + static_cast<std::ptrdiff_t>(k);
        blocks.push_back(std::accumulate(first, first + kSteps, 0.0) / kSteps);
    }
    return GatedLoudness(blocks, GatedLoudness(blocks, kAbsoluteGate) + kRelativeGate);
}

double Loudness::TruePeak() const {
    return 20 * std::log10(std::max(peak_, 1e-12));
}

}  // namespace Kest
