#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>

#include "music/effects.h"
#include "music/frame.h"
#include "music/line_voice.h"
#include "music/noise.h"
#include "music/spsc_ring.h"

namespace Kest {

// A sound to be played, from the game's thread to the mixer's.
struct Post {
    Effect effect = Effect::None;
    float volume = 1;
    std::uint16_t parameter = 0;  // of Effect::Key and Effect::LineByte
    float gain = 1;
};

// What the other threads tell the mixer. Volumes are linear, 0 to 1, and 0 for what is off.
struct MixerInput {
    SpscRing<Post, 256> posts;
    SpscRing<Frame, 16384> music;  // with its fades
    std::atomic<float> music_volume = 0;
    std::atomic<float> effects_volume = 0;
    std::atomic<float> line_volume = 0;
    std::atomic<bool> heard = true;                      // false while another window is in front
    std::atomic<int> key = 2;                            // the line voice's scale, a pitch class
    std::atomic<const EffectTables*> effects = nullptr;  // no interface sounds until it is set
};

// How far other sounds hold the music down.
class Ducker {
public:
    Ducker();
    void AskForLine() { line_left_ = kHold; }
    void AskForEffect() { effect_left_ = kHold; }
    float Next();

private:
    static constexpr int kHold = SamplesOf(250);
    float fall_;
    float rise_;
    int line_left_ = 0;
    int effect_left_ = 0;
    float gain_ = 1;
};

enum class Dither : bool { No, Yes };

// Mixes the music with what is posted. Used by one thread; takes no lock and allocates nothing.
class Mixer {
public:
    explicit Mixer(MixerInput& input) : input_(input) {}

    // The next frames in order, within -1 and 1. Where the music has not kept up there is none.
    void Mix(std::span<Frame> frames);
    // The same, left and right in turn, in 16 bits.
    void MixTo16Bits(std::span<std::int16_t> samples, Dither dither);
    // Nothing sounded in the last frames, and nothing will until something changes. May be asked on
    // any thread.
    bool Silent() const { return silent_.load(); }
    // Frames that the music owed since its first one and did not have. May be asked on any thread.
    std::uint64_t MissedFrames() const { return missed_.load(std::memory_order_relaxed); }

private:
    struct Voice {
        std::span<const float> samples = {};  // empty when free
        double at = 0;
        double step = 1;
        Frame gain = {};
        std::uint64_t started = 0;  // in samples of the mixer
    };
    static constexpr std::size_t kChunk = 256;

    void MixChunk(std::span<Frame> frames);
    void Start(const Post& post);
    void StartEffect(const Post& post);
    Frame NextOfEffects();

    MixerInput& input_;
    std::array<Voice, 16> voices_{};
    std::array<std::uint64_t, kEffects> last_{};  // when each was started, 1 and up; 0 for never
    LineVoice line_;
    Ducker ducker_;
    Ramp music_gain_{1.0F / 2400};
    Ramp effects_gain_{1.0F / 2400};
    Ramp line_gain_{1.0F / 2400};
    Ramp focus_gain_{1.0F / 5760, 1};
    std::atomic<bool> silent_ = false;
    std::atomic<std::uint64_t> missed_ = 0;
    bool has_music_ = false;  // its first frame has come
    std::uint64_t now_ = 1;
    WhiteNoise variation_{1};
    WhiteNoise dither_{2};
};

// Leaves what is quiet alone and bends the rest under full scale.
float Ceiling(float sample);

}  // namespace Kest
