#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "card/config.h"
#include "card/instructions.h"

namespace kp {

// An encoded operand. The numbers are part of the listing's format.
struct Operand {
    enum Kind : std::uint8_t { None, Register, Number, Cell, CellByRegister, Label };
    Kind kind = None;
    std::uint16_t value = 0;  // register number, word, cell address or instruction index

    bool operator==(const Operand&) const = default;
};

struct Instruction {
    Op op = Op::Nop;
    std::array<Operand, 2> operands;  // value, register and RAM operands in the order written
    // Where a jump, call, djn or timeout target leads; the program's size for a label after the
    // last instruction, which the card runs as its first line.
    std::optional<std::uint16_t> target;
    std::int32_t line = 0;  // of the source, from 1
};

// An error's place: line and column count from 1, columns and lengths in bytes.
struct AssemblyError {
    std::int32_t line = 0;
    std::int32_t column = 0;
    std::int32_t length = 0;
    std::string message;

    bool operator==(const AssemblyError&) const = default;
};

struct Symbol {
    std::string name;        // as written where it is defined
    std::int32_t value = 0;  // an instruction index, or a constant's 16-bit word
    std::int32_t line = 0;   // where it is defined
};

// What the assembler made of a text. The program may run only when `errors` is empty.
struct Assembly {
    std::vector<Instruction> instructions;
    std::vector<AssemblyError> errors;  // first pass by line, second pass by line, then the ROM
    std::vector<Symbol> labels;
    std::vector<Symbol> constants;
    // Lines of firmware: the ROM they take, and the "lines" score. Lines with errors count.
    std::int32_t lines = 0;
};

// Never fails as a whole: every problem of every line is an entry of `errors`.
Assembly Assemble(std::string_view source, const CardConfig& config);

}  // namespace kp
