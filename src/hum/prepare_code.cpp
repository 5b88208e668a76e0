#include "builtin_calls.h"
#include "hum/builtins.h"
#include "hum/opcodes.h"
#include "machine_state.h"

namespace hum {
namespace {

bool IntsFit(std::uint32_t a, std::uint32_t b = 0, std::uint32_t c = 0) {
    return a < kIntRegisters && b < kIntRegisters && c < kIntRegisters;
}

// As many floats as ints are in a frame, so that one test does for both kinds.
static_assert(kIntRegisters == kFloatRegisters);

bool SvcFits(const Instruction& in) {
    if (static_cast<std::uint32_t>(in.imm) >= kBuiltinCount) return false;
    const Builtin& builtin = kBuiltins[in.imm];
    std::uint32_t ints = in.ra;
    std::uint32_t floats = in.rb;
    for (const char letter : builtin.arguments) ++(letter == 'f' ? floats : ints);
    const bool result_fits = builtin.result == 'v' || in.rd < kIntRegisters;
    return ints <= kIntRegisters && floats <= kFloatRegisters && result_fits;
}

bool RawFits(const Instruction& in) {
    switch (static_cast<Op>(in.op)) {
        case Op::Call:
            return in.rd < kIntRegisters && in.ra <= kIntRegisters && in.rb <= kFloatRegisters;
        case Op::Enter:
            return in.ra <= kIntRegisters && in.rb <= kFloatRegisters;
        case Op::Ret:
            return (in.imm != 1 && in.imm != 2) || IntsFit(in.ra);
        case Op::Wait:
            return IntsFit(in.ra);
        case Op::Fpget:
            return IntsFit(in.rd);
        default:
            return SvcFits(in);
    }
}

bool Fits(const Instruction& in) {
    if (in.op >= kOpcodeCount) return false;
    const bool base_fits = in.rb == kAbsolute || IntsFit(in.rb);
    switch (kOpcodes[in.op].form) {
        case Form::None:
        case Form::Jump:
            return true;
        case Form::LoadInt:
        case Form::LoadFloat:
        case Form::IntTarget:
        case Form::FloatTarget:
            return IntsFit(in.rd);
        case Form::JumpIf:
        case Form::IntSource:
        case Form::FloatSource:
            return IntsFit(in.ra);
        case Form::Ints2:
        case Form::Floats2:
        case Form::IntToFloat:
        case Form::FloatToInt:
            return IntsFit(in.rd, in.ra);
        case Form::Ints3:
        case Form::Floats3:
        case Form::CompareFloats:
        case Form::IntElement:
        case Form::FloatElement:
            return IntsFit(in.rd, in.ra, in.rb);
        case Form::MemoryToInt:
        case Form::MemoryToFloat:
            return base_fits && IntsFit(in.rd);
        case Form::IntToMemory:
        case Form::FloatToMemory:
            return base_fits && IntsFit(in.ra);
        case Form::Raw:
            return RawFits(in);
    }
    return false;
}

}  // namespace

std::vector<Instruction> PrepareCode(const Program& program) {
    std::vector<Instruction> code = program.code;
    for (Instruction& instruction : code) {
        if (!Fits(instruction)) instruction.op = kUnknownOp;
    }
    code.push_back({});
    code.back().op = kEndOp;
    return code;
}

}  // namespace hum
