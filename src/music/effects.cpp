#include "music/effects.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "music/frame.h"
#include "music/noise.h"

namespace Kest {
namespace {

enum class Shape : std::uint8_t { Sine, Triangle, Noise };

// What a layer sounds like before it has an envelope.
struct Tone {
    Shape shape;
    float hz;           // of noise, the middle of its band
    float to_hz = 0;    // reached in a straight line; 0 to stay
    float over_ms = 0;  // and held from then on
    float q = 0;        // of noise
};

constexpr Tone Sine(float hz) {
    return {Shape::Sine, hz};
}
constexpr Tone Sine(float hz, float to_hz, float over_ms) {
    return {Shape::Sine, hz, to_hz, over_ms};
}
constexpr Tone Triangle(float hz) {
    return {Shape::Triangle, hz};
}
constexpr Tone Triangle(float hz, float to_hz, float over_ms) {
    return {Shape::Triangle, hz, to_hz, over_ms};
}
constexpr Tone Noise(float hz, float q) {
    return {Shape::Noise, hz, 0, 0, q};
}

struct Layer {
    Effect effect;
    Tone tone;
    float start_ms;
    float attack_ms;
    float fall_ms;   // to -60 dB
    float level_db;  // of the peak
};

constexpr Layer kLayers[] = {
    {Effect::Open, Sine(587), 0, 3, 260, -15},
    {Effect::Open, Sine(880), 70, 3, 320, -16},
    {Effect::Open, Sine(1175), 70, 2, 160, -28},
    {Effect::Menu, Sine(440), 0, 3, 180, -17},
    {Effect::Menu, Sine(659), 45, 3, 220, -18},
    {Effect::Move, Triangle(880), 0, 1, 35, -26},
    {Effect::Back, Sine(659), 0, 3, 160, -19},
    {Effect::Back, Sine(440), 50, 3, 220, -18},
    {Effect::Click, Noise(2200, 1.2F), 0, 0.4F, 16, -20},
    {Effect::Click, Sine(320, 180, 8), 0, 0.5F, 30, -24},
    {Effect::Key, Noise(1700, 1.5F), 0, 0.4F, 14, -24},
    {Effect::Key, Sine(210, 140, 8), 0, 0.5F, 26, -28},
    {Effect::NewLine, Noise(1300, 1.2F), 0, 0.4F, 20, -23},
    {Effect::NewLine, Sine(150, 95, 14), 0, 0.6F, 60, -22},
    {Effect::NewLine, Noise(2600, 2), 28, 0.4F, 12, -30},
    {Effect::Step, Sine(740), 0, 1, 70, -22},
    {Effect::Step, Noise(1800, 1.5F), 0, 0.4F, 10, -28},
    {Effect::Run, Sine(294, 587, 90), 0, 4, 240, -17},
    {Effect::Run, Triangle(587), 90, 4, 200, -24},
    {Effect::Pause, Sine(587, 392, 80), 0, 3, 180, -19},
    {Effect::Pass, Sine(587), 0, 3, 220, -17},
    {Effect::Pass, Sine(740), 80, 3, 220, -17},
    {Effect::Pass, Sine(880), 160, 3, 420, -16},
    {Effect::Fail, Triangle(294, 277, 120), 0, 4, 260, -17},
    {Effect::Fail, Triangle(220, 208, 160), 110, 4, 360, -17},
    {Effect::Achievement, Sine(587), 0, 4, 500, -18},
    {Effect::Achievement, Sine(740), 90, 4, 500, -18},
    {Effect::Achievement, Sine(880), 180, 4, 600, -18},
    {Effect::Achievement, Sine(1175), 270, 4, 1100, -16},
    {Effect::Achievement, Sine(2349), 270, 3, 500, -32},
    {Effect::Achievement, Sine(440), 270, 10, 1200, -22},
    {Effect::Error, Triangle(196, 185, 90), 0, 3, 170, -16},
    {Effect::Error, Triangle(185), 120, 3, 220, -16},
    {Effect::Alert, Sine(523), 0, 3, 120, -19},
    {Effect::Alert, Sine(523), 110, 3, 160, -19},
    {Effect::Closed, Sine(294), 0, 5, 900, -19},
    {Effect::Closed, Sine(440), 60, 5, 900, -19},
    {Effect::Closed, Sine(587), 120, 5, 900, -18},
    {Effect::Closed, Sine(740), 220, 5, 1100, -17},
    {Effect::Closed, Sine(880), 320, 5, 1400, -16},
    {Effect::Closed, Sine(1760), 320, 4, 600, -31},
    {Effect::NotClosed, Triangle(349), 0, 4, 240, -18},
    {Effect::NotClosed, Triangle(311), 120, 4, 240, -18},
    {Effect::NotClosed, Triangle(233, 220, 200), 240, 5, 520, -17},
    {Effect::Slot, Noise(900, 1), 0, 0.5F, 24, -22},
    {Effect::Slot, Sine(392), 12, 2, 110, -22},
    {Effect::Slot, Noise(2400, 2), 60, 0.4F, 14, -28},
    {Effect::Leave, Sine(880), 0, 3, 200, -19},
    {Effect::Leave, Sine(587), 70, 3, 240, -18},
    {Effect::Leave, Sine(440), 140, 3, 360, -18},
    {Effect::Hint, Sine(988), 0, 6, 420, -22},
    {Effect::Hint, Sine(1319), 120, 6, 520, -23},
    {Effect::Toggle, Noise(1500, 1.4F), 0, 0.4F, 12, -24},
    {Effect::Toggle, Sine(523), 4, 1, 60, -24},
    {Effect::TestTone, Sine(440), 0, 20, 1500, -18},
    {Effect::TestTone, Sine(660), 0, 20, 1500, -26},
    {Effect::Breakpoint, Sine(330), 0, 1, 90, -21},
    {Effect::Breakpoint, Noise(1200, 1.5F), 0, 0.4F, 14, -26},
    {Effect::Reset, Sine(740, 370, 120), 0, 3, 170, -20},
    {Effect::Save, Noise(700, 0.8F), 0, 2, 60, -26},
    {Effect::Save, Noise(1100, 0.8F), 70, 2, 50, -26},
    {Effect::Save, Sine(587), 140, 3, 140, -23},
    {Effect::Page, Noise(3000, 0.7F), 0, 18, 110, -27},
};

struct Volume {
    Effect effect;
    float volume;
};
constexpr Volume kVolumes[] = {
    {Effect::Click, 0.6F},       {Effect::Key, 0.6F},    {Effect::NewLine, 0.8F},
    {Effect::Achievement, 0.8F}, {Effect::Toggle, 0.6F},
};

constexpr double kTau = 2 * std::numbers::pi;

double TriangleAt(double phase) {
    return 1 - 4 * std::abs(phase - std::floor(phase) - 0.5);
}

// Sine or triangle, from phase 0, where a sine begins.
void Oscillate(const Tone& tone, std::span<float> samples) {
    const double glide = tone.over_ms > 0 ? SamplesOf(tone.over_ms) : 0;
    double phase = 0;
    for (std::size_t k = 0; k < samples.size(); ++k) {
        const bool sine = tone.shape == Shape::Sine;
        samples[k] = static_cast<float>(sine ? std::sin(kTau * phase) : TriangleAt(phase + 0.25));
        const double moved =
            glide > 0 ? std::min(static_cast<double>(k) / glide, 1.0) * (tone.to_hz - tone.hz) : 0;
        phase += (tone.hz + moved) / kSampleRate;
    }
}

// The band-pass output of the zero-delay state-variable filter, after A. Simper, "Linear
// Trapezoidal Integrated State Variable Filter".
void FilterNoise(const Tone& tone, std::span<float> samples) {
    WhiteNoise noise;
    const double g = std::tan(kTau / 2 * tone.hz / kSampleRate);
    const double k = 1 / tone.q;
    const double a1 = 1 / (1 + g * (g + k));
    double s1 = 0;
    double s2 = 0;
    for (float& sample : samples) {
        const double v3 = noise.Next() - s2;
        const double v1 = a1 * (s1 + g * v3);
        const double v2 = s2 + g * v1;
        s1 = 2 * v1 - s1;
        s2 = 2 * v2 - s2;
        sample = static_cast<float>(v1);
    }
}

// A straight attack, then a fall by 60 dB.
void Shade(const Layer& layer, std::span<float> samples) {
    const int attack = std::max(SamplesOf(layer.attack_ms), 1);
    const double fall = SamplesOf(layer.fall_ms);
    for (std::size_t k = 0; k < samples.size(); ++k) {
        const double behind = static_cast<double>(k) - attack;
        const double gain =
            behind < 0 ? static_cast<double>(k) / attack : std::pow(10.0, -3 * behind / fall);
        samples[k] *= static_cast<float>(gain);
    }
}

void SetPeak(float level_db, std::span<float> samples) {
    float peak = 0;
    for (const float sample : samples) peak = std::max(peak, std::abs(sample));
    const float gain = peak > 0 ? std::pow(10.0F, level_db / 20) / peak : 0;
    for (float& sample : samples) sample *= gain;
}

void AddLayer(const Layer& layer, std::vector<float>& table) {
    std::vector<float> samples(
        static_cast<std::size_t>(SamplesOf(layer.attack_ms) + SamplesOf(layer.fall_ms)));
    if (layer.tone.shape == Shape::Noise) {
        FilterNoise(layer.tone, samples);
    } else {
        Oscillate(layer.tone, samples);
    }
    Shade(layer, samples);
    SetPeak(layer.level_db, samples);
    const auto start = static_cast<std::size_t>(SamplesOf(layer.start_ms));
    table.resize(std::max(table.size(), start + samples.size()));
    for (std::size_t k = 0; k < samples.size(); ++k) table[start + k] += samples[k];
}

}  // namespace

float EffectVolume(Effect effect) {
    const auto* const row = std::ranges::find(kVolumes, effect, &Volume::effect);
    return row != std::end(kVolumes) ? row->volume : 1.0F;
}

EffectTables::EffectTables() {
    for (const Layer& layer : kLayers) {
        AddLayer(layer, tables_[static_cast<std::size_t>(layer.effect)]);
    }
}

}  // namespace Kest
