#pragma once

#include <filesystem>

#include "base/disk.h"
#include "base/result.h"

namespace Kest {

// Writes the whole soundtrack to a WAV file without a sound device: every song once, in the order
// of their list, with its fades, while the line voice says a few words early on. The same bytes
// each time. Returns how many songs it holds; a failure when there are none or the file cannot be
// written.
base::Result<int> RenderAudioDiagnostic(base::Disk& disk, const std::filesystem::path& path);

}  // namespace Kest
