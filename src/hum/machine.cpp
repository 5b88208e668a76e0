#include "hum/machine.h"

#include <algorithm>
#include <cmath>

#include "base/format.h"
#include "clock.h"
#include "fast_code.h"
#include "flush_denormals.h"
#include "machine_state.h"

namespace hum {
namespace {

constexpr std::uint32_t kFirstRandom = 0x2545F491;
constexpr std::uint64_t kMostMemoryWords = 1u << 28;
constexpr float kDefaultTempo = 76;
constexpr std::int32_t kDefaultBars = 32;

std::string TroubleText(const Runtime& runtime) {
    const auto out_of_range = [&](const char* what) {
        return base::Format("%s out of range (addr=%u size=%u pc=%u)", what,
                            runtime.trouble_address, runtime.size, runtime.trouble_pc);
    };
    switch (runtime.trouble) {
        case Trouble::IntLoad:
            return out_of_range("int load");
        case Trouble::FloatLoad:
            return out_of_range("float load");
        case Trouble::Store:
            return out_of_range("memory store");
        case Trouble::BuiltinPointer:
            return base::Format("builtin pointer out of range (addr=%d pc=%u)",
                                static_cast<std::int32_t>(runtime.trouble_address),
                                runtime.trouble_pc);
        case Trouble::Delay:
            return "comb/allpass needs a delay of 1 or more";
        case Trouble::Runaway:
            return "runaway module (missing wait)";
        case Trouble::CallOverflow:
            return "call stack overflow";
        case Trouble::CallUnderflow:
            return "call stack underflow";
        case Trouble::FrameOverflow:
            return "frame overflow";
        case Trouble::DamagedStack:
            return "return with a damaged stack";
        case Trouble::MasterWaits:
            return "wait from master";
        case Trouble::InvalidCounter:
            return "invalid program counter";
        case Trouble::WalkedOff:
            return "program counter walked off the end";
        case Trouble::UnknownOpcode:
            return "unknown opcode";
        case Trouble::InputNotFinite:
            return "kernel input is not finite";
        case Trouble::OutputNotFinite:
            return "kernel output is not finite";
        case Trouble::TooLarge:
            return "the program needs too much memory";
        case Trouble::NullKernel:
        case Trouble::None:
            break;
    }
    return "null kernel";
}

// Those that belong to an instruction and so to a place in the source.
bool HasPlace(Trouble trouble) {
    return trouble != Trouble::InputNotFinite && trouble != Trouble::OutputNotFinite &&
           trouble != Trouble::NullKernel && trouble != Trouble::TooLarge;
}

// Always false.
bool StopHere(MachineState& state) {
    const Runtime& runtime = state.runtime;
    Stop stop;
    stop.message = TroubleText(runtime);
    stop.sample = runtime.sample;
    if (HasPlace(runtime.trouble)) {
        stop.pc = runtime.trouble_pc;
        const Program& program = *state.program;
        if (stop.pc < program.code.size()) {
            const std::uint32_t pos = program.code[stop.pc].pos;
            const std::uint32_t source = PositionSource(pos);
            if (source < program.sources.size()) stop.source = program.sources[source];
            stop.line = PositionLine(pos);
            stop.column = PositionColumn(pos);
        }
    }
    state.stop = std::move(stop);
    return false;
}

bool Fail(MachineState& state, Trouble trouble) {
    state.runtime.Fail(trouble);
    return StopHere(state);
}

bool Resume(MachineState& state, Coroutine& coroutine) {
    Runtime& runtime = state.runtime;
    runtime.running = &coroutine;
    runtime.extra = 0;
    const bool good = state.settings.engine == Engine::Fast
                          ? ResumeFast(runtime, coroutine, state.code)
                          : ResumePlain(runtime, coroutine, state.code);
    return good || StopHere(state);
}

void Rewind(Coroutine& coroutine) {
    coroutine.pc = coroutine.entry;
    coroutine.depth = 0;
    coroutine.stack = coroutine.stack_begin;
    coroutine.frames[0].floor = coroutine.stack_begin;
    coroutine.finished = false;
}

void SetUp(Coroutine& coroutine, Coroutine::Kind kind, std::uint32_t entry, std::uint32_t stack) {
    coroutine = Coroutine();
    coroutine.kind = kind;
    coroutine.entry = entry;
    coroutine.stack_begin = stack;
    Rewind(coroutine);
}

void SetUpCoroutines(MachineState& state) {
    const Program& program = *state.program;
    std::uint32_t stack = program.data_words;
    SetUp(state.master, Coroutine::Kind::Master, program.master, stack);
    SetUp(state.main, Coroutine::Kind::Main, program.main, stack += kStackWords);
    for (std::size_t k = 0; k < state.modules.size(); ++k) {
        const Program::Module& module = program.modules[k];
        SetUp(state.modules[k], Coroutine::Kind::Module, module.code, stack += kStackWords);
        state.modules[k].output_address = module.output_address;
    }
}

// Memory as the program wants it at first; what persists stays as it is.
void ResetMemory(MachineState& state) {
    const Program& program = *state.program;
    std::vector<std::uint32_t> kept;
    if (state.started) kept = state.memory;
    std::fill(state.memory.begin(), state.memory.end(), 0u);
    for (const StartWord& word : program.start) {
        if (word.address < state.memory.size()) state.memory[word.address] = word.word;
    }
    for (const Program::Range& range : program.persistent) {
        if (kept.empty() || range.address > kept.size()) continue;
        const std::size_t words = std::min<std::size_t>(range.words, kept.size() - range.address);
        std::copy_n(kept.begin() + range.address, words, state.memory.begin() + range.address);
    }
}

bool WriteParams(MachineState& state) {
    const Program& program = *state.program;
    state.params_changed = false;
    for (std::size_t k = 0; k < state.params.size(); ++k) {
        if (!std::isfinite(state.params[k])) return Fail(state, Trouble::InputNotFinite);
        const std::uint32_t address = program.params[k].address;
        if (state.runtime.InMemory(address)) state.runtime.SetFloat(address, state.params[k]);
    }
    return true;
}

float* ParamNamed(MachineState& state, std::string_view name) {
    for (std::size_t k = 0; k < state.params.size(); ++k) {
        if (state.program->params[k].name == name) return &state.params[k];
    }
    return nullptr;
}

// Holds the song's speed and length to what a player can play.
void HoldLength(MachineState& state) {
    state.tempo = kDefaultTempo;
    state.bars = kDefaultBars;
    if (float* tempo = ParamNamed(state, "tempo")) {
        *tempo = state.tempo = std::clamp(*tempo, 40.0f, 160.0f);
    }
    if (float* bars = ParamNamed(state, "bars")) {
        *bars = std::clamp(std::round(*bars), 8.0f, 128.0f);
        state.bars = static_cast<std::int32_t>(*bars);
    }
}

bool Finite(const Runtime& runtime, std::uint32_t address) {
    return std::isfinite(runtime.Float(address)) && std::isfinite(runtime.Float(address + 1));
}

bool RunSample(MachineState& state, float* stereo) {
    Runtime& runtime = state.runtime;
    if (state.params_changed && runtime.sample % kBlockSamples == 0 && !WriteParams(state)) {
        return false;
    }
    WriteHostVariables(runtime);
    if (!Finite(runtime, kInputAddress)) return Fail(state, Trouble::InputNotFinite);
    for (Coroutine& module : state.modules) {
        if (module.wake > runtime.sample || module.finished) continue;
        if (!Resume(state, module)) return false;
    }
    if (state.master.entry != kNoCode) {
        Rewind(state.master);
        if (!Resume(state, state.master)) return false;
    }
    if (!Finite(runtime, kSoundAddress)) return Fail(state, Trouble::OutputNotFinite);
    stereo[0] = runtime.Float(kSoundAddress);
    stereo[1] = runtime.Float(kSoundAddress + 1);
    FollowTempo(runtime);
    ++runtime.sample;
    return true;
}

}  // namespace

Machine::Machine(const Program& program, const MachineSettings& settings)
    : state_(std::make_unique<MachineState>()) {
    MachineState& state = *state_;
    state.program = &program;
    state.settings = settings;
    state.code = PrepareCode(program);
    state.modules.resize(program.modules.size());
    const std::uint64_t words =
        std::uint64_t{program.data_words} + std::uint64_t{kStackWords} * (state.modules.size() + 2);
    if (words <= kMostMemoryWords && program.data_words >= kDataAddress) {
        state.memory.resize(static_cast<std::size_t>(words));
    }
    if (settings.engine == Engine::Fast) {
        state.code = MakeFastCode(state.code, static_cast<std::uint32_t>(state.memory.size()));
    }
    for (const Program::Param& param : program.params) state.params.push_back(param.value);
}

Machine::~Machine() = default;
Machine::Machine(Machine&&) noexcept = default;
Machine& Machine::operator=(Machine&&) noexcept = default;

bool Machine::Start() {
    const FlushDenormals flush;
    MachineState& state = *state_;
    state.stop.reset();
    Runtime& runtime = state.runtime;
    runtime = Runtime();
    if (state.memory.empty()) return Fail(state, Trouble::TooLarge);
    ResetMemory(state);
    state.started = true;
    runtime.memory = state.memory.data();
    runtime.size = static_cast<std::uint32_t>(state.memory.size());
    runtime.random = kFirstRandom;
    runtime.instruments = state.settings.instruments;
    runtime.limit = state.settings.resume_limit;
    SetUpCoroutines(state);
    if (state.modules.empty() && state.master.entry == kNoCode) {
        return Fail(state, Trouble::NullKernel);
    }
    if (!WriteParams(state)) return false;
    HoldLength(state);
    WriteParams(state);
    runtime.clock.bpm = state.tempo;
    WriteHostVariables(runtime);
    return state.main.entry == kNoCode || Resume(state, state.main);
}

std::size_t Machine::Run(std::span<float> stereo) {
    const FlushDenormals flush;
    std::size_t frames = 0;
    while (!state_->stop && 2 * frames + 1 < stereo.size() &&
           RunSample(*state_, &stereo[2 * frames])) {
        ++frames;
    }
    return frames;
}

std::optional<std::size_t> Machine::FindParam(std::string_view name) const {
    const float* param = ParamNamed(*state_, name);
    if (param == nullptr) return std::nullopt;
    return static_cast<std::size_t>(param - state_->params.data());
}

float Machine::Param(std::size_t index) const {
    return state_->params[index];
}

void Machine::SetParam(std::size_t index, float value) {
    state_->params[index] = value;
    state_->params_changed = true;
}

const std::optional<Stop>& Machine::Stopped() const {
    return state_->stop;
}

std::int64_t Machine::Sample() const {
    return state_->runtime.sample;
}

std::int64_t Machine::InstructionCount() const {
    return state_->runtime.instructions;
}

float Machine::Tempo() const {
    return state_->tempo;
}

std::int32_t Machine::Bars() const {
    return state_->bars;
}

std::int64_t Machine::LengthSamples() const {
    const double quarters = 4.0 * state_->bars;
    return static_cast<std::int64_t>(
        std::floor(quarters * kQuarterSamples / static_cast<double>(state_->tempo) + 0.5));
}

std::span<const std::uint32_t> Machine::Memory() const {
    return state_->memory;
}

}  // namespace hum
