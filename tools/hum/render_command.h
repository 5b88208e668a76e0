#pragma once

#include "outcome.h"
#include "request.h"

namespace hum_command {

// Writes a whole song, as the player ends it, to a WAV file.
Outcome RunRender(const Request& request);
// Writes how loud the same is, how high it peaks, and how much the machine has to do for it.
Outcome RunMeasure(const Request& request);

}  // namespace hum_command
