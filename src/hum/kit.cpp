#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "instrument_tables.h"

// The eight sounds of the drum kit, each a recipe of decaying tones and noise. In all of them t is
// in milliseconds.
namespace hum {
namespace {

constexpr double kRate = 48000;
constexpr double kTau = 2 * std::numbers::pi;

double Fall(double t, double ms) {
    return std::exp(-t / ms);
}

// Two poles and two zeros of a usual shape.
class Filter {
public:
    enum class Shape : std::uint8_t { LowPass, HighPass, BandPass };

    Filter(Shape shape, double hz, double q) : shape_(shape) {
        const double g = std::tan(std::numbers::pi * hz / kRate);
        k_ = 1 / q;
        a1_ = 1 / (1 + g * (g + k_));
        a2_ = g * a1_;
        a3_ = g * a2_;
    }

    double operator()(double x) {
        const double v3 = x - s2_;
        const double v1 = a1_ * s1_ + a2_ * v3;
        const double v2 = s2_ + a2_ * s1_ + a3_ * v3;
        s1_ = 2 * v1 - s1_;
        s2_ = 2 * v2 - s2_;
        if (shape_ == Shape::LowPass) return v2;
        return shape_ == Shape::BandPass ? k_ * v1 : x - k_ * v1 - v2;
    }

private:
    Shape shape_;
    double k_, a1_, a2_, a3_;
    double s1_ = 0, s2_ = 0;
};

constexpr auto kLow = Filter::Shape::LowPass;
constexpr auto kHigh = Filter::Shape::HighPass;
constexpr auto kBand = Filter::Shape::BandPass;

// A sine whose frequency may change from sample to sample.
class Tone {
public:
    double operator()(double hz) {
        const double value = std::sin(kTau * phase_);
        phase_ += hz / kRate;
        phase_ -= std::floor(phase_);
        return value;
    }

private:
    double phase_ = 0;
};

template <class Voice>
std::vector<float> Make(double ms, double peak, Voice voice) {
    const auto frames = static_cast<std::size_t>(ms * kRate / 1000);
    std::vector<float> made(frames);
    double loudest = 1e-9;
    std::vector<double> raw(frames);
    for (std::size_t k = 0; k < frames; ++k) {
        raw[k] = voice(static_cast<double>(k) * 1000 / kRate);
        loudest = std::max(loudest, std::fabs(raw[k]));
    }
    // The last part runs out in a straight line, so that no sound ends in a click.
    const double fade = std::min(static_cast<double>(frames) / 8, 960.0);
    for (std::size_t k = 0; k < frames; ++k) {
        const double left = static_cast<double>(frames - k) / fade;
        made[k] = static_cast<float>(raw[k] * peak / loudest * std::min(left, 1.0));
    }
    return made;
}

std::vector<float> Kick() {
    Tone tone;
    WhiteNoise noise(101);
    Filter click(kLow, 3500, 0.7);
    return Make(450, 0.95, [&](double t) {
        const double body = tone(46 + 110 * Fall(t, 22) + 320 * Fall(t, 3.5)) * Fall(t, 130) *
                            (1 - Fall(t, 0.6)) * 1.15;
        return std::tanh(1.2 * (body + 0.22 * click(noise()) * Fall(t, 2.2)));
    });
}

std::vector<float> Snare() {
    Tone low, high;
    WhiteNoise noise(202);
    Filter bright(kHigh, 1200, 0.7);
    Filter body(kBand, 2600, 0.7);
    return Make(300, 0.80, [&](double t) {
        const double drum =
            (0.6 * low(182 + 60 * Fall(t, 12)) + 0.35 * high(331 + 70 * Fall(t, 10))) * Fall(t, 55);
        const double n = noise();
        const double wires =
            (0.6 * bright(n) + body(n)) * (0.75 * Fall(t, 75) + 0.25 * Fall(t, 160));
        return std::tanh(drum + wires);
    });
}

// Closed and open hat alike: metal of six squares that no interval joins, and noise.
std::vector<float> Hat(double ms, double peak, double high_pass_hz, std::uint32_t seed,
                       double short_level, double short_ms, double long_level, double long_ms) {
    constexpr double kSquares[] = {2052, 3071, 3397, 4453, 5413, 6697};
    WhiteNoise noise(seed);
    Filter first(kHigh, high_pass_hz, 0.7);
    Filter second(kHigh, high_pass_hz, 0.7);
    Filter soft(kLow, 12000, 0.6);
    return Make(ms, peak, [&](double t) {
        double metal = 0;
        for (const double hz : kSquares) {
            const double turns = t * hz / 1000;
            metal += turns - std::floor(turns) < 0.5 ? 1.0 / 6 : -1.0 / 6;
        }
        const double x = soft(second(first(0.6 * metal + 0.5 * noise())));
        return x * (short_level * Fall(t, short_ms) + long_level * Fall(t, long_ms));
    });
}

std::vector<float> Tom() {
    Tone first, octave;
    WhiteNoise noise(505);
    Filter skin(kLow, 2000, 0.7);
    return Make(500, 0.85, [&](double t) {
        const double hz = 98 + 58 * Fall(t, 45);
        const double drum = first(hz) + 0.18 * octave(2 * hz) * Fall(t, 50);
        return std::tanh(drum * Fall(t, 170) * (1 - Fall(t, 0.6)) +
                         0.25 * skin(noise()) * Fall(t, 12));
    });
}

std::vector<float> Clap() {
    constexpr double kBursts[] = {0, 10.5, 21.5};
    constexpr double kTail = 31;
    WhiteNoise noise(606);
    Filter band(kBand, 1250, 1.2);
    return Make(300, 0.70, [&](double t) {
        double level = t >= kTail ? Fall(t - kTail, 70) : 0;
        for (const double start : kBursts) {
            if (t >= start && t < kTail) level = Fall(t - start, 4.5);
        }
        return band(noise()) * level;
    });
}

std::vector<float> Rim() {
    Tone high, low;
    WhiteNoise noise(707);
    return Make(100, 0.60, [&](double t) {
        return std::tanh(0.5 * high(1720) * Fall(t, 6) + 0.6 * low(818) * Fall(t, 11) +
                         0.3 * noise() * Fall(t, 1.2));
    });
}

std::vector<float> Ride() {
    constexpr double kSines[] = {411, 687, 1021, 1583, 2417, 3349, 4657, 6203};
    constexpr double kBend = 2.2;
    Filter high(kHigh, 1800, 0.7);
    const auto sine = [](double t, double hz) { return std::sin(kTau * hz * t / 1000); };
    return Make(1500, 0.45, [&](double t) {
        double metal = 0;
        for (std::size_t k = 0; k < 8; ++k) {
            const double bend = kBend * sine(t, kSines[(k + 3) % 8]);
            metal += std::sin(kTau * kSines[k] * t / 1000 + bend) / 8;
        }
        const double bell = 0.08 * sine(t, 2794) + 0.04 * sine(t, 4433);
        return high(metal) * (0.55 * Fall(t, 80) + 0.45 * Fall(t, 550)) + bell * Fall(t, 250);
    });
}

}  // namespace

std::array<std::vector<float>, kKitSoundCount> MakeKit() {
    return {Kick(),
            Snare(),
            Hat(120, 0.50, 6500, 303, 0.9, 22, 0.1, 88),
            Hat(500, 0.50, 6000, 404, 0.8, 160, 0.2, 640),
            Tom(),
            Clap(),
            Rim(),
            Ride()};
}

}  // namespace hum
