// Runs hostile code in both machines: fuzz_machine [COUNT [SEED]]. One program in four is compiled
// from written text and then damaged, the others are instructions at random. Neither machine may
// leave its memory or run for ever, and both must do the same.

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "hum/builtins.h"
#include "hum/compile.h"
#include "hum/instruments.h"
#include "hum/listing.h"
#include "hum/machine.h"
#include "hum/opcodes.h"
#include "program_writer.h"

namespace {

constexpr std::uint32_t kDataEnd = 400;
constexpr std::size_t kSamples = 256;
constexpr std::int64_t kBudget = 20000;
constexpr std::uint32_t kMostDataWords = 1u << 20;  // of a compiled program, to keep runs short

std::uint64_t current_seed = 0;

const hum::Instruments& Instruments() {
    static const hum::Instruments instruments = hum::MakeInstruments();
    return instruments;
}

std::uint8_t Register(fuzz::Random& random) {
    return static_cast<std::uint8_t>(random.OneIn(200) ? random.Below(256) : random.Below(12));
}

std::int32_t Number(fuzz::Random& random, std::size_t code_size) {
    switch (random.Below(8)) {
        case 0:
            return static_cast<std::int32_t>(random.Next());
        case 1:
            return static_cast<std::int32_t>(random.Below(20)) - 8;
        case 2:
            return static_cast<std::int32_t>(random.Below(code_size + 1));
        case 3:
            return std::bit_cast<std::int32_t>(static_cast<float>(random.Below(2000)) / 100.0f);
        case 4:
            return 32 + static_cast<std::int32_t>(random.Below(2));
        default:
            return static_cast<std::int32_t>(256 + random.Below(kDataEnd - 256));
    }
}

hum::Instruction AnyInstruction(fuzz::Random& random, std::size_t code_size) {
    hum::Instruction in;
    in.op = static_cast<std::uint8_t>(random.OneIn(300) ? random.Below(256)
                                                        : random.Below(hum::kOpcodeCount));
    in.rd = Register(random);
    in.ra = Register(random);
    in.rb = Register(random);
    in.imm = Number(random, code_size);
    in.aux = static_cast<std::int32_t>(random.Below(4));
    const auto op = static_cast<hum::Op>(in.op);
    if (in.op >= hum::kOpcodeCount) return in;
    const hum::Form form = hum::kOpcodes[in.op].form;
    const bool jumps = form == hum::Form::Jump || form == hum::Form::JumpIf || op == hum::Op::Call;
    const bool in_memory = form == hum::Form::MemoryToInt || form == hum::Form::MemoryToFloat ||
                           form == hum::Form::IntToMemory || form == hum::Form::FloatToMemory;
    if (jumps && !random.OneIn(100)) {
        in.imm = static_cast<std::int32_t>(random.Below(code_size));
    } else if (op == hum::Op::Svc && !random.OneIn(100)) {
        in.imm = static_cast<std::int32_t>(random.Below(hum::kBuiltinCount));
        in.ra = static_cast<std::uint8_t>(random.Below(6));
        in.rb = static_cast<std::uint8_t>(random.Below(6));
    } else if (op == hum::Op::Enter || op == hum::Op::Ret || op == hum::Op::Wait) {
        in.imm = static_cast<std::int32_t>(random.Below(4));
        in.ra = static_cast<std::uint8_t>(random.Below(4));
        in.rb = static_cast<std::uint8_t>(random.Below(4));
    } else if (in_memory && !random.OneIn(4)) {
        in.rb = hum::kAbsolute;
    }
    return in;
}

hum::Program RandomProgram(fuzz::Random& random) {
    hum::Program program;
    const std::size_t size = 4 + random.Below(60);
    for (std::size_t k = 0; k < size; ++k) program.code.push_back(AnyInstruction(random, size));
    const auto entry = [&] { return random.Below(size); };
    // Both channels are written often enough for the samples to tell something.
    for (int k = 0; k < 3; ++k) {
        hum::Instruction& store = program.code[entry()];
        store = {static_cast<std::uint8_t>(hum::Op::Storef), 0, Register(random), hum::kAbsolute,
                 static_cast<std::int32_t>(hum::kSoundAddress + random.Below(2))};
    }
    program.data_words = kDataEnd;
    program.params = {{"tempo", 256, static_cast<float>(random.Below(200))}};
    if (random.OneIn(2)) program.main = entry();
    if (!random.OneIn(8)) program.master = entry();
    for (std::uint32_t k = random.Below(3); k > 0; --k) {
        program.modules.push_back({"m", "O", random.OneIn(100) ? random.Next() : entry(), 320 + k});
    }
    for (std::uint32_t k = 0; k < 20; ++k) {
        program.start.push_back({320 + 4 * k, static_cast<std::uint32_t>(Number(random, size))});
    }
    return program;
}

hum::Program DamagedProgram(fuzz::Random& random) {
    const std::string text = fuzz::ProgramWriter(random).Program();
    hum::ProgramText program_text;
    program_text.text = text;
    hum::Program program;
    if (hum::Compile(program_text, program) || program.data_words > kMostDataWords ||
        program.code.empty()) {
        return RandomProgram(random);
    }
    for (std::uint32_t k = random.Below(6); k > 0; --k) {
        hum::Instruction& in = program.code[random.Below(program.code.size())];
        switch (random.Below(4)) {
            case 0:
                in = AnyInstruction(random, program.code.size());
                break;
            case 1:
                in.imm = Number(random, program.code.size());
                break;
            case 2:
                in.aux = Number(random, program.code.size());
                break;
            default:
                in.rd = in.ra = Register(random);
        }
    }
    return program;
}

struct Played {
    std::vector<float> stereo = std::vector<float>(2 * kSamples);
    std::size_t frames = 0;
    std::string stop;
    std::int64_t instructions = 0;
};

Played Play(const hum::Program& program, hum::Engine engine) {
    hum::MachineSettings settings;
    settings.instruments = &Instruments();
    settings.resume_limit = kBudget;
    settings.engine = engine;
    hum::Machine machine(program, settings);
    Played played;
    machine.Start();
    played.frames = machine.Run(played.stereo);
    if (machine.Stopped()) {
        played.stop = machine.Stopped()->message + " " + std::to_string(machine.Stopped()->pc);
    }
    played.instructions = machine.Stopped() ? 0 : machine.InstructionCount();
    return played;
}

void Run(std::uint64_t seed, std::uint64_t& whole) {
    current_seed = seed;
    fuzz::Random random(seed);
    const hum::Program program = random.OneIn(4) ? DamagedProgram(random) : RandomProgram(random);
    const Played plain = Play(program, hum::Engine::Plain);
    const Played fast = Play(program, hum::Engine::Fast);
    const bool same_samples = std::equal(
        plain.stereo.begin(), plain.stereo.end(), fast.stereo.begin(), [](float a, float b) {
            return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
        });
    if (plain.frames != fast.frames || plain.stop != fast.stop || !same_samples ||
        plain.instructions != fast.instructions) {
        const auto sample =
            std::mismatch(plain.stereo.begin(), plain.stereo.end(), fast.stereo.begin()).first;
        std::fprintf(
            stderr,
            "seed %llu: plain \"%s\" after %zu and %lld instructions, fast \"%s\" after %zu "
            "and %lld, samples apart from %td\n%s",
            static_cast<unsigned long long>(seed), plain.stop.c_str(), plain.frames,
            static_cast<long long>(plain.instructions), fast.stop.c_str(), fast.frames,
            static_cast<long long>(fast.instructions), sample - plain.stereo.begin(),
            hum::Listing(program).c_str());
        std::abort();
    }
    if (plain.frames == kSamples) ++whole;
}

}  // namespace

int main(int count, char** arguments) {
    const std::uint64_t programs = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 10000;
    const std::uint64_t first = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 0;
    std::uint64_t whole = 0;
    for (std::uint64_t i = 0; i < programs; ++i) Run(first + i, whole);
    std::printf("%llu programs, %llu of them ran to the end\n",
                static_cast<unsigned long long>(programs), static_cast<unsigned long long>(whole));
    return 0;
}
