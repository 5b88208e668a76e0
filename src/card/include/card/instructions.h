#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace kp {

// The opcodes, in the order of their encoding.
enum class Op : std::uint8_t {
    Nop,
    Mov,
    Add,
    Sub,
    And,
    Or,
    Xor,
    Shl,
    Shr,
    Jmp,
    Jeq,
    Jne,
    Jlt,
    Jgt,
    Djn,
    Call,
    Ret,
    Tx,
    Rx,
    Hin,
    Hout,
    Wait,
    Tmr,
    Crc,
    Halt,
};

// What may stand in an operand's place.
enum class OperandKind : std::uint8_t { MovTarget, MovSource, Register, Value, Label };

// Registers by number.
enum Register : std::uint8_t { kA, kB, kC, kD, kCrc, kClk, kRxn };
inline constexpr std::array<std::string_view, 7> kRegisterNames = {"a",   "b",   "c",  "d",
                                                                   "crc", "clk", "rxn"};

// One row is all that the assembler, a listing, a help text and a test know of an instruction.
struct InstructionInfo {
    Op op;
    std::string_view name;
    std::array<OperandKind, 3> operands;
    std::uint8_t most;      // operands it takes at most
    std::uint8_t optional;  // how many of the last ones may be left out
    std::string_view effect;

    int Least() const { return most - optional; }
};

// All 25 instructions in opcode order.
std::span<const InstructionInfo> Instructions();
const InstructionInfo& Info(Op op);

// Both compare without regard to case.
const InstructionInfo* FindInstruction(std::string_view name);
std::optional<Register> FindRegister(std::string_view name);

}  // namespace kp
