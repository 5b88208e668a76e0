#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "builtin_calls.h"
#include "hum/machine.h"

// The built-ins that sound is made of, as functions of their arguments and their state. Both
// machines call these same functions, the fast one inline.
namespace hum::formula {

inline constexpr float kRate = static_cast<float>(kSampleRate);

// Sine of a part of a turn, -0.25 to 0.25, by a series that is good to a float's last bits: quick,
// and the same on every system.
inline double SineOfQuarter(double turn) {
    const double z = turn * (std::numbers::pi * 2);
    const double q = z * z;
    const double tail =
        q * (2.7557319223985893e-06 + q * (-2.5052108385441720e-08 + q * 1.6059043836821613e-10));
    return z * (1.0 + q * (-1.6666666666666666e-01 +
                           q * (8.3333333333333333e-03 + q * (-1.9841269841269841e-04 + tail))));
}

inline double SineOfTurn(double turn) {
    const double x = turn - std::floor(turn + 0.5);
    return SineOfQuarter(x > 0.25 ? 0.5 - x : (x < -0.25 ? -0.5 - x : x));
}

// 1 - exp(-x) for an x of 0 or more; what filters and envelopes want is mostly near 0.
inline double FallenAfter(double x) {
    if (x > 0.125) return 1.0 - std::exp(-x);
    return x * (1.0 - x * (1.0 / 2 - x * (1.0 / 6 - x * (1.0 / 24 - x * (1.0 / 120 - x / 720)))));
}

inline float HeldCutoff(float cutoff_hz) {
    if (!(cutoff_hz > 1.0f)) return 1.0f;
    return cutoff_hz < 23520.0f ? cutoff_hz : 23520.0f;
}

// tan(pi * cutoff / rate)
inline float Prewarped(float cutoff_hz) {
    const double half_turn = static_cast<double>(HeldCutoff(cutoff_hz)) * (0.5 / kSampleRate);
    return static_cast<float>(SineOfQuarter(half_turn) / SineOfQuarter(0.25 - half_turn));
}

// 1 - exp(-2 pi cutoff / rate)
inline float OnePoleStep(float cutoff_hz) {
    const double turns = static_cast<double>(HeldCutoff(cutoff_hz)) / kSampleRate;
    return static_cast<float>(FallenAfter(2.0 * std::numbers::pi * turns));
}

inline float Wrap01(float x) {
    // What a phase mostly needs takes no rounding function.
    if (x >= 0.0f && x < 1.0f) return x;
    if (x >= 1.0f && x < 2.0f) return x - 1.0f;
    const float wrapped = x - std::floor(x);
    return wrapped < 1.0f ? wrapped : 0.0f;
}

inline void Advance(float freq, State phase, float from) {
    phase.Set(0, Wrap01(from + freq / kRate));
}

// The part of a turn that one sample takes, for the corrections of a step.
inline float TurnStep(float freq) {
    return std::min(std::fabs(freq) / kRate, 0.5f);
}

// What takes the aliases out of a step at t = 0.
inline float StepCorrection(float t, float d) {
    if (t < d) {
        const float u = t / d;
        return 2.0f * u - u * u - 1.0f;
    }
    if (t > 1.0f - d) {
        const float u = (t - 1.0f) / d;
        return u * u + 2.0f * u + 1.0f;
    }
    return 0.0f;
}

inline float Phasor(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    return p;
}

inline float Sine(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    return static_cast<float>(SineOfTurn(static_cast<double>(p)));
}

inline float Saw(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    return 2.0f * p - 1.0f;
}

inline float BlepSaw(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    return 2.0f * p - 1.0f - StepCorrection(p, TurnStep(freq));
}

inline float Square(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    const float d = TurnStep(freq);
    return (p < 0.5f ? 1.0f : -1.0f) + StepCorrection(p, d) - StepCorrection(Wrap01(p + 0.5f), d);
}

inline float Triangle(float freq, State phase) {
    const float p = phase[0];
    Advance(freq, phase, p);
    if (p < 0.25f) return 4.0f * p;
    return p < 0.75f ? 2.0f - 4.0f * p : 4.0f * p - 4.0f;
}

inline float Lpf1(float x, State s, float cutoff_hz) {
    const float y = s[0] + OnePoleStep(cutoff_hz) * (x - s[0]);
    s.Set(0, y);
    return y;
}

inline float Hpf1(float x, State s, float cutoff_hz) {
    return x - Lpf1(x, s, cutoff_hz);
}

inline float OnePole(State s, float x, float a) {
    const float y = s[0] + a * (x - s[0]);
    s.Set(0, y);
    return y;
}

inline float DcBlock(float x, State x1, State y1) {
    const float y = x - x1[0] + 0.9975f * y1[0];
    x1.Set(0, x);
    y1.Set(0, y);
    return y;
}

struct SvfBands {
    float lp, bp, hp;
};

inline SvfBands SvfStep(float x, State s1, State s2, float cutoff_hz, float q) {
    const float g = Prewarped(cutoff_hz);
    const float held_q = q > 0.5f ? std::min(q, 100.0f) : 0.5f;
    const float k = 1.0f / held_q;
    const float a1 = 1.0f / (1.0f + g * (g + k));
    const float a2 = g * a1;
    const float a3 = g * a2;
    const float old1 = s1[0];
    const float old2 = s2[0];
    const float v3 = x - old2;
    const float v1 = a1 * old1 + a2 * v3;
    const float v2 = old2 + a2 * old1 + a3 * v3;
    s1.Set(0, 2.0f * v1 - old1);
    s2.Set(0, 2.0f * v2 - old2);
    return {v2, k * v1, x - k * v1 - v2};
}

inline float SvfLowPass(float x, State s1, State s2, float cutoff_hz, float q) {
    return SvfStep(x, s1, s2, cutoff_hz, q).lp;
}
inline float SvfBandPass(float x, State s1, State s2, float cutoff_hz, float q) {
    return SvfStep(x, s1, s2, cutoff_hz, q).bp;
}
inline float SvfHighPass(float x, State s1, State s2, float cutoff_hz, float q) {
    return SvfStep(x, s1, s2, cutoff_hz, q).hp;
}

inline float Biquad(float x, State z1, State z2, float b0, float b1, float b2, float a1, float a2) {
    const float y = b0 * x + z1[0];
    z1.Set(0, b1 * x - a1 * y + z2[0]);
    z2.Set(0, b2 * x - a2 * y);
    return y;
}

// 1 - exp(-6.907755 / (seconds * rate)): gets within a thousandth in that time.
inline float EnvelopeStep(float seconds) {
    if (!(seconds > 0.0f)) return 1.0f;
    return static_cast<float>(FallenAfter(6.907755 / (static_cast<double>(seconds) * kSampleRate)));
}

inline float Envelope(State s, float rise, float fall, std::int32_t gate) {
    const float target = gate != 0 ? 1.0f : 0.0f;
    const float step = EnvelopeStep(gate != 0 ? rise : fall);
    // At once means the target itself, whatever the state was.
    const float y = step == 1.0f ? target : s[0] + step * (target - s[0]);
    s.Set(0, y);
    return y;
}

inline float NoteToHertz(float note) {
    return static_cast<float>(440.0 * std::exp2((static_cast<double>(note) - 69.0) / 12.0));
}

inline std::uint32_t Draw(Runtime& runtime) {
    std::uint32_t x = runtime.random;
    x ^= x << 13;
    x ^= x >> 17;
    x ^= x << 5;
    runtime.random = x;
    return x;
}

inline float Random(Runtime& runtime) {
    return static_cast<float>(Draw(runtime) >> 8) / 16777216.0f;
}
inline float Noise(Runtime& runtime) {
    return static_cast<float>(Draw(runtime) >> 8) / 8388608.0f - 1.0f;
}

// What std::floor gives, without a call where no wider instructions are to be had.
inline float Floor(float x) {
    if (!(std::fabs(x) < 8388608.0f)) return x;
    const auto whole = static_cast<float>(static_cast<std::int32_t>(x));
    if (whole == x) return x;  // keeps the sign of a zero
    return whole > x ? whole - 1.0f : whole;
}

// The place in a ring of n words that idx names; none when a pointer leaves memory.
inline std::uint32_t* RingWord(Runtime& runtime, Address buffer, std::int32_t n, Address index_at) {
    const auto begin = static_cast<std::uint32_t>(buffer.word);
    const auto at = static_cast<std::uint32_t>(index_at.word);
    if (n < 1) {
        runtime.Fail(Trouble::Delay);
    } else if (!runtime.InMemory(begin, static_cast<std::uint32_t>(n))) {
        runtime.Fail(Trouble::BuiltinPointer, begin);
    } else if (!runtime.InMemory(at)) {
        runtime.Fail(Trouble::BuiltinPointer, at);
    } else {
        auto index = static_cast<std::int32_t>(runtime.memory[at]);
        if (index < 0 || index >= n) index = 0;
        runtime.memory[at] = static_cast<std::uint32_t>(index + 1 < n ? index + 1 : 0);
        return runtime.memory + begin + index;
    }
    return nullptr;
}

inline float Comb(Runtime& runtime, float x, Address buffer, std::int32_t n, Address index,
                  float feedback) {
    std::uint32_t* word = RingWord(runtime, buffer, n, index);
    if (word == nullptr) return 0.0f;
    const float d = std::bit_cast<float>(*word);
    *word = FloatWord(x + feedback * d);
    return d;
}

inline float AllPass(Runtime& runtime, float x, Address buffer, std::int32_t n, Address index,
                     float feedback) {
    std::uint32_t* word = RingWord(runtime, buffer, n, index);
    if (word == nullptr) return 0.0f;
    const float d = std::bit_cast<float>(*word);
    const float v = x + feedback * d;
    *word = FloatWord(v);
    return d - feedback * v;
}

inline float Min(float a, float b) {
    return b < a ? b : a;
}
inline float Max(float a, float b) {
    return b > a ? b : a;
}
inline float Clamp(float x, float low, float high) {
    const float below = x > high ? high : x;
    return below < low ? low : below;
}
inline float Lerp(float a, float b, float t) {
    return a + (b - a) * t;
}
inline float HeldUnit(float x) {
    return Clamp(x, -1.0f, 1.0f);
}
inline float SoftClip(float x) {
    const float y = Clamp(x, -1.5f, 1.5f);
    return y - 4.0f / 27.0f * y * y * y;
}

}  // namespace hum::formula
