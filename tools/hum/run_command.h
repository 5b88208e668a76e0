#pragma once

#include "outcome.h"
#include "request.h"

namespace hum_command {

// Runs a program as the player would and writes the samples that it leaves.
Outcome RunRun(const Request& request);

}  // namespace hum_command
