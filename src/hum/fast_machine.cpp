// The machine as fast as portable code gets it: one indirect jump from each instruction's handler
// to the next one's, and what the loop needs in locals of one function.

#include <cmath>

#include "builtin_calls.h"
#include "fast_code.h"
#include "formulas.h"
#include "hum/arithmetic.h"

// Labels as values, which every compiler of this house offers though the standard does not.
#pragma GCC diagnostic ignored "-Wpedantic"

namespace hum {
namespace {

// What the simple instructions do.
struct Simple {
    Frame& frame;
    std::uint32_t* memory;

    using In = const Instruction&;

    void Nop(In) const {}
    void Li(In in) const { frame.i[in.rd] = in.imm; }
    void Lf(In in) const { frame.f[in.rd] = std::bit_cast<float>(in.imm); }
    void Mov(In in) const { frame.i[in.rd] = frame.i[in.ra]; }
    void Fmov(In in) const { frame.f[in.rd] = frame.f[in.ra]; }

    std::uint32_t& At(In in) const { return memory[static_cast<std::uint32_t>(in.imm)]; }
    void LoadAt(In in) const { frame.i[in.rd] = static_cast<std::int32_t>(At(in)); }
    void StoreAt(In in) const { At(in) = static_cast<std::uint32_t>(frame.i[in.ra]); }
    void LoadfAt(In in) const { frame.f[in.rd] = std::bit_cast<float>(At(in)); }
    void StorefAt(In in) const { At(in) = FloatWord(frame.f[in.ra]); }
    void LeaAt(In in) const { frame.i[in.rd] = in.imm; }
    void Lea(In in) const { frame.i[in.rd] = hum::Add(frame.i[in.rb], in.imm); }
    void Fpget(In in) const {
        frame.i[in.rd] = hum::Add(static_cast<std::int32_t>(frame.address), in.imm);
    }

#define HUM_INTS(name, expression)             \
    void name(In in) const {                   \
        const std::int32_t a = frame.i[in.ra]; \
        const std::int32_t b = frame.i[in.rb]; \
        frame.i[in.rd] = (expression);         \
    }
    HUM_INTS(Add, hum::Add(a, b))
    HUM_INTS(Sub, Subtract(a, b))
    HUM_INTS(Mul, Multiply(a, b))
    HUM_INTS(Div, Divide(a, b))
    HUM_INTS(Mod, Remainder(a, b))
    HUM_INTS(And, a& b)
    HUM_INTS(Or, a | b)
    HUM_INTS(Xor, a ^ b)
    HUM_INTS(Shl, ShiftLeft(a, b))
    HUM_INTS(Shr, ShiftRightZeros(a, b))
    HUM_INTS(Sar, ShiftRight(a, b))
    HUM_INTS(Cmpeq, a == b)
    HUM_INTS(Cmpne, a != b)
    HUM_INTS(Cmplt, a < b)
    HUM_INTS(Cmple, a <= b)
    HUM_INTS(Cmpgt, a > b)
    HUM_INTS(Cmpge, a >= b)
#undef HUM_INTS

#define HUM_FLOATS(name, kind, expression) \
    void name(In in) const {               \
        const float a = frame.f[in.ra];    \
        const float b = frame.f[in.rb];    \
        frame.kind[in.rd] = (expression);  \
    }
    HUM_FLOATS(Addf, f, a + b)
    HUM_FLOATS(Subf, f, a - b)
    HUM_FLOATS(Mulf, f, a* b)
    HUM_FLOATS(Divf, f, a / b)
    HUM_FLOATS(Fmod, f, std::fmod(a, b))
    HUM_FLOATS(Fcmpeq, i, a == b)
    HUM_FLOATS(Fcmpne, i, a != b)
    HUM_FLOATS(Fcmplt, i, a < b)
    HUM_FLOATS(Fcmple, i, a <= b)
    HUM_FLOATS(Fcmpgt, i, a > b)
    HUM_FLOATS(Fcmpge, i, a >= b)
#undef HUM_FLOATS

    void Neg(In in) const {
        frame.i[in.rd] = Subtract(0, frame.i[in.ra]);
    }
    void Not(In in) const {
        frame.i[in.rd] = ~frame.i[in.ra];
    }
    void Negf(In in) const {
        frame.f[in.rd] = -frame.f[in.ra];
    }
    void I2f(In in) const {
        frame.f[in.rd] = static_cast<float>(frame.i[in.ra]);
    }
    void F2i(In in) const {
        frame.i[in.rd] = ToInt(frame.f[in.ra]);
    }
};

// An instruction known to read the register that the one before has filled. Saying so lets the
// compiler keep the value at hand.
inline Instruction Linked(Instruction in, std::uint8_t Instruction::*link, std::uint8_t filled) {
    in.*link = filled;
    return in;
}

// The third of four, which reads what the first and the second have filled.
inline Instruction Joined(const Instruction* four) {
    Instruction in = four[2];
    in.ra = four[0].rd;
    in.rb = four[1].rd;
    return in;
}

// Copies a call's arguments to the start of a function's frame; those beyond the caller's last
// register are zero.
bool EnterFunction(Runtime& runtime, Coroutine& co, const Instruction& in,
                   const std::vector<Instruction>& code) {
    if (co.depth == 0) return runtime.Fail(Trouble::CallUnderflow);
    Frame& frame = co.frames[co.depth];
    const auto words = static_cast<std::uint32_t>(in.imm);
    const std::uint32_t copied = static_cast<std::uint32_t>(in.ra) + in.rb;
    const std::uint32_t room = co.stack_begin + kStackWords - co.stack;
    if (words > room || copied > room) return runtime.Fail(Trouble::FrameOverflow);
    const Instruction& call = code[frame.return_pc - 1];
    const Frame& caller = co.frames[co.depth - 1];
    std::uint32_t* to = runtime.memory + co.stack;
    for (std::uint32_t k = call.ra; k < call.ra + std::uint32_t{in.ra}; ++k) {
        *to++ = k < kIntRegisters ? static_cast<std::uint32_t>(caller.i[k]) : 0;
    }
    for (std::uint32_t k = call.rb; k < call.rb + std::uint32_t{in.rb}; ++k) {
        *to++ = k < kFloatRegisters ? FloatWord(caller.f[k]) : 0;
    }
    frame.address = co.stack;
    frame.i[kFrameRegister] = static_cast<std::int32_t>(co.stack);
    co.stack += words;
    frame.floor = co.stack;
    return true;
}

// An element's address by its index; false when the index is outside.
inline bool Element(const Frame& frame, const Instruction& in, std::uint32_t& address) {
    const std::int32_t index = frame.i[in.ra];
    address = static_cast<std::uint32_t>(
        hum::Add(frame.i[in.rb], Multiply(index, static_cast<std::int32_t>(in.pos))));
    // No count below 1 has an index within it.
    return in.imm > 0 && static_cast<std::uint32_t>(index) < static_cast<std::uint32_t>(in.imm);
}

// The same with the index taken round; false only for a ring without elements.
inline bool RingElement(const Frame& frame, const Instruction& in, std::uint32_t& address) {
    std::int32_t index = frame.i[in.ra];
    if (in.imm > 0 && static_cast<std::uint32_t>(index) >= static_cast<std::uint32_t>(in.imm)) {
        index %= in.imm;
        if (index < 0) index += in.imm;
    }
    address = static_cast<std::uint32_t>(
        hum::Add(frame.i[in.rb], Multiply(index, static_cast<std::int32_t>(in.pos))));
    return in.imm > 0;
}

// Runs code, or, without a coroutine, tells where the handlers are.
bool Execute(Runtime* runtime_or_none, Coroutine* coroutine, const std::vector<Instruction>* all,
             const std::int32_t** handlers) {
#define HUM_ONE(name) \
    static_cast<std::int32_t>(static_cast<char*>(&&at_##name) - static_cast<char*>(&&at_Nop)),
#define HUM_TWO(first, second, link) HUM_ONE(first##_##second)
#define HUM_FOUR(first, second, third, fourth) HUM_ONE(first##_##second##_##third##_##fourth)
#define HUM_BUILTIN(name, function) HUM_ONE(Call_##name)
    static const std::int32_t offsets[] = {
        HUM_FAST_SIMPLE(HUM_ONE) HUM_FAST_OTHER(HUM_ONE) HUM_FAST_PAIRS(HUM_TWO)
            HUM_FAST_BRANCHES(HUM_TWO) HUM_FAST_CHECKED(HUM_TWO) HUM_FAST_COUNTERS(HUM_FOUR)
                HUM_FAST_HEADS(HUM_FOUR) HUM_FAST_BUILTINS(HUM_BUILTIN)};
#undef HUM_ONE
#undef HUM_TWO
#undef HUM_FOUR
#undef HUM_BUILTIN
    if (coroutine == nullptr) {
        *handlers = offsets;
        return true;
    }

    Runtime& runtime = *runtime_or_none;
    Coroutine& co = *coroutine;
    const Instruction* const code = all->data();
    std::uint32_t* const memory = runtime.memory;
    const std::uint32_t span = runtime.size - kNullWords;
    const char* const first = static_cast<const char*>(&&at_Nop);
    const std::int64_t limit = runtime.limit;
    const Instruction* ip = code + co.pc;
    Frame* frame = &co.frames[co.depth];
    // What was executed is this plus the next instruction's index; so straight code needs no
    // counting.
    std::int64_t used = -static_cast<std::int64_t>(co.pc);
    std::uint32_t address = 0;
    Trouble trouble = Trouble::None;

#define HUM_DISPATCH goto* const_cast<char*>(first + ip->aux)
#define HUM_NEXT(count) \
    ip += (count);      \
    HUM_DISPATCH
#define HUM_FAIL(what)    \
    do {                  \
        trouble = (what); \
        goto failed;      \
    } while (false)
#define HUM_BUDGET(index) HUM_MUST(used + (index) + runtime.extra <= limit, Trouble::Runaway)
// Takes the jump at ip.
#define HUM_TAKE                               \
    do {                                       \
        const std::int64_t distance = ip->imm; \
        used += 1 - distance;                  \
        if (distance <= 0) {                   \
            HUM_BUDGET(ip - code + distance);  \
        }                                      \
        ip += distance;                        \
        HUM_DISPATCH;                          \
    } while (false)
#define HUM_TARGET(in)                     \
    static_cast<std::uint32_t>((in).imm) + \
        ((in).rb == kAbsolute ? 0u : static_cast<std::uint32_t>(frame->i[(in).rb]))
#define HUM_CHECK(what) \
    if (address - kNullWords >= span) HUM_FAIL(what)
#define HUM_MUST(condition, what) \
    if (!(condition)) HUM_FAIL(what)

    if (co.pc >= all->size()) {
        runtime.trouble_pc = 0;
        return runtime.Fail(Trouble::InvalidCounter);
    }
    HUM_DISPATCH;

#define HUM_ONE(name)                             \
    at_##name : Simple{*frame, memory}.name(*ip); \
    HUM_NEXT(1);
    HUM_FAST_SIMPLE(HUM_ONE)
#undef HUM_ONE

#define HUM_TWO(one, two, link)                                  \
    at_##one##_##two : {                                         \
        const Simple simple{*frame, memory};                     \
        simple.one(ip[0]);                                       \
        simple.two(Linked(ip[1], &Instruction::link, ip[0].rd)); \
        HUM_NEXT(2);                                             \
    }
    HUM_FAST_PAIRS(HUM_TWO)
#undef HUM_TWO

#define HUM_TWO(one, two, link)                                          \
    at_##one##_##two : Simple{*frame, memory}.one(*ip);                  \
    ++ip;                                                                \
    HUM_WHEN_##two(Linked(*ip, &Instruction::link, ip[-1].rd)) HUM_TAKE; \
    HUM_NEXT(1);
#define HUM_WHEN_Jmp(in) if (true)
#define HUM_WHEN_Jz(in) if (frame->i[(in).ra] == 0)
#define HUM_WHEN_Jnz(in) if (frame->i[(in).ra] != 0)
    HUM_FAST_BRANCHES(HUM_TWO)
#undef HUM_TWO

#define HUM_BUILTIN(name, function)                                                              \
    at_Call_##name : if (!Invoke<formula::function>(runtime, *frame, *ip)) goto built_in_failed; \
    HUM_NEXT(1);
    HUM_FAST_BUILTINS(HUM_BUILTIN)
#undef HUM_BUILTIN

at_Jmp:
    HUM_TAKE;
at_Jz:
    HUM_WHEN_Jz(*ip) HUM_TAKE;
    HUM_NEXT(1);
at_Jnz:
    HUM_WHEN_Jnz(*ip) HUM_TAKE;
    HUM_NEXT(1);
at_JzBad:
    HUM_WHEN_Jz(*ip) HUM_FAIL(Trouble::InvalidCounter);
    HUM_NEXT(1);
at_JnzBad:
    HUM_WHEN_Jnz(*ip) HUM_FAIL(Trouble::InvalidCounter);
    HUM_NEXT(1);
at_JmpBad:
at_CallBad:
    HUM_FAIL(Trouble::InvalidCounter);

#define HUM_DO_Load(in)          \
    address = HUM_TARGET(in);    \
    HUM_CHECK(Trouble::IntLoad); \
    frame->i[(in).rd] = static_cast<std::int32_t>(memory[address])
#define HUM_DO_Loadf(in)           \
    address = HUM_TARGET(in);      \
    HUM_CHECK(Trouble::FloatLoad); \
    frame->f[(in).rd] = std::bit_cast<float>(memory[address])
#define HUM_DO_Store(in)       \
    address = HUM_TARGET(in);  \
    HUM_CHECK(Trouble::Store); \
    memory[address] = static_cast<std::uint32_t>(frame->i[(in).ra])
#define HUM_DO_Storef(in)      \
    address = HUM_TARGET(in);  \
    HUM_CHECK(Trouble::Store); \
    memory[address] = FloatWord(frame->f[(in).ra])
#define HUM_ONE(name)               \
    at_##name : HUM_DO_##name(*ip); \
    HUM_NEXT(1);
#define HUM_TWO(one, two, link)                               \
    at_##one##_##two : Simple{*frame, memory}.one(*ip);       \
    ++ip;                                                     \
    HUM_DO_##two(Linked(*ip, &Instruction::link, ip[-1].rd)); \
    HUM_NEXT(1);
    HUM_ONE(Load)
    HUM_ONE(Loadf)
    HUM_ONE(Store)
    HUM_ONE(Storef)
    HUM_FAST_CHECKED(HUM_TWO)
#undef HUM_ONE
#undef HUM_TWO

#define HUM_FOUR(one, two, three, four)                         \
    at_##one##_##two##_##three##_##four : {                     \
        const Simple simple{*frame, memory};                    \
        simple.one(ip[0]);                                      \
        simple.two(ip[1]);                                      \
        simple.three(Joined(ip));                               \
        simple.four(Linked(ip[3], &Instruction::ra, ip[2].rd)); \
        HUM_NEXT(4);                                            \
    }
    HUM_FAST_COUNTERS(HUM_FOUR)
#undef HUM_FOUR
#define HUM_FOUR(one, two, three, four)                                     \
    at_##one##_##two##_##three##_##four : {                                 \
        const Simple simple{*frame, memory};                                \
        simple.one(ip[0]);                                                  \
        simple.two(ip[1]);                                                  \
        simple.three(Joined(ip));                                           \
        ip += 3;                                                            \
        HUM_WHEN_##four(Linked(*ip, &Instruction::ra, ip[-1].rd)) HUM_TAKE; \
        HUM_NEXT(1);                                                        \
    }
    HUM_FAST_HEADS(HUM_FOUR)
#undef HUM_FOUR

at_Call : {
    HUM_MUST(co.depth + 1 < kMaxFrames, Trouble::CallOverflow);
    frame = &co.frames[++co.depth];
    frame->return_pc = static_cast<std::uint32_t>(ip - code) + 1;
    frame->address = co.stack;
    frame->stack_at_call = co.stack;
    frame->floor = co.stack;
    used += frame->return_pc - static_cast<std::int64_t>(ip->imm);
    HUM_BUDGET(ip->imm);
    ip = code + ip->imm;
    HUM_DISPATCH;
}
at_Enter:
    if (!EnterFunction(runtime, co, *ip, *all)) goto built_in_failed;
    HUM_NEXT(1);
at_Ret : {
    HUM_MUST(co.depth > 0, Trouble::CallUnderflow);
    HUM_MUST(co.stack == frame->floor, Trouble::DamagedStack);
    Frame* const caller = &co.frames[--co.depth];
    const Instruction* const back = code + frame->return_pc;
    if (ip->imm == 1) caller->i[back[-1].rd] = frame->i[ip->ra];
    if (ip->imm == 2) caller->f[back[-1].rd] = frame->f[ip->ra];
    co.stack = frame->stack_at_call;
    used += ip + 1 - back;
    frame = caller;
    ip = back;
    HUM_DISPATCH;
}

at_Halt:
    co.finished = true;
    ++ip;
    goto left;
at_Wait : {
    HUM_MUST(co.kind == Coroutine::Kind::Module, Trouble::MasterWaits);
    const std::int64_t samples = frame->i[ip->ra];
    if (ip->imm == 0) {
        co.wake = runtime.sample + (samples > 0 ? samples : 0) + 1;
        co.carry = 0;
        ++ip;
        goto left;
    }
    if (samples > 0) {
        co.wake = runtime.sample + samples;
        ++ip;
        goto left;
    }
    HUM_NEXT(1);
}
at_This:
    frame->i[ip->rd] = static_cast<std::int32_t>(co.output_address);
    HUM_NEXT(1);
at_Push:
    HUM_MUST(co.stack - co.stack_begin < kStackWords, Trouble::FrameOverflow);
    memory[co.stack++] = static_cast<std::uint32_t>(frame->i[ip->ra]);
    HUM_NEXT(1);
at_Pushf:
    HUM_MUST(co.stack - co.stack_begin < kStackWords, Trouble::FrameOverflow);
    memory[co.stack++] = FloatWord(frame->f[ip->ra]);
    HUM_NEXT(1);
at_Pop:
    HUM_MUST(co.stack > frame->floor, Trouble::DamagedStack);
    frame->i[ip->rd] = static_cast<std::int32_t>(memory[--co.stack]);
    HUM_NEXT(1);
at_Popf:
    HUM_MUST(co.stack > frame->floor, Trouble::DamagedStack);
    frame->f[ip->rd] = std::bit_cast<float>(memory[--co.stack]);
    HUM_NEXT(1);
at_Svc:
    if (!kBuiltinCode[ip->imm](runtime, *frame, *ip)) goto built_in_failed;
    HUM_NEXT(1);

#define HUM_ELEMENT(name, find, what, action)               \
    at_##name : HUM_MUST(find(*frame, *ip, address), what); \
    HUM_CHECK(what);                                        \
    action;                                                 \
    HUM_NEXT(1);
#define HUM_LOAD_INT frame->i[ip->rd] = static_cast<std::int32_t>(memory[address])
#define HUM_LOAD_FLOAT frame->f[ip->rd] = std::bit_cast<float>(memory[address])
#define HUM_STORE_INT memory[address] = static_cast<std::uint32_t>(frame->i[ip->rd])
#define HUM_STORE_FLOAT memory[address] = FloatWord(frame->f[ip->rd])
    HUM_ELEMENT(Aload, Element, Trouble::IntLoad, HUM_LOAD_INT)
    HUM_ELEMENT(Aloadf, Element, Trouble::FloatLoad, HUM_LOAD_FLOAT)
    HUM_ELEMENT(Astore, Element, Trouble::Store, HUM_STORE_INT)
    HUM_ELEMENT(Astoref, Element, Trouble::Store, HUM_STORE_FLOAT)
    HUM_ELEMENT(Aloadw, RingElement, Trouble::IntLoad, HUM_LOAD_INT)
    HUM_ELEMENT(Aloadwf, RingElement, Trouble::FloatLoad, HUM_LOAD_FLOAT)
    HUM_ELEMENT(Astorew, RingElement, Trouble::Store, HUM_STORE_INT)
    HUM_ELEMENT(Astorewf, RingElement, Trouble::Store, HUM_STORE_FLOAT)
at_Arowa:
    HUM_MUST(Element(*frame, *ip, address), Trouble::IntLoad);
    frame->i[ip->rd] = static_cast<std::int32_t>(address);
    HUM_NEXT(1);
at_Aroww:
    HUM_MUST(RingElement(*frame, *ip, address), Trouble::IntLoad);
    frame->i[ip->rd] = static_cast<std::int32_t>(address);
    HUM_NEXT(1);

at_Unknown:
    HUM_FAIL(Trouble::UnknownOpcode);
at_End:
    --used;
    HUM_FAIL(Trouble::WalkedOff);

failed:
    runtime.Fail(trouble, address);
built_in_failed:
    runtime.trouble_pc = static_cast<std::uint32_t>(ip - code);
    runtime.instructions += used + (ip - code) + 1;
    return false;

left:
    co.pc = static_cast<std::uint32_t>(ip - code);
    runtime.instructions += used + (ip - code);
    return true;
}

}  // namespace

const std::int32_t* FastHandlers() {
    const std::int32_t* handlers = nullptr;
    Execute(nullptr, nullptr, nullptr, &handlers);
    return handlers;
}

bool ResumeFast(Runtime& runtime, Coroutine& coroutine, const std::vector<Instruction>& code) {
    return Execute(&runtime, &coroutine, &code, nullptr);
}

}  // namespace hum
