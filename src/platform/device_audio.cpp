#include "platform/audio.h"
#include "sdl_audio.h"

namespace zo::platform {

std::unique_ptr<AudioOutput> PlayOnDevice(AudioSource& source) {
    return PlayThroughSdl(source);
}

}  // namespace zo::platform
