#include "run_command.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <vector>

#include "hum/builtins.h"
#include "hum/instruments.h"
#include "hum/machine.h"
#include "hum/opcodes.h"
#include "subject.h"

namespace hum_command {
namespace {

constexpr std::int64_t kChunk = 4096;  // samples

// The tables take a while to make, so that only programs that play them wait for them.
bool PlaysInstruments(const hum::Program& program) {
    const auto first = static_cast<std::int32_t>(hum::BuiltinNumber("samp"));
    const auto last = static_cast<std::int32_t>(hum::BuiltinNumber("inst_len"));
    const auto length = static_cast<std::int32_t>(hum::BuiltinNumber("len"));
    for (const hum::Instruction& in : program.code) {
        if (in.op != static_cast<std::uint8_t>(hum::Op::Svc)) continue;
        if ((in.imm >= first && in.imm <= last) || in.imm == length) return true;
    }
    return false;
}

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

void PrintLines(const hum::Machine& machine, const std::vector<float>& stereo) {
    for (std::size_t k = 0; k < stereo.size(); k += 2) {
        std::printf("%.9g %.9g\n", static_cast<double>(stereo[k]),
                    static_cast<double>(stereo[k + 1]));
    }
    const std::optional<hum::Stop>& stop = machine.Stopped();
    if (!stop) return;
    std::fflush(stdout);
    std::fprintf(stderr, "stopped at sample %" PRId64 ": %s\n", stop->sample,
                 stop->message.c_str());
}

}  // namespace

Outcome RunRun(const Request& request) {
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject)) return *problem;
    if (subject.fault) return ReportFault(request, *subject.fault);
    hum::Instruments instruments;
    hum::MachineSettings settings;
    if (PlaysInstruments(subject.program)) {
        instruments = hum::MakeInstruments();
        settings.instruments = &instruments;
    }
    hum::Machine machine(subject.program, settings);
    for (const auto& [name, value] : request.params) {
        const std::optional<std::size_t> param = machine.FindParam(name);
        if (!param) return Problem{"the program has no param " + name};
        machine.SetParam(*param, value);
    }
    machine.Start();
    Skip(machine, request.skip);
    const std::vector<float> stereo = Keep(machine, request.samples);
    request.Json() ? PrintJson(machine, stereo) : PrintLines(machine, stereo);
    return machine.Stopped() ? ExitCode::Stopped : ExitCode::Good;
}

}  // namespace hum_command
