#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "card/assembler.h"
#include "error_list.h"
#include "source_lines.h"
#include "symbols.h"

namespace kp {

// The second pass: checks one line after another against the card and encodes it.
class Encoder {
public:
    Encoder(const CardConfig& config, const Symbols& symbols, ErrorList& errors)
        : config_(config), symbols_(symbols), errors_(errors) {}

    // The line holds an instruction. False when its first error went to the list.
    bool Encode(const SourceLine& line, std::span<const Piece> operands);
    // What the last Encode made.
    const Instruction& Made() const { return made_; }

private:
    bool EncodeOperand(const Piece& piece, OperandKind kind);
    bool EncodeCell(const Piece& piece);
    bool EncodeRegister(const Piece& piece, Register number, bool written);
    bool EncodeLabel(const Piece& piece);
    bool EncodeValue(const Piece& piece);
    bool ReadValue(const Piece& marked, std::string_view text, std::int32_t& value);
    bool CheckFitted(const Piece& marked, Register number);
    bool CheckWhole(const Piece& name, std::span<const Piece> operands);
    void AddOperand(Operand::Kind kind, std::int32_t value);

    const CardConfig& config_;
    const Symbols& symbols_;
    ErrorList& errors_;
    const InstructionInfo* info_ = nullptr;
    Instruction made_;
    std::size_t operands_ = 0;  // that made_ has so far
};

}  // namespace kp
