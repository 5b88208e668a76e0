#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace hum {

// The operands of an instruction and how a listing writes them.
enum class Form : std::uint8_t {
    None,
    LoadInt,        // i rd, imm
    LoadFloat,      // f rd, imm's bits
    Ints2,          // i rd, i ra
    Floats2,        // f rd, f ra
    IntToFloat,     // f rd, i ra
    FloatToInt,     // i rd, f ra
    Ints3,          // i rd, i ra, i rb
    Floats3,        // f rd, f ra, f rb
    CompareFloats,  // i rd, f ra, f rb
    MemoryToInt,    // i rd, memory
    MemoryToFloat,  // f rd, memory
    IntToMemory,    // memory, i ra
    FloatToMemory,  // memory, f ra
    Jump,           // imm
    JumpIf,         // i ra, imm
    IntTarget,      // i rd
    IntSource,      // i ra
    FloatTarget,    // f rd
    FloatSource,    // f ra
    IntElement,     // i rd, i ra, i rb, count imm, stride aux
    FloatElement,   // f rd, i ra, i rb, count imm, stride aux
    Raw,            // rd, ra, rb and imm by name
};

// Every instruction, in the order of its number: name, mnemonic, form.
#define HUM_OPCODES(X)                    \
    X(Nop, "nop", None)                   \
    X(Halt, "halt", None)                 \
    X(Li, "li", LoadInt)                  \
    X(Lf, "lf", LoadFloat)                \
    X(Mov, "mov", Ints2)                  \
    X(Fmov, "fmov", Floats2)              \
    X(Load, "load", MemoryToInt)          \
    X(Store, "store", IntToMemory)        \
    X(Loadf, "loadf", MemoryToFloat)      \
    X(Storef, "storef", FloatToMemory)    \
    X(Lea, "lea", MemoryToInt)            \
    X(Add, "add", Ints3)                  \
    X(Sub, "sub", Ints3)                  \
    X(Mul, "mul", Ints3)                  \
    X(Div, "div", Ints3)                  \
    X(Mod, "mod", Ints3)                  \
    X(And, "and", Ints3)                  \
    X(Or, "or", Ints3)                    \
    X(Xor, "xor", Ints3)                  \
    X(Shl, "shl", Ints3)                  \
    X(Shr, "shr", Ints3)                  \
    X(Sar, "sar", Ints3)                  \
    X(Neg, "neg", Ints2)                  \
    X(Not, "not", Ints2)                  \
    X(Addf, "addf", Floats3)              \
    X(Subf, "subf", Floats3)              \
    X(Mulf, "mulf", Floats3)              \
    X(Divf, "divf", Floats3)              \
    X(Fmod, "fmod", Floats3)              \
    X(Negf, "negf", Floats2)              \
    X(I2f, "i2f", IntToFloat)             \
    X(F2i, "f2i", FloatToInt)             \
    X(Cmpeq, "cmpeq", Ints3)              \
    X(Cmpne, "cmpne", Ints3)              \
    X(Cmplt, "cmplt", Ints3)              \
    X(Cmple, "cmple", Ints3)              \
    X(Cmpgt, "cmpgt", Ints3)              \
    X(Cmpge, "cmpge", Ints3)              \
    X(Fcmpeq, "fcmpeq", CompareFloats)    \
    X(Fcmpne, "fcmpne", CompareFloats)    \
    X(Fcmplt, "fcmplt", CompareFloats)    \
    X(Fcmple, "fcmple", CompareFloats)    \
    X(Fcmpgt, "fcmpgt", CompareFloats)    \
    X(Fcmpge, "fcmpge", CompareFloats)    \
    X(Jmp, "jmp", Jump)                   \
    X(Jz, "jz", JumpIf)                   \
    X(Jnz, "jnz", JumpIf)                 \
    X(Call, "call", Raw)                  \
    X(Ret, "ret", Raw)                    \
    X(Wait, "wait", Raw)                  \
    X(This, "this", IntTarget)            \
    X(Push, "push", IntSource)            \
    X(Pop, "pop", IntTarget)              \
    X(Fpget, "fpget", Raw)                \
    X(Svc, "svc", Raw)                    \
    X(Enter, "enter", Raw)                \
    X(Aload, "aload", IntElement)         \
    X(Aloadf, "aloadf", FloatElement)     \
    X(Aloadw, "aloadw", IntElement)       \
    X(Aloadwf, "aloadwf", FloatElement)   \
    X(Astore, "astore", IntElement)       \
    X(Astoref, "astoref", FloatElement)   \
    X(Astorew, "astorew", IntElement)     \
    X(Astorewf, "astorewf", FloatElement) \
    X(Arowa, "arowa", IntElement)         \
    X(Aroww, "aroww", IntElement)         \
    X(Pushf, "pushf", FloatSource)        \
    X(Popf, "popf", FloatTarget)

enum class Op : std::uint8_t {
#define HUM_ENUMERATOR(name, mnemonic, form) name,
    HUM_OPCODES(HUM_ENUMERATOR)
#undef HUM_ENUMERATOR
};

struct Opcode {
    std::string_view mnemonic;
    Form form;
};

inline constexpr Opcode kOpcodes[] = {
#define HUM_ROW(name, mnemonic, form) {mnemonic, Form::form},
    HUM_OPCODES(HUM_ROW)
#undef HUM_ROW
};
inline constexpr std::size_t kOpcodeCount = sizeof kOpcodes / sizeof kOpcodes[0];

}  // namespace hum
