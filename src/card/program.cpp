#include "card/program.h"

#include <algorithm>
#include <map>

#include "card/crc16.h"

namespace kp {
namespace {

// Gives every distinct literal one word behind the RAM.
class LiteralPool {
public:
    explicit LiteralPool(std::vector<std::uint16_t>& image) : image_(image) {}

    std::uint16_t IndexOf(std::uint16_t word) {
        const auto [place, added] =
            places_.try_emplace(word, static_cast<std::uint16_t>(image_.size()));
        if (added) image_.push_back(word);
        return place->second;
    }

private:
    std::vector<std::uint16_t>& image_;
    std::map<std::uint16_t, std::uint16_t> places_;
};

// The word that an operand names. A cell addressed by a register names that register.
std::uint16_t WordIndex(const Operand& operand, LiteralPool& literals) {
    switch (operand.kind) {
        case Operand::Register:
        case Operand::CellByRegister:
            return operand.value;
        case Operand::Cell:
            return static_cast<std::uint16_t>(kRegisterWords + operand.value);
        case Operand::Number:
            return literals.IndexOf(operand.value);
        case Operand::None:
        case Operand::Label:
            break;
    }
    return 0;
}

Access AccessOf(const Instruction& instruction) {
    if (instruction.operands[0].kind == Operand::CellByRegister) return Access::Store;
    if (instruction.operands[1].kind == Operand::CellByRegister) return Access::Load;
    return Access::Direct;
}

// Instructions that neither the line, the host, the timer nor the clock of a wait can notice.
bool IsInward(Op op) {
    return op <= Op::Ret || op == Op::Crc;
}

}  // namespace

Program Load(const Assembly& assembly, const CardConfig& config) {
    Program program{config, {}, {}, assembly.lines};
    program.image.assign(static_cast<std::size_t>(kRegisterWords + config.ram), 0);
    program.image[kCrc] = kCrc16Start;
    LiteralPool literals(program.image);
    const std::size_t size = assembly.instructions.size();
    program.steps.reserve(size);
    for (const Instruction& instruction : assembly.instructions) {
        Step step;
        step.op = instruction.op;
        step.access = AccessOf(instruction);
        step.inward = IsInward(step.op);
        step.x = WordIndex(instruction.operands[0], literals);
        step.y = WordIndex(instruction.operands[1], literals);
        step.has_target = instruction.target.has_value();
        // A label behind the last instruction leads to the first line.
        step.target = instruction.target.value_or(0) < size ? instruction.target.value_or(0) : 0;
        step.line = static_cast<std::uint16_t>(std::min(instruction.line, 65535));
        program.steps.push_back(step);
    }
    return program;
}

}  // namespace kp
