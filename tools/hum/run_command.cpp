#include "run_command.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <vector>

#include "playing.h"

namespace hum_command {
namespace {

constexpr std::int64_t kChunk = 4096;  // samples

// Runs samples and keeps none of them; less when the program stops.
void Skip(hum::Machine& machine, std::int64_t samples) {
    std::vector<float> stereo(2 * kChunk);
    while (samples > 0 && !machine.Stopped()) {
        const auto part = static_cast<std::size_t>(std::min(samples, kChunk));
        samples -= static_cast<std::int64_t>(machine.Run(std::span(stereo).first(2 * part)));
    }
}

std::vector<float> Keep(hum::Machine& machine, std::int64_t samples) {
    std::vector<float> kept;
    while (samples > 0 && !machine.Stopped()) {
        const auto part = static_cast<std::size_t>(std::min(samples, kChunk));
        const std::size_t before = kept.size();
        kept.resize(before + 2 * part);
        const std::size_t ran = machine.Run(std::span(kept).subspan(before));
        kept.resize(before + 2 * ran);
        samples -= static_cast<std::int64_t>(ran);
    }
    return kept;
}

void PrintSide(const char* name, const std::vector<float>& stereo, std::size_t side) {
    std::printf("\"%s\": [", name);
    for (std::size_t k = side; k < stereo.size(); k += 2) {
        std::printf("%s%.9g", k > side ? ", " : "", static_cast<double>(stereo[k]));
    }
    std::printf("]");
}

void PrintJson(const hum::Machine& machine, const std::vector<float>& stereo) {
    std::printf("{\"ok\": true, \"tempo\": %.9g, \"bars\": %d, \"length\": %" PRId64
                ", \"samples\": %" PRId64 ", \"stopped\": ",
                static_cast<double>(machine.Tempo()), machine.Bars(), machine.LengthSamples(),
                machine.Sample());
    if (const std::optional<hum::Stop>& stop = machine.Stopped()) {
        std::printf("{\"message\": %s, \"sample\": %" PRId64 "}", JsonText(stop->message).c_str(),
                    stop->sample);
    } else {
        std::printf("null");
    }
    std::printf(",\n ");
    PrintSide("left", stereo, 0);
    std::printf(", ");
    PrintSide("right", stereo, 1);
    std::printf("}\n");
}

void PrintLines(const std::vector<float>& stereo) {
    for (std::size_t k = 0; k < stereo.size(); k += 2) {
        std::printf("%.9g %.9g\n", static_cast<double>(stereo[k]),
                    static_cast<double>(stereo[k + 1]));
    }
}

}  // namespace

Outcome RunRun(const Request& request) {
    Playing playing;
    if (std::optional<Outcome> outcome = Start(request, playing)) return *outcome;
    hum::Machine& machine = *playing.machine;
    Skip(machine, request.skip);
    const std::vector<float> stereo = Keep(machine, request.samples);
    if (request.Json()) {
        PrintJson(machine, stereo);
        return machine.Stopped() ? ExitCode::Stopped : ExitCode::Good;
    }
    PrintLines(stereo);
    return ReportStop(machine);
}

}  // namespace hum_command
