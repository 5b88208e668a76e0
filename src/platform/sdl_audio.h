#pragma once

#include <memory>

#include "outside/audio.h"

namespace zo::platform {

// As PlayOnDevice(), by SDL's means.
std::unique_ptr<AudioOutput> PlayThroughSdl(AudioSource& source);

}  // namespace zo::platform
