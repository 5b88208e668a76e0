#include "render_command.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>

#include "base/disk.h"
#include "music/loudness.h"
#include "music/mixer.h"
#include "music/wav_file.h"
#include "native/system_disk.h"
#include "playing.h"

namespace hum_command {
namespace {

constexpr std::int64_t kFade = 36000;  // samples
constexpr std::int64_t kChunk = 4096;

// Runs this many samples of the song, or to its end or to where it stops, and gives on what the
// player would let be heard.
void Play(hum::Machine& machine, std::int64_t most,
          const std::function<void(std::span<const Kest::Frame>)>& hear) {
    std::vector<Kest::Frame> frames(kChunk);
    std::int64_t left = machine.LengthSamples();
    const std::int64_t rest = std::max<std::int64_t>(left - most, 0);
    while (left > rest && !machine.Stopped()) {
        const auto count = static_cast<std::size_t>(std::min(left - rest, kChunk));
        const std::size_t ran = machine.Run({&frames.data()->left, 2 * count});
        for (Kest::Frame& frame : std::span(frames).first(ran)) {
            frame = frame * std::min(1.0F, static_cast<float>(left--) / kFade);
            frame = {Kest::Ceiling(frame.left), Kest::Ceiling(frame.right)};
        }
        hear(std::span(frames).first(ran));
    }
}

std::int16_t To16Bits(float sample) {
    return static_cast<std::int16_t>(std::lround(32767.0F * sample));
}

}  // namespace

Outcome RunRender(const Request& request) {
    Playing playing;
    if (std::optional<Outcome> outcome = Start(request, playing)) return *outcome;
    std::vector<std::int16_t> samples;
    const bool is_part = (request.given & kSamples) != 0;
    const std::int64_t most = is_part ? request.samples : playing.machine->LengthSamples();
    Play(*playing.machine, most, [&](std::span<const Kest::Frame> frames) {
        for (const Kest::Frame& frame : frames) {
            samples.push_back(To16Bits(frame.left));
            samples.push_back(To16Bits(frame.right));
        }
    });
    std::string wav = Kest::WavHeader(static_cast<std::uint32_t>(samples.size() / 2));
    Kest::AppendSamples(wav, samples);
    zo::platform::SystemDisk disk;
    const std::string& file = request.files[1];
    if (const base::Status status = disk.Write(base::TextPath(file), wav); !status) {
        return Problem{"cannot write " + file + ": " + status.Message()};
    }
    return ReportStop(*playing.machine);
}

Outcome RunMeasure(const Request& request) {
    Playing playing;
    if (std::optional<Outcome> outcome = Start(request, playing)) return *outcome;
    const hum::Machine& machine = *playing.machine;
    Kest::Loudness loudness;
    Play(*playing.machine, machine.LengthSamples(),
         [&](std::span<const Kest::Frame> frames) { loudness.Add(frames); });
    const double instructions = static_cast<double>(machine.InstructionCount()) /
                                static_cast<double>(std::max<std::int64_t>(machine.Sample(), 1));
    std::printf(request.Json() ? "{\"ok\": true, \"loudness\": %.2f, \"true_peak\": %.2f, "
                                 "\"instructions\": %.1f}\n"
                               : "loudness %.2f LUFS, true peak %.2f dBTP, %.1f instructions a "
                                 "sample\n",
                loudness.Integrated(), loudness.TruePeak(), instructions);
    return ReportStop(machine);
}

}  // namespace hum_command
