#pragma once

#include <cstdint>
#include <vector>

#include "fast_groups.h"
#include "hum/opcodes.h"
#include "machine_state.h"

// The fast machine's own opcodes. Its code has as many instructions as the prepared code has, each
// in the same place and with the same registers; what differs:
// - the spare word holds the handler's distance from the first handler, and the word of the
//   position the stride;
// - jumps hold the distance to their target, calls its index, proven to be in the code;
// - loads and stores have opcodes by where their address comes from: At for an absolute one, proven
//   to be in memory, which needs no check; Local for the frame's; By for another register's;
// - a call of a function whose arguments are proven to be registers enters it at once;
// - instructions that often stand together have an opcode that does them all. Those behind the
//   first stay in their places for whoever jumps to them.

// clang-format off
// Instructions that do not jump; some check an address.
#define HUM_FAST_STEPS(X) \
    X(Nop) X(Li) X(Lf) X(Mov) X(Fmov) X(LoadAt) X(StoreAt) X(LoadfAt) X(StorefAt) X(LoadLocal) \
    X(StoreLocal) X(LoadfLocal) X(StorefLocal) X(LoadBy) X(StoreBy) X(LoadfBy) X(StorefBy) \
    X(LeaAt) X(Lea) X(Add) X(Sub) X(Mul) X(Div) X(Mod) X(And) X(Or) X(Xor) X(Shl) X(Shr) X(Sar) \
    X(Neg) X(Not) X(Addf) X(Subf) X(Mulf) X(Divf) X(Fmod) X(Negf) X(I2f) X(F2i) X(Cmpeq) X(Cmpne) \
    X(Cmplt) X(Cmple) X(Cmpgt) X(Cmpge) X(Fcmpeq) X(Fcmpne) X(Fcmplt) X(Fcmple) X(Fcmpgt) \
    X(Fcmpge) X(Fpget)

// Everything else. Bad ones are those whose target is outside the code; loads and stores without
// an ending, those whose absolute address is outside memory.
#define HUM_FAST_OTHER(X) \
    X(Halt) X(Load) X(Loadf) X(Store) X(Storef) X(Jmp) X(Jz) X(Jnz) X(JmpBad) X(JzBad) X(JnzBad) \
    X(Call) X(CallInto) X(CallBad) X(Ret) X(RetInt) X(RetFloat) X(Wait) X(This) X(Push) X(Pop) \
    X(Pushf) X(Popf) X(Svc) X(Enter) X(Aload) X(Aloadf) X(Aloadw) X(Aloadwf) X(Astore) \
    X(Astoref) X(Astorew) X(Astorewf) X(Arowa) X(Aroww) X(Unknown) X(End)

// Built-ins that have an opcode of their own: their name and their function.
#define HUM_FAST_BUILTINS(X) \
    X(phasor, Phasor) X(sine, Sine) X(saw, Saw) X(blep_saw, BlepSaw) X(sq, Square) \
    X(tri, Triangle) X(lpf1, Lpf1) X(hpf1, Hpf1) X(onepole, OnePole) X(one_pole, OnePole) \
    X(dcblock, DcBlock) X(svf_lp, SvfLowPass) X(svf_bp, SvfBandPass) X(svf_hp, SvfHighPass) \
    X(biquad, Biquad) X(env_exp, Envelope) X(mtof, NoteToHertz) X(rand, Random) X(noise, Noise) \
    X(min, Min) X(max, Max) X(clamp_f, Clamp) X(lerp, Lerp) X(clip, HeldUnit) \
    X(softclip, SoftClip) X(wrap01, Wrap01) X(floor, Floor) X(comb, Comb) X(allpass, AllPass)

// Every opcode in order, each kind by a macro that whoever expands this has defined.
#define HUM_FAST_ALL \
    HUM_FAST_STEPS(HUM_ONE) HUM_FAST_OTHER(HUM_ONE) \
    HUM_FAST_FOURS(HUM_FOUR) HUM_FAST_FOUR_JUMPS(HUM_FOUR) HUM_FAST_THREES(HUM_THREE) \
    HUM_FAST_THREE_JUMPS(HUM_THREE) HUM_FAST_TWOS(HUM_TWO) HUM_FAST_TWO_JUMPS(HUM_TWO) \
    HUM_FAST_BUILTINS(HUM_BUILTIN)
// clang-format on

namespace hum {

enum class FastOp : std::uint16_t {
#define HUM_ONE(name) name,
#define HUM_TWO(a, b, ...) a##_##b,
#define HUM_THREE(a, b, b1, b2, c, ...) a##_##b##_##c,
#define HUM_FOUR(a, b, b1, b2, c, c1, c2, d, ...) a##_##b##_##c##_##d,
#define HUM_BUILTIN(name, function) Call_##name,
    HUM_FAST_ALL
#undef HUM_ONE
#undef HUM_TWO
#undef HUM_THREE
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
