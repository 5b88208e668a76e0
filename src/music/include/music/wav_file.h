#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace Kest {

// The header of a RIFF WAVE file with this many frames of 16-bit stereo at 48000 Hz, which follow
// it, low byte first. (Microsoft and IBM, "Multimedia Programming Interface and Data
// Specifications 1.0", 1991.)
std::string WavHeader(std::uint32_t frames);
void AppendSamples(std::string& wav, std::span<const std::int16_t> samples);

}  // namespace Kest
