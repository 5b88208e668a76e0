#pragma once

#include "shell/places.h"

namespace Kest {

// The screens that the program has.
Places GamePlaces();

}  // namespace Kest
