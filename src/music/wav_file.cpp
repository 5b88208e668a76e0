#include "music/wav_file.h"

#include "music/frame.h"

namespace Kest {
namespace {

constexpr std::uint32_t kChannels = 2;
constexpr std::uint32_t kFrameBytes = 2 * kChannels;

void Append(std::string& text, std::uint32_t value, int bytes) {
    for (int k = 0; k < bytes; ++k) text.push_back(static_cast<char>(value >> (8 * k)));
}

}  // namespace

std::string WavHeader(std::uint32_t frames) {
    const std::uint32_t data_bytes = frames * kFrameBytes;
    std::string wav = "RIFF";
    Append(wav, 36 + data_bytes, 4);
    wav += "WAVEfmt ";
    Append(wav, 16, 4);  // bytes of the format
    Append(wav, 1, 2);   // linear PCM
    Append(wav, kChannels, 2);
    Append(wav, kSampleRate, 4);
    Append(wav, kSampleRate * kFrameBytes, 4);
    Append(wav, kFrameBytes, 2);
    Append(wav, 16, 2);  // bits a sample
    wav += "data";
    Append(wav, data_bytes, 4);
    return wav;
}

void AppendSamples(std::string& wav, std::span<const std::int16_t> samples) {
    for (const std::int16_t sample : samples) {
        Append(wav, static_cast<std::uint16_t>(sample), 2);
    }
}

}  // namespace Kest
