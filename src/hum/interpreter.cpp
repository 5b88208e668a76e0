// The machine in its plainest form: one instruction at a time, each checked where it stands. The
// fast one is held to give the same samples.

#include <cmath>

#include "builtin_calls.h"
#include "hum/arithmetic.h"
#include "hum/opcodes.h"
#include "machine_state.h"

namespace hum {
namespace {

class Interpreter {
public:
    Interpreter(Runtime& runtime, Coroutine& coroutine, const std::vector<Instruction>& code)
        : runtime_(runtime), co_(coroutine), code_(code) {}

    bool Run() {
        bool good = true;
        pc_ = co_.pc;
        runs_ = pc_ < code_.size();
        if (!runs_) good = runtime_.Fail(Trouble::InvalidCounter);
        while (good && runs_) {
            at_ = pc_++;
            ++count_;
            good = Step(code_[at_], co_.frames[co_.depth]);
        }
        if (!good) runtime_.trouble_pc = at_;
        co_.pc = pc_;
        runtime_.instructions += count_;
        return good;
    }

private:
    bool Step(const Instruction& in, Frame& frame);
    bool StepFloat(const Instruction& in, Frame& frame);
    bool StepControl(const Instruction& in, Frame& frame);
    bool StepElement(const Instruction& in, Frame& frame);
    bool Compare(const Instruction& in, Frame& frame);

    std::uint32_t Target(const Instruction& in, const Frame& frame) const {
        const auto offset = static_cast<std::uint32_t>(in.imm);
        return in.rb == kAbsolute ? offset : offset + static_cast<std::uint32_t>(frame.i[in.rb]);
    }

    bool Access(Trouble kind, std::uint32_t address) {
        return runtime_.InMemory(address) || runtime_.Fail(kind, address);
    }

    // The budget is looked at where a loop or a recursion must pass.
    bool Budget() {
        return count_ + runtime_.extra <= runtime_.limit || runtime_.Fail(Trouble::Runaway);
    }

    bool Jump(std::int32_t target) {
        const auto to = static_cast<std::uint32_t>(target);
        if (to >= code_.size() - 1) return runtime_.Fail(Trouble::InvalidCounter);
        pc_ = to;
        return to > at_ || Budget();
    }

    bool Call(const Instruction& in);
    bool Enter(const Instruction& in, Frame& frame);
    bool Return(const Instruction& in, Frame& frame);
    bool Wait(const Instruction& in, Frame& frame);
    bool Push(std::uint32_t word);
    bool Pop(Frame& frame, std::uint32_t& word);

    Runtime& runtime_;
    Coroutine& co_;
    const std::vector<Instruction>& code_;
    std::uint32_t pc_ = 0;
    std::uint32_t at_ = 0;  // of the instruction under way
    std::int64_t count_ = 0;
    bool runs_ = true;
};

bool Interpreter::Step(const Instruction& in, Frame& frame) {
    std::int32_t* i = frame.i;
    float* f = frame.f;
    std::uint32_t address = 0;
    switch (static_cast<Op>(in.op)) {
        case Op::Nop:
            return true;
        case Op::Li:
            i[in.rd] = in.imm;
            return true;
        case Op::Lf:
            f[in.rd] = std::bit_cast<float>(in.imm);
            return true;
        case Op::Mov:
            i[in.rd] = i[in.ra];
            return true;
        case Op::Fmov:
            f[in.rd] = f[in.ra];
            return true;
        case Op::Load:
            address = Target(in, frame);
            if (!Access(Trouble::IntLoad, address)) return false;
            i[in.rd] = static_cast<std::int32_t>(runtime_.memory[address]);
            return true;
        case Op::Store:
            address = Target(in, frame);
            if (!Access(Trouble::Store, address)) return false;
            runtime_.memory[address] = static_cast<std::uint32_t>(i[in.ra]);
            return true;
        case Op::Loadf:
            address = Target(in, frame);
            if (!Access(Trouble::FloatLoad, address)) return false;
            f[in.rd] = runtime_.Float(address);
            return true;
        case Op::Storef:
            address = Target(in, frame);
            if (!Access(Trouble::Store, address)) return false;
            runtime_.SetFloat(address, f[in.ra]);
            return true;
        case Op::Lea:
            i[in.rd] = static_cast<std::int32_t>(Target(in, frame));
            return true;
        case Op::Add:
            i[in.rd] = hum::Add(i[in.ra], i[in.rb]);
            return true;
        case Op::Sub:
            i[in.rd] = Subtract(i[in.ra], i[in.rb]);
            return true;
        case Op::Mul:
            i[in.rd] = Multiply(i[in.ra], i[in.rb]);
            return true;
        case Op::Div:
            i[in.rd] = Divide(i[in.ra], i[in.rb]);
            return true;
        case Op::Mod:
            i[in.rd] = Remainder(i[in.ra], i[in.rb]);
            return true;
        case Op::And:
            i[in.rd] = i[in.ra] & i[in.rb];
            return true;
        case Op::Or:
            i[in.rd] = i[in.ra] | i[in.rb];
            return true;
        case Op::Xor:
            i[in.rd] = i[in.ra] ^ i[in.rb];
            return true;
        case Op::Shl:
            i[in.rd] = ShiftLeft(i[in.ra], i[in.rb]);
            return true;
        case Op::Shr:
            i[in.rd] = ShiftRightZeros(i[in.ra], i[in.rb]);
            return true;
        case Op::Sar:
            i[in.rd] = ShiftRight(i[in.ra], i[in.rb]);
            return true;
        case Op::Neg:
            i[in.rd] = Subtract(0, i[in.ra]);
            return true;
        case Op::Not:
            i[in.rd] = ~i[in.ra];
            return true;
        default:
            return StepFloat(in, frame);
    }
}

bool Interpreter::StepFloat(const Instruction& in, Frame& frame) {
    float* f = frame.f;
    switch (static_cast<Op>(in.op)) {
        case Op::Addf:
            f[in.rd] = f[in.ra] + f[in.rb];
            return true;
        case Op::Subf:
            f[in.rd] = f[in.ra] - f[in.rb];
            return true;
        case Op::Mulf:
            f[in.rd] = f[in.ra] * f[in.rb];
            return true;
        case Op::Divf:
            f[in.rd] = f[in.ra] / f[in.rb];
            return true;
        case Op::Fmod:
            f[in.rd] = std::fmod(f[in.ra], f[in.rb]);
            return true;
        case Op::Negf:
            f[in.rd] = -f[in.ra];
            return true;
        case Op::I2f:
            f[in.rd] = static_cast<float>(frame.i[in.ra]);
            return true;
        case Op::F2i:
            frame.i[in.rd] = ToInt(f[in.ra]);
            return true;
        default:
            break;
    }
    if (in.op >= static_cast<std::uint8_t>(Op::Cmpeq) &&
        in.op <= static_cast<std::uint8_t>(Op::Fcmpge)) {
        return Compare(in, frame);
    }
    return StepControl(in, frame);
}

bool Interpreter::Compare(const Instruction& in, Frame& frame) {
    const auto compare = [](std::uint32_t which, auto a, auto b) {
        switch (which) {
            case 0:
                return a == b;
            case 1:
                return a != b;
            case 2:
                return a < b;
            case 3:
                return a <= b;
            case 4:
                return a > b;
            default:
                return a >= b;
        }
    };
    const std::uint32_t which = in.op - static_cast<std::uint32_t>(Op::Cmpeq);
    frame.i[in.rd] = which < 6 ? compare(which, frame.i[in.ra], frame.i[in.rb])
                               : compare(which - 6, frame.f[in.ra], frame.f[in.rb]);
    return true;
}

bool Interpreter::StepControl(const Instruction& in, Frame& frame) {
    switch (in.op) {
        case kUnknownOp:
            return runtime_.Fail(Trouble::UnknownOpcode);
        case kEndOp:
            --count_;
            return runtime_.Fail(Trouble::WalkedOff);
        default:
            break;
    }
    std::uint32_t word = 0;
    switch (static_cast<Op>(in.op)) {
        case Op::Halt:
            co_.finished = true;
            runs_ = false;
            return true;
        case Op::Jmp:
            return Jump(in.imm);
        case Op::Jz:
            return frame.i[in.ra] != 0 || Jump(in.imm);
        case Op::Jnz:
            return frame.i[in.ra] == 0 || Jump(in.imm);
        case Op::Call:
            return Call(in);
        case Op::Enter:
            return Enter(in, frame);
        case Op::Ret:
            return Return(in, frame);
        case Op::Wait:
            return Wait(in, frame);
        case Op::This:
            frame.i[in.rd] = static_cast<std::int32_t>(co_.output_address);
            return true;
        case Op::Push:
            return Push(static_cast<std::uint32_t>(frame.i[in.ra]));
        case Op::Pushf:
            return Push(FloatWord(frame.f[in.ra]));
        case Op::Pop:
            if (!Pop(frame, word)) return false;
            frame.i[in.rd] = static_cast<std::int32_t>(word);
            return true;
        case Op::Popf:
            if (!Pop(frame, word)) return false;
            frame.f[in.rd] = std::bit_cast<float>(word);
            return true;
        case Op::Fpget:
            frame.i[in.rd] = hum::Add(static_cast<std::int32_t>(frame.address), in.imm);
            return true;
        case Op::Svc:
            return kBuiltinCode[in.imm](runtime_, frame, in);
        default:
            return StepElement(in, frame);
    }
}

bool Interpreter::StepElement(const Instruction& in, Frame& frame) {
    const Op op = static_cast<Op>(in.op);
    const bool wraps = op == Op::Aloadw || op == Op::Aloadwf || op == Op::Astorew ||
                       op == Op::Astorewf || op == Op::Aroww;
    const bool stores =
        op == Op::Astore || op == Op::Astoref || op == Op::Astorew || op == Op::Astorewf;
    const bool is_float =
        op == Op::Aloadf || op == Op::Aloadwf || op == Op::Astoref || op == Op::Astorewf;
    const Trouble trouble = stores     ? Trouble::Store
                            : is_float ? Trouble::FloatLoad
                                       : Trouble::IntLoad;
    std::int32_t index = frame.i[in.ra];
    const std::int32_t base = frame.i[in.rb];
    if (wraps && in.imm > 0) {
        index %= in.imm;
        if (index < 0) index += in.imm;
    }
    const auto address = static_cast<std::uint32_t>(hum::Add(base, Multiply(index, in.aux)));
    if (in.imm <= 0 || index < 0 || index >= in.imm) return runtime_.Fail(trouble, address);
    if (op == Op::Arowa || op == Op::Aroww) {
        frame.i[in.rd] = static_cast<std::int32_t>(address);
        return true;
    }
    if (!Access(trouble, address)) return false;
    if (stores && is_float) {
        runtime_.SetFloat(address, frame.f[in.rd]);
    } else if (stores) {
        runtime_.memory[address] = static_cast<std::uint32_t>(frame.i[in.rd]);
    } else if (is_float) {
        frame.f[in.rd] = runtime_.Float(address);
    } else {
        frame.i[in.rd] = static_cast<std::int32_t>(runtime_.memory[address]);
    }
    return true;
}

bool Interpreter::Call(const Instruction& in) {
    const auto to = static_cast<std::uint32_t>(in.imm);
    if (to >= code_.size() - 1) return runtime_.Fail(Trouble::InvalidCounter);
    if (co_.depth + 1 >= kMaxFrames) return runtime_.Fail(Trouble::CallOverflow);
    Frame& frame = co_.frames[++co_.depth];
    frame.return_pc = pc_;
    frame.address = co_.stack;
    frame.stack_at_call = co_.stack;
    frame.floor = co_.stack;
    pc_ = to;
    return Budget();
}

bool Interpreter::Enter(const Instruction& in, Frame& frame) {
    if (co_.depth == 0) return runtime_.Fail(Trouble::CallUnderflow);
    const std::uint32_t copied = static_cast<std::uint32_t>(in.ra) + in.rb;
    const auto words = static_cast<std::uint32_t>(in.imm);
    const std::uint32_t room = co_.stack_begin + kStackWords - co_.stack;
    if (words > room || copied > room) return runtime_.Fail(Trouble::FrameOverflow);
    const Instruction& call = code_[frame.return_pc - 1];
    const Frame& caller = co_.frames[co_.depth - 1];
    std::uint32_t* to = runtime_.memory + co_.stack;
    // Arguments beyond the caller's last register are zero.
    for (std::uint32_t k = call.ra; k < call.ra + std::uint32_t{in.ra}; ++k) {
        *to++ = k < kIntRegisters ? static_cast<std::uint32_t>(caller.i[k]) : 0;
    }
    for (std::uint32_t k = call.rb; k < call.rb + std::uint32_t{in.rb}; ++k) {
        *to++ = k < kFloatRegisters ? FloatWord(caller.f[k]) : 0;
    }
    frame.address = co_.stack;
    frame.i[kFrameRegister] = static_cast<std::int32_t>(co_.stack);
    co_.stack += words;
    frame.floor = co_.stack;
    return true;
}

bool Interpreter::Return(const Instruction& in, Frame& frame) {
    if (co_.depth == 0) return runtime_.Fail(Trouble::CallUnderflow);
    if (co_.stack != frame.floor) return runtime_.Fail(Trouble::DamagedStack);
    Frame& caller = co_.frames[--co_.depth];
    const Instruction& call = code_[frame.return_pc - 1];
    if (in.imm == 1) caller.i[call.rd] = frame.i[in.ra];
    if (in.imm == 2) caller.f[call.rd] = frame.f[in.ra];
    co_.stack = frame.stack_at_call;
    pc_ = frame.return_pc;
    return true;
}

bool Interpreter::Wait(const Instruction& in, Frame& frame) {
    if (co_.kind != Coroutine::Kind::Module) return runtime_.Fail(Trouble::MasterWaits);
    const std::int64_t samples = frame.i[in.ra];
    if (in.imm == 0) {
        co_.wake = runtime_.sample + (samples > 0 ? samples : 0) + 1;
        co_.carry = 0;
        runs_ = false;
    } else if (samples > 0) {
        co_.wake = runtime_.sample + samples;
        runs_ = false;
    }
    return true;
}

bool Interpreter::Push(std::uint32_t word) {
    if (co_.stack - co_.stack_begin >= kStackWords) return runtime_.Fail(Trouble::FrameOverflow);
    runtime_.memory[co_.stack++] = word;
    return true;
}

bool Interpreter::Pop(Frame& frame, std::uint32_t& word) {
    if (co_.stack <= frame.floor) return runtime_.Fail(Trouble::DamagedStack);
    word = runtime_.memory[--co_.stack];
    return true;
}

}  // namespace

bool ResumePlain(Runtime& runtime, Coroutine& coroutine, const std::vector<Instruction>& code) {
    return Interpreter(runtime, coroutine, code).Run();
}

}  // namespace hum
