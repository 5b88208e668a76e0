#pragma once

#include <cstdint>
#include <vector>

#include "hum/opcodes.h"
#include "machine_state.h"

// The fast machine's own opcodes. Its code has as many instructions as the prepared code has, each
// in the same place and with the same registers; what differs:
// - the spare word holds the handler's distance from the first handler, and the word of the
//   position the stride;
// - jumps hold the distance to their target, calls its index, proven to be in the code;
// - loads and stores of an absolute address that is in memory have opcodes without a check;
// - an instruction that often stands before its next has an opcode that does both. The next one
//   stays in its place for whoever jumps to it.

// clang-format off
// Instructions that can neither fail nor jump.
#define HUM_FAST_SIMPLE(X) \
    X(Nop) X(Li) X(Lf) X(Mov) X(Fmov) X(LoadAt) X(StoreAt) X(LoadfAt) X(StorefAt) X(LeaAt) X(Lea) \
    X(Add) X(Sub) X(Mul) X(Div) X(Mod) X(And) X(Or) X(Xor) X(Shl) X(Shr) X(Sar) X(Neg) X(Not) \
    X(Addf) X(Subf) X(Mulf) X(Divf) X(Fmod) X(Negf) X(I2f) X(F2i) X(Cmpeq) X(Cmpne) X(Cmplt) \
    X(Cmple) X(Cmpgt) X(Cmpge) X(Fcmpeq) X(Fcmpne) X(Fcmplt) X(Fcmple) X(Fcmpgt) X(Fcmpge) \
    X(Fpget)

// Everything else; Bad ones are those whose target is outside the code.
#define HUM_FAST_OTHER(X) \
    X(Halt) X(Load) X(Store) X(Loadf) X(Storef) X(Jmp) X(Jz) X(Jnz) X(JmpBad) X(JzBad) X(JnzBad) \
    X(Call) X(CallBad) X(Ret) X(Wait) X(This) X(Push) X(Pop) X(Pushf) X(Popf) X(Svc) X(Enter) \
    X(Aload) X(Aloadf) X(Aloadw) X(Aloadwf) X(Astore) X(Astoref) X(Astorew) X(Astorewf) X(Arowa) \
    X(Aroww) X(Unknown) X(End)

// Pairs of simple instructions, as the code generator likes to put them. The last word is the field
// of the second that must name the register which the first fills, so that the value need not be
// read back; op is for pairs that share none.
#define HUM_FAST_PAIRS(X) \
    X(LoadfAt, LoadfAt, op) X(LoadfAt, Lf, op) X(LoadfAt, Mulf, rb) X(LoadfAt, Addf, rb) \
    X(LoadfAt, Subf, rb) X(LoadfAt, Li, op) X(Lf, Mulf, rb) X(Lf, Addf, rb) X(Lf, Subf, rb) \
    X(Lf, Divf, rb) X(Lf, LoadfAt, op) X(Lf, Lf, op) X(Lf, StorefAt, ra) X(Lf, Fcmplt, rb) \
    X(Lf, Fcmpgt, rb) X(Li, Lf, op) X(Li, Li, op) X(Li, Add, rb) X(Li, Sub, rb) X(Li, Mod, rb) \
    X(Li, And, rb) X(Li, LoadfAt, op) X(Li, LoadAt, op) X(Li, StoreAt, ra) X(LoadAt, Li, op) \
    X(LoadAt, LoadAt, op) X(LoadAt, I2f, ra) X(Mulf, Addf, rb) X(Mulf, StorefAt, ra) \
    X(Mulf, LoadfAt, op) X(Mulf, Lf, op) X(Addf, StorefAt, ra) X(Addf, LoadfAt, op) \
    X(Addf, Lf, op) X(Subf, StorefAt, ra) X(StorefAt, LoadfAt, op) X(StorefAt, Li, op) \
    X(StorefAt, Lf, op) X(StorefAt, LoadAt, op) X(StoreAt, LoadAt, op) X(StoreAt, LoadfAt, op) \
    X(StoreAt, Li, op) X(Add, StoreAt, ra) X(Sub, StoreAt, ra) X(I2f, Mulf, rb) \
    X(I2f, StorefAt, ra) X(Li, I2f, ra) X(I2f, LoadfAt, op) X(I2f, Li, op) X(Lea, Lf, op) \
    X(LoadAt, Lea, rb) X(Lf, LoadAt, op) X(Lea, LoadAt, op) X(Li, Cmpgt, rb) X(I2f, Lf, op)

// A comparison and the jump on its result.
#define HUM_FAST_BRANCHES(X) \
    X(Cmpeq, Jz, ra) X(Cmpne, Jz, ra) X(Cmplt, Jz, ra) X(Cmple, Jz, ra) X(Cmpgt, Jz, ra) \
    X(Cmpge, Jz, ra) X(Fcmpeq, Jz, ra) X(Fcmpne, Jz, ra) X(Fcmplt, Jz, ra) X(Fcmple, Jz, ra) \
    X(Fcmpgt, Jz, ra) X(Fcmpge, Jz, ra) X(Cmpeq, Jnz, ra) X(Cmpne, Jnz, ra) X(Cmplt, Jnz, ra) \
    X(Fcmplt, Jnz, ra) X(Fcmpgt, Jnz, ra) X(LoadAt, Jz, ra) X(LoadAt, Jnz, ra) \
    X(StorefAt, Jmp, op) X(StoreAt, Jmp, op)

// Instructions that check their address, behind simple ones.
#define HUM_FAST_CHECKED(X) \
    X(LoadAt, Load, rb) X(LoadAt, Loadf, rb) X(LoadAt, Storef, rb) X(LoadfAt, Storef, ra) \
    X(Addf, Storef, ra) X(Mulf, Storef, ra) X(LoadfAt, Loadf, op)

// What counters do, and loops at their head: the third works on what the first and the second
// fill, the fourth takes what the third fills.
#define HUM_FAST_COUNTERS(X) \
    X(LoadAt, Li, Add, StoreAt) X(LoadAt, Li, Sub, StoreAt) X(LoadfAt, Lf, Mulf, StorefAt)
#define HUM_FAST_HEADS(X) \
    X(LoadAt, Li, Cmplt, Jz) X(LoadAt, Li, Cmpeq, Jz)

// Built-ins that have an opcode of their own: their name and their function.
#define HUM_FAST_BUILTINS(X) \
    X(phasor, Phasor) X(sine, Sine) X(saw, Saw) X(blep_saw, BlepSaw) X(sq, Square) \
    X(tri, Triangle) X(lpf1, Lpf1) X(hpf1, Hpf1) X(onepole, OnePole) X(one_pole, OnePole) \
    X(dcblock, DcBlock) X(svf_lp, SvfLowPass) X(svf_bp, SvfBandPass) X(svf_hp, SvfHighPass) \
    X(biquad, Biquad) X(env_exp, Envelope) X(mtof, NoteToHertz) X(rand, Random) X(noise, Noise) \
    X(min, Min) X(max, Max) X(clamp_f, Clamp) X(lerp, Lerp) X(clip, HeldUnit) \
    X(softclip, SoftClip) X(wrap01, Wrap01)
// clang-format on

namespace hum {

enum class FastOp : std::uint8_t {
#define HUM_ONE(name) name,
#define HUM_TWO(first, second, link) first##_##second,
#define HUM_FOUR(first, second, third, fourth) first##_##second##_##third##_##fourth,
#define HUM_BUILTIN(name, function) Call_##name,
    HUM_FAST_SIMPLE(HUM_ONE) HUM_FAST_OTHER(HUM_ONE) HUM_FAST_PAIRS(HUM_TWO)
        HUM_FAST_BRANCHES(HUM_TWO) HUM_FAST_CHECKED(HUM_TWO) HUM_FAST_COUNTERS(HUM_FOUR)
            HUM_FAST_HEADS(HUM_FOUR) HUM_FAST_BUILTINS(HUM_BUILTIN)
#undef HUM_ONE
#undef HUM_TWO
#undef HUM_FOUR
#undef HUM_BUILTIN
                Count
};

// Makes fast code of prepared code, for a memory of `size` words.
std::vector<Instruction> MakeFastCode(const std::vector<Instruction>& prepared, std::uint32_t size);

// What ResumePlain does, for code that MakeFastCode made.
bool ResumeFast(Runtime& runtime, Coroutine& coroutine, const std::vector<Instruction>& code);

// Where each opcode's handler lies behind the first.
const std::int32_t* FastHandlers();

}  // namespace hum
