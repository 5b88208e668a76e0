#pragma once

#include <memory>

#include "outside/audio.h"

namespace zo::platform {

// Plays the source on the system's default device in the system's own way, in blocks of 256 frames.
// Where there is none it waits for one, and a device that is lost is replaced. The source outlives
// what is returned.
std::unique_ptr<AudioOutput> PlayOnDevice(AudioSource& source);

}  // namespace zo::platform
