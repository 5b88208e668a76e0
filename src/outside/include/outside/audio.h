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
};

// Plays a source for as long as it lives. Without a device nothing is heard; one that is lost, or
// comes back, is nothing that its owner need know.
class AudioOutput {
public:
    virtual ~AudioOutput() = default;
};

}  // namespace zo::platform
