#pragma once

#include <memory>

#include "outside/outside.h"

namespace zo::term {

// The terminal that the program was started from, as a window of cells. It is put back as it was
// when the window closes, when the program is stopped, and when it crashes.
base::Result<std::unique_ptr<platform::Window>> OpenTerminal(
    const platform::WindowOptions& options);

}  // namespace zo::term
