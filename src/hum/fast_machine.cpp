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

// What the instructions do that do not jump; false when one has failed.
struct Step {
    Runtime& runtime;
    Frame& frame;
    std::uint32_t* memory;
    std::uint32_t span;  // words of memory behind the null area

    using In = const Instruction&;

    bool Nop(In) const { return true; }
    bool SetInt(In in, std::int32_t value) const {
        frame.i[in.rd] = value;
        return true;
    }
    bool SetFloat(In in, float value) const {
        frame.f[in.rd] = value;
        return true;
    }
    bool Li(In in) const { return SetInt(in, in.imm); }
    bool Lf(In in) const { return SetFloat(in, std::bit_cast<float>(in.imm)); }
    bool Mov(In in) const { return SetInt(in, frame.i[in.ra]); }
    bool Fmov(In in) const { return SetFloat(in, frame.f[in.ra]); }
    bool LeaAt(In in) const { return SetInt(in, in.imm); }
    bool Lea(In in) const { return SetInt(in, hum::Add(frame.i[in.rb], in.imm)); }
    bool Fpget(In in) const {
        return SetInt(in, hum::Add(static_cast<std::int32_t>(frame.address), in.imm));
    }

    static std::uint32_t At(In in) { return static_cast<std::uint32_t>(in.imm); }
    std::uint32_t Local(In in) const {
        return static_cast<std::uint32_t>(hum::Add(frame.i[kFrameRegister], in.imm));
    }
    std::uint32_t By(In in) const {
        return static_cast<std::uint32_t>(hum::Add(frame.i[in.rb], in.imm));
    }
    bool Proven(std::uint32_t address, Trouble what) const {
        return address - kNullWords < span || runtime.Fail(what, address);
    }
    bool Load(In in, std::uint32_t address) const {
        return Proven(address, Trouble::IntLoad) && Get(in, address);
    }
    bool Loadf(In in, std::uint32_t address) const {
        return Proven(address, Trouble::FloatLoad) && Getf(in, address);
    }
    bool Store(In in, std::uint32_t address) const {
        return Proven(address, Trouble::Store) && Put(in, address);
    }
    bool Storef(In in, std::uint32_t address) const {
        return Proven(address, Trouble::Store) && Putf(in, address);
    }
    bool Get(In in, std::uint32_t address) const {
        return SetInt(in, static_cast<std::int32_t>(memory[address]));
    }
    bool Getf(In in, std::uint32_t address) const {
        return SetFloat(in, std::bit_cast<float>(memory[address]));
    }
    bool Put(In in, std::uint32_t address) const {
        memory[address] = static_cast<std::uint32_t>(frame.i[in.ra]);
        return true;
    }
    bool Putf(In in, std::uint32_t address) const {
        memory[address] = FloatWord(frame.f[in.ra]);
        return true;
    }
    bool LoadAt(In in) const { return Get(in, At(in)); }
    bool LoadfAt(In in) const { return Getf(in, At(in)); }
    bool StoreAt(In in) const { return Put(in, At(in)); }
    bool StorefAt(In in) const { return Putf(in, At(in)); }
    bool LoadLocal(In in) const { return Load(in, Local(in)); }
    bool LoadfLocal(In in) const { return Loadf(in, Local(in)); }
    bool StoreLocal(In in) const { return Store(in, Local(in)); }
    bool StorefLocal(In in) const { return Storef(in, Local(in)); }
    bool LoadBy(In in) const { return Load(in, By(in)); }
    bool LoadfBy(In in) const { return Loadf(in, By(in)); }
    bool StoreBy(In in) const { return Store(in, By(in)); }
    bool StorefBy(In in) const { return Storef(in, By(in)); }

#define HUM_INTS(name, expression)             \
    bool name(In in) const {                   \
        const std::int32_t a = frame.i[in.ra]; \
        const std::int32_t b = frame.i[in.rb]; \
        return SetInt(in, expression);         \
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

#define HUM_FLOATS(name, set, expression) \
    bool name(In in) const {              \
        const float a = frame.f[in.ra];   \
        const float b = frame.f[in.rb];   \
        return set(in, expression);       \
    }
    HUM_FLOATS(Addf, SetFloat, a + b)
    HUM_FLOATS(Subf, SetFloat, a - b)
    HUM_FLOATS(Mulf, SetFloat, a* b)
    HUM_FLOATS(Divf, SetFloat, a / b)
    HUM_FLOATS(Fmod, SetFloat, std::fmod(a, b))
    HUM_FLOATS(Fcmpeq, SetInt, a == b)
    HUM_FLOATS(Fcmpne, SetInt, a != b)
    HUM_FLOATS(Fcmplt, SetInt, a < b)
    HUM_FLOATS(Fcmple, SetInt, a <= b)
    HUM_FLOATS(Fcmpgt, SetInt, a > b)
    HUM_FLOATS(Fcmpge, SetInt, a >= b)
#undef HUM_FLOATS

    bool Neg(In in) const {
        return SetInt(in, Subtract(0, frame.i[in.ra]));
    }
    bool Not(In in) const {
        return SetInt(in, ~frame.i[in.ra]);
    }
    bool Negf(In in) const {
        return SetFloat(in, -frame.f[in.ra]);
    }
    bool I2f(In in) const {
        return SetFloat(in, static_cast<float>(frame.i[in.ra]));
    }
    bool F2i(In in) const {
        return SetInt(in, ToInt(frame.f[in.ra]));
    }
};

// An instruction of a group with what is known of the registers that it reads: saying so lets the
// compiler keep the values at hand.
template <int kRa, int kRb>
inline Instruction Linked(const Instruction* group, int place) {
    Instruction in = group[place];
    if constexpr (kRa >= 0) in.ra = group[kRa].rd;
    if constexpr (kRb >= 0) in.rb = group[kRb].rd;
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

// The same for a call that is known to name registers that there are. There are few, for which a
// plain loop is quicker than what surrounds one in vectors; the empty statement keeps it plain.
inline void CopyArguments(const Frame& caller, const Instruction& call, const Instruction& enter,
                          std::uint32_t* to) {
    for (std::uint32_t k = 0; k < enter.ra; ++k) {
        *to++ = static_cast<std::uint32_t>(caller.i[call.ra + k]);
        asm volatile("");
    }
    for (std::uint32_t k = 0; k < enter.rb; ++k) {
        *to++ = FloatWord(caller.f[call.rb + k]);
        asm volatile("");
    }
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

// Runs code, or, without a coroutine, tells where the handlers are. Flat, since the handlers are
// too many for the compiler's own measure of what may be taken in, and a call in each would double
// its time.
[[gnu::flatten]] bool Execute(Runtime* runtime_or_none, Coroutine* coroutine,
                              const std::vector<Instruction>* all, const std::int32_t** handlers) {
#define HUM_ONE(name) \
    static_cast<std::int32_t>(static_cast<char*>(&&at_##name) - static_cast<char*>(&&at_Nop)),
#define HUM_TWO(a, b, ...) HUM_ONE(a##_##b)
#define HUM_THREE(a, b, b1, b2, c, ...) HUM_ONE(a##_##b##_##c)
#define HUM_FOUR(a, b, b1, b2, c, c1, c2, d, ...) HUM_ONE(a##_##b##_##c##_##d)
#define HUM_BUILTIN(name, function) HUM_ONE(Call_##name)
    static const std::int32_t offsets[] = {HUM_FAST_ALL};
#undef HUM_ONE
#undef HUM_TWO
#undef HUM_THREE
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
#define HUM_FAIL_AT(what)                              \
    do {                                               \
        address = static_cast<std::uint32_t>(ip->imm); \
        HUM_FAIL(what);                                \
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
#define HUM_CHECK(what) \
    if (address - kNullWords >= span) HUM_FAIL(what)
#define HUM_MUST(condition, what) \
    if (!(condition)) HUM_FAIL(what)

    if (co.pc >= all->size()) {
        runtime.trouble_pc = 0;
        return runtime.Fail(Trouble::InvalidCounter);
    }
    HUM_DISPATCH;

#define HUM_STEP const Step step{runtime, *frame, memory, span}
#define HUM_MAKE(done) \
    if (!(done)) goto step_failed
#define HUM_WHEN_Jmp(in) if (true)
#define HUM_WHEN_Jz(in) if (frame->i[(in).ra] == 0)
#define HUM_WHEN_Jnz(in) if (frame->i[(in).ra] != 0)

#define HUM_ONE(name)             \
    at_##name : {                 \
        HUM_STEP;                 \
        HUM_MAKE(step.name(*ip)); \
        HUM_NEXT(1);              \
    }
    HUM_FAST_STEPS(HUM_ONE)
#undef HUM_ONE

    // Each is made where it stands, so that one that fails is the one at ip.
#define HUM_SECOND(b, b1, b2) \
    ++ip;                     \
    HUM_MAKE(step.b((Linked<b1, b2>(ip - 1, 1))))
#define HUM_THIRD(c, c1, c2) \
    ++ip;                    \
    HUM_MAKE(step.c((Linked<c1, c2>(ip - 2, 2))))
#define HUM_TWO(a, b, b1, b2)  \
    at_##a##_##b : {           \
        HUM_STEP;              \
        HUM_MAKE(step.a(*ip)); \
        HUM_SECOND(b, b1, b2); \
        HUM_NEXT(1);           \
    }
#define HUM_THREE(a, b, b1, b2, c, c1, c2) \
    at_##a##_##b##_##c : {                 \
        HUM_STEP;                          \
        HUM_MAKE(step.a(*ip));             \
        HUM_SECOND(b, b1, b2);             \
        HUM_THIRD(c, c1, c2);              \
        HUM_NEXT(1);                       \
    }
#define HUM_FOUR(a, b, b1, b2, c, c1, c2, d, d1, d2)   \
    at_##a##_##b##_##c##_##d : {                       \
        HUM_STEP;                                      \
        HUM_MAKE(step.a(*ip));                         \
        HUM_SECOND(b, b1, b2);                         \
        HUM_THIRD(c, c1, c2);                          \
        ++ip;                                          \
        HUM_MAKE(step.d((Linked<d1, d2>(ip - 3, 3)))); \
        HUM_NEXT(1);                                   \
    }
    HUM_FAST_TWOS(HUM_TWO)
    HUM_FAST_THREES(HUM_THREE)
    HUM_FAST_FOURS(HUM_FOUR)
#undef HUM_TWO
#undef HUM_THREE
#undef HUM_FOUR

#define HUM_TWO(a, b, b1, b2)                               \
    at_##a##_##b : {                                        \
        HUM_STEP;                                           \
        HUM_MAKE(step.a(*ip));                              \
        ++ip;                                               \
        HUM_WHEN_##b((Linked<b1, b2>(ip - 1, 1))) HUM_TAKE; \
        HUM_NEXT(1);                                        \
    }
#define HUM_THREE(a, b, b1, b2, c, c1, c2)                  \
    at_##a##_##b##_##c : {                                  \
        HUM_STEP;                                           \
        HUM_MAKE(step.a(*ip));                              \
        HUM_SECOND(b, b1, b2);                              \
        ++ip;                                               \
        HUM_WHEN_##c((Linked<c1, c2>(ip - 2, 2))) HUM_TAKE; \
        HUM_NEXT(1);                                        \
    }
#define HUM_FOUR(a, b, b1, b2, c, c1, c2, d, d1, d2)        \
    at_##a##_##b##_##c##_##d : {                            \
        HUM_STEP;                                           \
        HUM_MAKE(step.a(*ip));                              \
        HUM_SECOND(b, b1, b2);                              \
        HUM_THIRD(c, c1, c2);                               \
        ++ip;                                               \
        HUM_WHEN_##d((Linked<d1, d2>(ip - 3, 3))) HUM_TAKE; \
        HUM_NEXT(1);                                        \
    }
    HUM_FAST_TWO_JUMPS(HUM_TWO)
    HUM_FAST_THREE_JUMPS(HUM_THREE)
    HUM_FAST_FOUR_JUMPS(HUM_FOUR)
#undef HUM_TWO
#undef HUM_THREE
#undef HUM_FOUR

#define HUM_BUILTIN(name, function)                                                          \
    at_Call_##name : if (!Invoke<formula::function>(runtime, *frame, *ip)) goto step_failed; \
    HUM_NEXT(1);
    HUM_FAST_BUILTINS(HUM_BUILTIN)
#undef HUM_BUILTIN

at_Load:
    HUM_FAIL_AT(Trouble::IntLoad);
at_Loadf:
    HUM_FAIL_AT(Trouble::FloatLoad);
at_Store:
at_Storef:
    HUM_FAIL_AT(Trouble::Store);
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

// Makes the new frame; what follows runs on in it.
#define HUM_CALL                                                   \
    HUM_MUST(co.depth + 1 < kMaxFrames, Trouble::CallOverflow);    \
    ++co.depth;                                                    \
    ++frame;                                                       \
    frame->return_pc = static_cast<std::uint32_t>(ip - code) + 1;  \
    frame->address = co.stack;                                     \
    frame->stack_at_call = co.stack;                               \
    frame->floor = co.stack;                                       \
    used += frame->return_pc - static_cast<std::int64_t>(ip->imm); \
    HUM_BUDGET(ip->imm)
at_Call : {
    HUM_CALL;
    ip = code + ip->imm;
    HUM_DISPATCH;
}
at_CallInto : {
    HUM_CALL;
    const Instruction& call = *ip;
    ip = code + call.imm;
    const auto words = static_cast<std::uint32_t>(ip->imm);
    const std::uint32_t room = co.stack_begin + kStackWords - co.stack;
    const std::uint32_t copied = std::uint32_t{ip->ra} + ip->rb;
    HUM_MUST(words <= room && copied <= room, Trouble::FrameOverflow);
    CopyArguments(frame[-1], call, *ip, memory + co.stack);
    frame->i[kFrameRegister] = static_cast<std::int32_t>(co.stack);
    co.stack += words;
    frame->floor = co.stack;
    HUM_NEXT(1);
}
at_Enter:
    if (!EnterFunction(runtime, co, *ip, *all)) goto step_failed;
    HUM_NEXT(1);

// Back to behind the call, whose frame is the caller's.
#define HUM_RETURN(result)                                     \
    HUM_MUST(co.depth > 0, Trouble::CallUnderflow);            \
    HUM_MUST(co.stack == frame->floor, Trouble::DamagedStack); \
    const Instruction* const back = code + frame->return_pc;   \
    result;                                                    \
    co.stack = frame->stack_at_call;                           \
    used += ip + 1 - back;                                     \
    --co.depth;                                                \
    --frame;                                                   \
    ip = back;                                                 \
    HUM_DISPATCH
at_Ret : { HUM_RETURN((void)0); }
at_RetInt : { HUM_RETURN(frame[-1].i[back[-1].rd] = frame->i[ip->ra]); }
at_RetFloat : { HUM_RETURN(frame[-1].f[back[-1].rd] = frame->f[ip->ra]); }

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
    if (!kBuiltinCode[ip->imm](runtime, *frame, *ip)) goto step_failed;
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
step_failed:
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
