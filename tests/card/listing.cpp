#include "listing.h"

namespace {

std::string Text(const kp::Operand& operand) {
    const std::string number = std::to_string(operand.value);
    switch (operand.kind) {
        case kp::Operand::Register:
            return std::string(kp::kRegisterNames.at(operand.value));
        case kp::Operand::Number:
            return number;
        case kp::Operand::Cell:
            return "[" + number + "]";
        case kp::Operand::CellByRegister:
            return "[" + std::string(kp::kRegisterNames.at(operand.value)) + "]";
        default:
            return "?";
    }
}

}  // namespace

std::string Errors(const kp::Assembly& assembly) {
    std::string text;
    for (const kp::AssemblyError& error : assembly.errors) {
        text += std::to_string(error.line) + ":" + std::to_string(error.column) + "+" +
                std::to_string(error.length) + " " + error.message + "\n";
    }
    return text;
}

std::string Listing(const kp::Assembly& assembly) {
    std::string text;
    for (const kp::Instruction& instruction : assembly.instructions) {
        if (!text.empty()) text += "; ";
        text += kp::Info(instruction.op).name;
        for (const kp::Operand& operand : instruction.operands) {
            if (operand.kind != kp::Operand::None) text += " " + Text(operand);
        }
        if (instruction.target) text += " >" + std::to_string(*instruction.target);
    }
    return text;
}
