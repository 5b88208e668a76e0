#pragma once

#include <array>
#include <cstdint>

#include "music/frame.h"

namespace Kest {

// Makes the bytes on the line heard: two tones a byte, its high digit, then its low one. A digit is
// a step of a pentatonic scale, three octaves high; what the card sends has overtones and sits a
// little left, what reaches it has none and sits right.
class LineVoice {
public:
    LineVoice();

    // `key` is the scale's lowest pitch class, C 0. Cuts off what is left of the byte before; a
    // byte that comes too soon after one in the same direction is passed over. Returns whether it
    // sounds.
    bool Play(std::uint8_t byte, bool toward_card, int key);
    Frame Next();
    bool Silent() const { return sent_.now.at >= 2 * kTone && received_.now.at >= 2 * kTone; }

private:
    static constexpr int kTone = 2496;   // samples
    static constexpr int kApart = 960;   // between two bytes of one direction
    static constexpr int kCut = 192;     // for fading what is cut off
    static constexpr int kTable = 2048;  // samples of one period

    using Wave = std::array<float, kTable + 1>;  // the last equals the first

    struct Byte {
        std::array<float, 2> step{};  // of the two tones, in periods a sample
        float phase = 0;
        int at = 2 * kTone;  // samples played
    };
    struct Direction {
        Byte now;
        Byte before;
        int cut = 0;         // samples left of the one before
        int since = kApart;  // samples since the last began, up to kApart
    };

    float Sound(Byte& byte, const Wave& wave) const;
    float Sound(Direction& direction, const Wave& wave) const;

    Wave sent_wave_;
    Wave received_wave_;
    std::array<float, kTone> envelope_;
    Direction sent_;
    Direction received_;
    Frame sent_pan_;
    Frame received_pan_;
};

// The MIDI note of a digit, 0 to 15, over the pitch class `key`.
int LineNote(int digit, int key);

}  // namespace Kest
