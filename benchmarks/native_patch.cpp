#include "native_patch.h"

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

constexpr float kRate = 48000;
constexpr float kPi = 3.14159265f;
constexpr int kChord[16] = {45, 52, 57, 60, 64, 67, 71, 76, 41, 48, 53, 57, 60, 64, 69, 72};
constexpr int kKicks[16] = {1, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 0, 0, 0, 0};
constexpr int kSnares[16] = {0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 1};

float Correction(float t, float d) {
    if (t < d) {
        const float u = t / d;
        return 2 * u - u * u - 1;
    }
    if (t > 1 - d) {
        const float u = (t - 1) / d;
        return u * u + 2 * u + 1;
    }
    return 0;
}

void Advance(float& phase, float freq) {
    phase += freq / kRate;
    phase -= std::floor(phase);
}

float BlepSaw(float freq, float& phase) {
    const float value = 2 * phase - 1 - Correction(phase, std::min(std::fabs(freq) / kRate, 0.5f));
    Advance(phase, freq);
    return value;
}

float Sine(float freq, float& phase) {
    const float value = std::sin(2 * kPi * phase);
    Advance(phase, freq);
    return value;
}

float SvfLowPass(float x, float& s1, float& s2, float cutoff_hz, float q) {
    const float g = std::tan(kPi * std::clamp(cutoff_hz, 1.0f, 23520.0f) / kRate);
    const float k = 1 / std::clamp(q, 0.5f, 100.0f);
    const float a1 = 1 / (1 + g * (g + k));
    const float a2 = g * a1;
    const float a3 = g * a2;
    const float v3 = x - s2;
    const float v1 = a1 * s1 + a2 * v3;
    const float v2 = s2 + a2 * s1 + a3 * v3;
    s1 = 2 * v1 - s1;
    s2 = 2 * v2 - s2;
    return v2;
}

float LowPass(float x, float& s, float cutoff_hz) {
    s += (1 - std::exp(-2 * kPi * cutoff_hz / kRate)) * (x - s);
    return s;
}

float Envelope(float& s, float rise, float fall, bool gate) {
    const float step = 1 - std::exp(-6.907755f / ((gate ? rise : fall) * kRate));
    s += step * ((gate ? 1.0f : 0.0f) - s);
    return s;
}

float NoteToHertz(int note) {
    return 440 * std::exp2(static_cast<float>(note - 69) / 12);
}

float SoftClip(float x) {
    const float y = std::clamp(x, -1.5f, 1.5f);
    return y - 4.0f / 27 * y * y * y;
}

}  // namespace

NativePatch::NativePatch() {
    for (int i = 0; i < kVoices; ++i) voices_[i].pan = static_cast<float>(i) / 7;
}

float NativePatch::Noise() {
    random_ ^= random_ << 13;
    random_ ^= random_ >> 17;
    random_ ^= random_ << 5;
    return static_cast<float>(random_ >> 8) / 8388608 - 1;
}

void NativePatch::Pad(float& l, float& r) {
    if (pad_left_ == 0) {
        for (int i = 0; i < kVoices; ++i) {
            voices_[i].freq = NoteToHertz(kChord[(bars_ * 8 + i) % 16]);
        }
        ++bars_;
        pad_left_ = 96000;
    }
    --pad_left_;
    l = r = 0;
    for (Voice& o : voices_) {
        const float e = Envelope(o.env, 0.02f, 0.8f, pad_left_ > 24000);
        const float saw = BlepSaw(o.freq, o.phase);
        const float y = SvfLowPass(saw, o.s1, o.s2, 200 + 2800 * e, 1.4f) * e;
        l += y * (1 - o.pan);
        r += y * o.pan;
    }
    l *= 0.2f;
    r *= 0.2f;
}

void NativePatch::Drums(float& l, float& r) {
    if (drums_left_ == 0) {
        if (kKicks[step_ % 16] != 0) kick_ = sweep_ = 1;
        if (kSnares[step_ % 16] != 0) snare_ = 1;
        hat_ = step_ % 2 != 0 ? 0.5f : 0.3f;
        ++step_;
        drums_left_ = 6000;
    }
    --drums_left_;
    const float n = Noise();
    float y = Sine(48 + 140 * sweep_, phase_) * kick_;
    y += 0.4f * LowPass(n, body_, 5000) * snare_;
    const float h = 0.2f * (n - LowPass(n, bright_, 7000)) * hat_;
    sweep_ *= 0.9985f;
    kick_ *= 0.9998f;
    snare_ *= 0.9993f;
    hat_ *= 0.998f;
    l = y + 0.8f * h;
    r = y + h;
}

void NativePatch::Run(float* stereo, std::int32_t frames) {
    for (std::int32_t k = 0; k < frames; ++k) {
        float pad_l, pad_r, drums_l, drums_r;
        Pad(pad_l, pad_r);
        Drums(drums_l, drums_r);
        stereo[2 * k] = SoftClip(0.8f * (pad_l + drums_l));
        stereo[2 * k + 1] = SoftClip(0.8f * (pad_r + drums_r));
    }
}

}  // namespace bench
