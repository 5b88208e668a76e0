#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "music/frame.h"

namespace Kest {

// How loud a piece is as a whole and how high it peaks, as broadcasters measure it. (ITU-R
// BS.1770-4, "Algorithms to measure audio programme loudness and true-peak audio level", 2015.)
class Loudness {
public:
    Loudness();
    void Add(std::span<const Frame> frames);

    // In LUFS, of what stands above the gates; -70 when nothing does.
    double Integrated() const;
    // Of the signal between its samples, in dB over full scale.
    double TruePeak() const;

private:
    static constexpr std::size_t kStep = 4800;  // samples between the starts of blocks
    static constexpr std::size_t kSteps = 4;    // of a block
    static constexpr std::size_t kTaps = 32;
    static constexpr std::size_t kPhases = 4;  // points a sample

    struct Channel {
        std::array<double, 4> filters{};
        std::array<float, 2 * kTaps>
            past{};  // the last kTaps samples, twice, so that they are in line
    };

    double Weighted(Channel& channel, float sample) const;
    double Peak(Channel& channel, float sample) const;

    std::array<std::array<float, kTaps>, kPhases> phases_{};
    std::array<Channel, 2> channels_;
    std::size_t at_ = 0;       // in the past
    std::size_t in_step_ = 0;  // samples
    double step_energy_ = 0;
    std::vector<double> steps_;  // mean squares of both channels together
    double peak_ = 0;
};

}  // namespace Kest
