#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace hum {

inline constexpr std::int32_t kKitSoundCount = 8;
inline constexpr std::int32_t kPianoAnchorCount = 20;
inline constexpr std::int32_t kFirstAnchor = 24;  // its note; each next is kAnchorStep higher
inline constexpr std::int32_t kAnchorStep = 4;

// The sampled kit and piano that programs play; made once, then only read, by any thread.
struct Instruments {
    struct Layer {
        std::vector<std::int16_t> frames;
        float gain = 0;  // of a frame's unit
    };
    struct Anchor {
        Layer soft, hard;
    };
    std::array<std::vector<float>, kKitSoundCount> kit;
    std::array<Anchor, kPianoAnchorCount> piano;
};

// The same tables at every call; takes a good part of a second's third.
Instruments MakeInstruments();

}  // namespace hum
