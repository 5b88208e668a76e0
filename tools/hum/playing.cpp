#include "playing.h"

#include <cinttypes>
#include <cstdio>

#include "hum/builtins.h"
#include "hum/opcodes.h"

namespace hum_command {
namespace {

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

}  // namespace

std::optional<Outcome> Start(const Request& request, Playing& playing) {
    Subject& subject = playing.subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject)) return *problem;
    if (subject.fault) return ReportFault(request, *subject.fault);
    hum::MachineSettings settings;
    if (PlaysInstruments(subject.program)) {
        playing.instruments = hum::MakeInstruments();
        settings.instruments = &playing.instruments;
    }
    hum::Machine& machine = playing.machine.emplace(subject.program, settings);
    for (const auto& [name, value] : request.params) {
        const std::optional<std::size_t> param = machine.FindParam(name);
        if (!param) return Problem{"the program has no param " + name};
        machine.SetParam(*param, value);
    }
    machine.Start();
    return std::nullopt;
}

ExitCode ReportStop(const hum::Machine& machine) {
    const std::optional<hum::Stop>& stop = machine.Stopped();
    if (!stop) return ExitCode::Good;
    std::fflush(stdout);
    std::fprintf(stderr, "stopped at sample %" PRId64 ": %s\n", stop->sample,
                 stop->message.c_str());
    return ExitCode::Stopped;
}

}  // namespace hum_command
