#pragma once

#include <memory>

#include "outside/outside.h"

namespace zo::gpu {

// A renderer that draws by the processor alone, so that a window, a picture and a test show the
// same pixels. It keeps the frame that it drew last and repaints the cells that differ, so it draws
// into one buffer all its life; a buffer of another size is painted whole.
std::unique_ptr<platform::Painter> MakeRenderer();

}  // namespace zo::gpu
