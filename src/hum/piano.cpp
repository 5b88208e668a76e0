#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "flush_denormals.h"
#include "instrument_tables.h"

// A piano string by string: each note a sum of slightly stretched partials that fall in two stages,
// with the knock of the hammer before them.
namespace hum {
namespace {

constexpr double kRate = 48000;
constexpr double kTau = 2 * std::numbers::pi;
constexpr double kHighestPartial = 10500;
constexpr double kLevel = 0.11;  // RMS of the first quarter of a second
constexpr std::size_t kLanes = 16;

struct Touch {
    double slope;      // of the partials' amplitudes
    double colour_hz;  // where the hammer's softness begins to take away
    double colour_slope;
    double hammer_hz;
    double hammer_level;
    double attack_ms;
    std::uint32_t seed;
};

constexpr Touch kSoft = {1.35, 1700, 2.4, 800, 0.07, 2.8, 11};
constexpr Touch kHard = {0.95, 3400, 2.0, 1400, 0.16, 1.2, 17};

// Four floats that every processor handles at once. The compilers have such types though the
// standard does not, and make loops over arrays of floats fast only when they are in the mood.
using Four [[gnu::vector_size(16)]] = float;
constexpr std::size_t kFours = kLanes / 4;

// Oscillators side by side: each a point that turns and shrinks with every sample.
struct Bank {
    Four re[kFours] = {};
    Four im[kFours] = {};
    Four turn_re[kFours] = {};
    Four turn_im[kFours] = {};
    std::size_t used = 0;
    double samples = 0;  // until the longest is 80 dB down

    void Add(double hz, double level, double phase, double seconds) {
        const double shrink = std::exp(-1 / (seconds * kRate));
        const auto set = [at = used](Four* lanes, double value) {
            lanes[at / 4][at % 4] = static_cast<float>(value);
        };
        set(re, level * std::cos(phase));
        set(im, level * std::sin(phase));
        set(turn_re, shrink * std::cos(kTau * hz / kRate));
        set(turn_im, shrink * std::sin(kTau * hz / kRate));
        samples = std::max(samples, seconds * kRate * 9.2103);
        ++used;
    }

    void Play(std::span<float> to) {
        const auto end =
            static_cast<std::size_t>(std::min(samples, static_cast<double>(to.size())));
        for (float& sum : to.first(end)) {
            for (std::size_t k = 0; k < kFours; ++k) {
                const Four turned = re[k] * turn_re[k] - im[k] * turn_im[k];
                im[k] = re[k] * turn_im[k] + im[k] * turn_re[k];
                re[k] = turned;
            }
            const Four four = (re[0] + re[2]) + (re[1] + re[3]);
            sum += (four[0] + four[2]) + (four[1] + four[3]);
        }
        *this = Bank();
    }
};
static_assert(kFours == 4);

double Stretch(double note) {
    return note < 40 ? 7e-5 * std::exp2((40 - note) / 14) : 3.2e-5 * std::exp2((note - 36) / 7.2);
}

double PartialLevel(double k, double f, double note, const Touch& touch) {
    const double colour = touch.colour_hz * std::exp2((note - 60) / 40);
    const double level = (std::fabs(std::sin(std::numbers::pi * k / 7.3)) + 0.05) *
                         std::pow(k, -touch.slope) / (1 + std::pow(f / colour, touch.colour_slope));
    if (k > 1 || note >= 45) return level;
    return level * std::max(0.35, 1 - (45 - note) / 32);
}

void AddPartials(std::vector<float>& to, double note, const Touch& touch) {
    const double f0 = 440 * std::exp2((note - 69) / 12);
    const double b = Stretch(note);
    WhiteNoise chance(touch.seed * 131 + static_cast<std::uint32_t>(note));
    Bank bank;
    for (double k = 1;; ++k) {
        const double f = k * f0 * std::sqrt(1 + b * k * k) / std::sqrt(1 + b);
        if (f >= kHighestPartial) break;
        const double level = PartialLevel(k, f, note, touch);
        const double seconds =
            9.5 * std::exp2(-(note - 40) / 17) / (1 + 0.18 * (k - 1) + f / 8700) / 6.9;
        const double phase = -std::numbers::pi / 2 + 0.25 * chance();
        const double beating_hz = 0.3 + 0.2 * chance();
        bank.Add(f, 0.78 * level, phase, seconds * 0.42);
        bank.Add(f + beating_hz, 0.22 * level, phase, seconds * 1.7);
        if (bank.used == kLanes) bank.Play(to);
    }
    bank.Play(to);
}

void AddHammer(std::vector<float>& to, double note, const Touch& touch, double tone) {
    WhiteNoise noise(touch.seed * 977 + static_cast<std::uint32_t>(note));
    const double hz = touch.hammer_hz * std::exp2((note - 60) / 36);
    const double step = 1 - std::exp(-kTau * hz / kRate);
    double first = 0, second = 0;
    const std::size_t frames = std::min<std::size_t>(to.size(), 2400);
    std::vector<double> knock(frames);
    double loudest = 1e-9;
    for (std::size_t k = 0; k < frames; ++k) {
        first += step * (noise() - first);
        second += step * (first - second);
        const double t = static_cast<double>(k) / 48;
        knock[k] = second * std::exp(-t / 11) * (1 - static_cast<double>(k) / 2400.0);
        loudest = std::max(loudest, std::fabs(knock[k]));
    }
    // Its level is measured against the loudest of the tone.
    for (std::size_t k = 0; k < frames; ++k) {
        to[k] += static_cast<float>(knock[k] * touch.hammer_level * tone / loudest);
    }
}

void ShapeEnds(std::vector<float>& frames, const Touch& touch) {
    const double attack = touch.attack_ms * kRate / 1000;
    for (std::size_t k = 0; static_cast<double>(k) < attack && k < frames.size(); ++k) {
        const double turn = std::numbers::pi * static_cast<double>(k) / attack;
        frames[k] *= static_cast<float>(0.5 - 0.5 * std::cos(turn));
    }
    const std::size_t sixth = frames.size() / 6;
    for (std::size_t k = 0; k < sixth; ++k) {
        frames[frames.size() - 1 - k] *= static_cast<float>(k) / static_cast<float>(sixth);
    }
}

double Loudest(const std::vector<float>& frames) {
    float loudest = 1e-9f;
    for (const float frame : frames) loudest = std::max(loudest, std::fabs(frame));
    return static_cast<double>(loudest);
}

Instruments::Layer MakeLayer(double note, const Touch& touch) {
    const double seconds = std::clamp(5.6 * std::exp2(-(note - 36) / 26), 1.0, 6.5);
    std::vector<float> frames(static_cast<std::size_t>(seconds * kRate));
    AddPartials(frames, note, touch);
    AddHammer(frames, note, touch, Loudest(frames));
    ShapeEnds(frames, touch);
    double power = 0;
    constexpr std::size_t kMeasured = 12000;
    for (std::size_t k = 0; k < kMeasured; ++k) {
        power += static_cast<double>(frames[k]) * static_cast<double>(frames[k]);
    }
    const double gain = kLevel / std::sqrt(power / kMeasured);
    const double loudest = Loudest(frames);
    Instruments::Layer layer;
    layer.gain = static_cast<float>(gain * loudest / 32767);
    layer.frames.reserve(frames.size());
    for (const float frame : frames) {
        const double unit = static_cast<double>(frame) / loudest * 32767;
        layer.frames.push_back(static_cast<std::int16_t>(std::lround(unit)));
    }
    return layer;
}

}  // namespace

std::array<Instruments::Anchor, kPianoAnchorCount> MakePiano() {
    const FlushDenormals flush;
    std::array<Instruments::Anchor, kPianoAnchorCount> piano;
    for (std::int32_t k = 0; k < kPianoAnchorCount; ++k) {
        const double note = kFirstAnchor + kAnchorStep * k;
        piano[static_cast<std::size_t>(k)] = {MakeLayer(note, kSoft), MakeLayer(note, kHard)};
    }
    return piano;
}

Instruments MakeInstruments() {
    return {MakeKit(), MakePiano()};
}

}  // namespace hum
