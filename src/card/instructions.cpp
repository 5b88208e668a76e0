#include "card/instructions.h"

#include "names.h"

namespace kp {
namespace {

using enum OperandKind;

// In the effects r is the register operand, v the value, x and y the values of a comparison.
constexpr InstructionInfo kInstructions[] = {
    // op, name, operands, how many at most, how many may be left out, effect
    {Op::Nop, "nop", {}, 0, 0, "waits one tick"},
    {Op::Mov, "mov", {MovTarget, MovSource}, 2, 0, "target = source"},
    {Op::Add, "add", {Register, Value}, 2, 0, "r = r + v"},
    {Op::Sub, "sub", {Register, Value}, 2, 0, "r = r - v"},
    {Op::And, "and", {Register, Value}, 2, 0, "r = r and v, bit by bit"},
    {Op::Or, "or", {Register, Value}, 2, 0, "r = r or v, bit by bit"},
    {Op::Xor, "xor", {Register, Value}, 2, 0, "r = r xor v, bit by bit"},
    {Op::Shl, "shl", {Register, Value}, 2, 0, "r = r shifted left by v bits"},
    {Op::Shr, "shr", {Register, Value}, 2, 0, "r = r shifted right by v bits"},
    {Op::Jmp, "jmp", {Label}, 1, 0, "jumps"},
    {Op::Jeq, "jeq", {Value, Value, Label}, 3, 0, "jumps if x and y are equal"},
    {Op::Jne, "jne", {Value, Value, Label}, 3, 0, "jumps if x and y differ"},
    {Op::Jlt, "jlt", {Value, Value, Label}, 3, 0, "jumps if x is less than y, signed"},
    {Op::Jgt, "jgt", {Value, Value, Label}, 3, 0, "jumps if x is greater than y, signed"},
    {Op::Djn, "djn", {Register, Label}, 2, 0, "r = r - 1; jumps unless r is now 0"},
    {Op::Call, "call", {Label}, 1, 0, "jumps, and keeps the next line for ret"},
    {Op::Ret, "ret", {}, 0, 0, "returns to the line after the last call"},
    {Op::Tx, "tx", {Value}, 1, 0, "sends the low byte of v"},
    {Op::Rx, "rx", {Register, Label}, 2, 1, "r = oldest byte, or jumps when the timer has run out"},
    {Op::Hin, "hin", {Register, Label}, 2, 1, "r = next host byte, $FFFF at a message's end"},
    {Op::Hout, "hout", {Value}, 1, 0, "delivers the low byte of v to the host"},
    {Op::Wait, "wait", {Value}, 1, 0, "waits v ticks, at least one"},
    {Op::Tmr, "tmr", {Value}, 1, 0, "starts the timer for v ticks; 0 or less stops it"},
    {Op::Crc, "crc", {Value}, 1, 0, "takes the low byte of v into crc"},
    {Op::Halt, "halt", {}, 0, 0, "stops the card for good"},
};

constexpr bool RowsStandAtTheirOpcodes() {
    for (std::size_t row = 0; row < std::size(kInstructions); ++row) {
        if (static_cast<std::size_t>(kInstructions[row].op) != row) return false;
    }
    return std::size(kInstructions) == static_cast<std::size_t>(Op::Halt) + 1;
}
static_assert(RowsStandAtTheirOpcodes());

}  // namespace

std::span<const InstructionInfo> Instructions() {
    return kInstructions;
}

const InstructionInfo& Info(Op op) {
    return kInstructions[static_cast<std::size_t>(op)];
}

const InstructionInfo* FindInstruction(std::string_view name) {
    const auto* row = std::ranges::find_if(
        kInstructions, [&](const InstructionInfo& info) { return SameName()(info.name, name); });
    return row == std::end(kInstructions) ? nullptr : row;
}

std::optional<kp::Register> FindRegister(std::string_view name) {
    for (std::size_t number = 0; number < kRegisterNames.size(); ++number) {
        if (SameName()(kRegisterNames[number], name)) return static_cast<kp::Register>(number);
    }
    return std::nullopt;
}

}  // namespace kp
