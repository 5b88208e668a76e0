#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hum/arithmetic.h"
#include "hum/instruction.h"
#include "hum/instruments.h"
#include "hum/machine.h"
#include "hum/memory_map.h"
#include "hum/program.h"

namespace hum {

inline constexpr std::uint32_t kMaxFrames = 64;
// In prepared code alone: an instruction that is none, and the end of the code.
inline constexpr std::uint8_t kUnknownOp = 254;
inline constexpr std::uint8_t kEndOp = 255;

// What one function, or a coroutine's own body, has for itself.
struct Frame {
    std::int32_t i[kIntRegisters] = {};
    float f[kFloatRegisters] = {};
    std::uint32_t return_pc = 0;
    std::uint32_t address = 0;
    std::uint32_t stack_at_call = 0;
    std::uint32_t floor = 0;  // the stack pointer must not fall below it
};

// main, master or a module.
struct Coroutine {
    enum class Kind : std::uint8_t { Main, Master, Module };
    Kind kind = Kind::Module;
    bool finished = false;
    std::uint32_t entry = kNoCode;
    std::uint32_t pc = 0;
    std::uint32_t depth = 0;  // of frames; the body's is 0
    std::uint32_t stack = 0;
    std::uint32_t stack_begin = 0;
    std::uint32_t output_address = 0;
    std::int64_t wake = 0;
    double carry = 0;
    Frame frames[kMaxFrames];
};

// The tempo clock and the bars counted on it.
struct Clock {
    float bpm = 76;
    double beat_origin = 0;
    std::int64_t sample_origin = 0;
    std::int32_t beats_per_bar_n = 4;
    std::int32_t beats_per_bar_d = 4;
    std::int64_t bar_origin = 0;
    double bar_origin_beat = 0;
};

enum class Trouble : std::uint8_t {
    None,
    IntLoad,
    FloatLoad,
    Store,
    BuiltinPointer,
    Delay,
    Runaway,
    CallOverflow,
    CallUnderflow,
    FrameOverflow,
    DamagedStack,
    MasterWaits,
    InvalidCounter,
    WalkedOff,
    UnknownOpcode,
    InputNotFinite,
    OutputNotFinite,
    NullKernel,
    TooLarge,
};

// What instructions and built-ins work on.
struct Runtime {
    std::uint32_t* memory = nullptr;
    std::uint32_t size = 0;
    std::uint32_t random = 0;
    Coroutine* running = nullptr;
    const Instruments* instruments = nullptr;
    Clock clock;
    std::int64_t sample = 0;
    std::int64_t limit = kResumeLimit;
    std::int64_t extra = 0;         // charged to this resume by work that is no instruction
    std::int64_t instructions = 0;  // run since the start
    Trouble trouble = Trouble::None;
    std::uint32_t trouble_address = 0;
    std::uint32_t trouble_pc = 0;

    bool InMemory(std::uint32_t address) const { return address - kNullWords < size - kNullWords; }
    bool InMemory(std::uint32_t address, std::uint32_t words) const {
        return InMemory(address) && words <= size - address;
    }
    float Float(std::uint32_t address) const { return std::bit_cast<float>(memory[address]); }
    void SetFloat(std::uint32_t address, float value) { memory[address] = FloatWord(value); }
    // Always false, so that a check can end with `return Fail(...)`.
    bool Fail(Trouble what, std::uint32_t address = 0) {
        trouble = what;
        trouble_address = address;
        return false;
    }
};

// A copy of the code in which every register and number fits its instruction, closed by kEndOp:
// what does not fit has become kUnknownOp.
std::vector<Instruction> PrepareCode(const Program& program);

// Runs the coroutine from where it is to where it waits or ends. False: trouble is set.
bool ResumePlain(Runtime& runtime, Coroutine& coroutine, const std::vector<Instruction>& code);

struct MachineState {
    const Program* program = nullptr;
    MachineSettings settings;
    std::vector<Instruction> code;
    std::vector<std::uint32_t> memory;
    Runtime runtime;
    Coroutine main;
    Coroutine master;
    std::vector<Coroutine> modules;
    std::vector<float> params;  // as last set
    bool params_changed = false;
    bool started = false;
    float tempo = 76;
    std::int32_t bars = 32;
    std::optional<Stop> stop;
};

}  // namespace hum
