// Compiles written and damaged programs: fuzz_compiler [COUNT [SEED]], or fuzz_compiler --show SEED
// for the program of one seed. What compiles must be code that the machine can take as it is.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "hum/assemble.h"
#include "hum/compile.h"
#include "hum/listing.h"
#include "hum/opcodes.h"
#include "program_writer.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

std::uint64_t current_seed = 0;

std::string ProgramOf(std::uint64_t seed) {
    fuzz::Random random(seed);
    std::string text = fuzz::ProgramWriter(random).Program();
    // One in three stays as it was written.
    return seed % 3 == 0 ? text : fuzz::Mutated(std::move(text), random);
}

class SelfIncludes final : public hum::Includes {
public:
    Text Find(std::string_view, std::string_view name) override {
        if (name == "x") return {Found::Yes, "x", "#pragma once\nfloat from_x;\n"};
        return {Found::No, {}, {}};
    }
};

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "seed %llu: %s\n", static_cast<unsigned long long>(current_seed), what);
    std::abort();
}

void CheckInstruction(const hum::Program& program, const hum::Instruction& in) {
    Require(in.op < hum::kOpcodeCount, "unknown opcode");
    const hum::Form form = hum::kOpcodes[in.op].form;
    const auto op = static_cast<hum::Op>(in.op);
    const bool jumps = form == hum::Form::Jump || form == hum::Form::JumpIf || op == hum::Op::Call;
    if (jumps) {
        Require(in.imm >= 0 && static_cast<std::size_t>(in.imm) < program.code.size(),
                "a jump out of the code");
    }
    if (op == hum::Op::Enter) return;
    // The first free register of a call without arguments may be one past the last.
    Require(in.rd <= 12 && in.ra <= 12 && (in.rb <= 12 || in.rb == hum::kAbsolute),
            "a register that does not exist");
}

void CheckFault(const hum::Fault& fault, const std::string& text) {
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    Require(!fault.message.empty() && fault.line >= 1 && fault.column >= 1, "a fault nowhere");
    Require(fault.name != "<input>" || fault.line <= lines, "a fault behind the end");
}

// A listing, read back, is the same code.
void CheckListing(const hum::Program& program) {
    hum::Program again;
    const auto fault = hum::Assemble({}, hum::Listing(program), again);
    Require(!fault, "a listing that the assembler does not read");
    Require(program.code.size() == again.code.size(), "a listing of another length");
    for (std::size_t i = 0; i < again.code.size(); ++i) {
        again.code[i].pos = program.code[i].pos;
        Require(program.code[i] == again.code[i], "an instruction that its listing changed");
    }
}

void Run(std::uint64_t seed, std::uint64_t& compiled) {
    current_seed = seed;
    const std::string text = ProgramOf(seed);
    SelfIncludes includes;
    hum::ProgramText program_text;
    program_text.text = text;
    program_text.includes = &includes;
    hum::Program program;
    if (const auto fault = hum::Compile(program_text, program)) return CheckFault(*fault, text);
    ++compiled;
    for (const hum::Instruction& in : program.code) CheckInstruction(program, in);
    Require(program.data_words <= 1u << 25, "more memory than a program may have");
    for (const hum::StartWord& word : program.start) {
        Require(word.address >= 320 && word.address < program.data_words, "a word out of memory");
    }
    CheckListing(program);
}

}  // namespace

int main(int count, char** arguments) {
    if (count > 2 && std::strcmp(arguments[1], "--show") == 0) {
        std::fputs(ProgramOf(std::strtoull(arguments[2], nullptr, 10)).c_str(), stdout);
        return 0;
    }
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(
        [] { std::fprintf(stderr, "seed %llu\n", static_cast<unsigned long long>(current_seed)); });
#endif
    const std::uint64_t programs = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 10000;
    const std::uint64_t first = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 0;
    std::uint64_t compiled = 0;
    for (std::uint64_t i = 0; i < programs; ++i) Run(first + i, compiled);
    std::printf("%llu programs, %llu of them compiled\n", static_cast<unsigned long long>(programs),
                static_cast<unsigned long long>(compiled));
    return 0;
}
