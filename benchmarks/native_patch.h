#pragma once

#include <cstdint>

namespace bench {

// The patch of benchmarks/hum/patch.hum as somebody would write it in C++.
class NativePatch {
public:
    NativePatch();
    void Run(float* stereo, std::int32_t frames);

private:
    static constexpr int kVoices = 8;
    struct Voice {
        float freq = 0, phase = 0, s1 = 0, s2 = 0, env = 0, pan = 0;
    };

    void Pad(float& l, float& r);
    void Drums(float& l, float& r);
    float Noise();

    Voice voices_[kVoices];
    int bars_ = 0;
    int pad_left_ = 0;
    float phase_ = 0, sweep_ = 0, kick_ = 0, snare_ = 0, hat_ = 0, body_ = 0, bright_ = 0;
    int step_ = 0;
    int drums_left_ = 0;
    std::uint32_t random_ = 0x2545F491;
};

}  // namespace bench
