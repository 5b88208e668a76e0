#pragma once

#include <memory>

#include "outside/outside.h"

namespace zo::platform {

// Opens a window that shows what the painter draws. Nothing of the video system is touched before,
// so a program that opens no window needs no display.
base::Result<std::unique_ptr<Window>> OpenSdlWindow(const WindowOptions& options,
                                                    std::unique_ptr<Painter> painter);

}  // namespace zo::platform
