#pragma once

#include <cstdint>
#include <span>

namespace zo::platform {

// What is to be heard: 48000 frames a second, left and right in turn, in 16 bits.
class AudioSource {
public:
    virtual ~AudioSource() = default;
    // The next samples, an even number. Called on a thread of the output's, which must not wait.
    virtual void Fill(std::span<std::int16_t> samples) = 0;
    // Nothing is to be heard until Resume() is called. May be asked on any thread.
    virtual bool Silent() const { return false; }
};

// Plays a source for as long as it lives, and rests while the source is silent. Without a device
// nothing is heard; one that is lost, or comes back, is nothing that its owner need know.
class AudioOutput {
public:
    virtual ~AudioOutput() = default;
    // Goes on with a source that is silent no longer; costs nothing where it has not rested.
    virtual void Resume() = 0;
};

}  // namespace zo::platform
