#pragma once

#include <string>

#include "base/disk.h"
#include "base/result.h"
#include "outside/outside.h"

namespace zo::gpu {

// The pixels as a PNG file, the same bytes for the same pixels everywhere.
std::string EncodePng(const platform::PixelBuffer& picture);

// Draws a frame and writes it as a PNG of exactly this many pixels.
base::Status WritePicture(const ui::Frame& frame, ui::PixelSize size, base::Disk& disk,
                          const std::filesystem::path& path);

}  // namespace zo::gpu
