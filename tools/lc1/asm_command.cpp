#include "base/format.h"
#include "card/assembler.h"
#include "commands.h"
#include "json_line.h"
#include "subject.h"
#include "text.h"

namespace lc1 {
namespace {

bool IsValue(const kp::Operand& operand) {
    return operand.kind != kp::Operand::None && operand.kind != kp::Operand::Label;
}

void WriteInstruction(JsonLine& out, const kp::Instruction& instruction) {
    out.Object();
    out.Text("op", kp::Info(instruction.op).name);
    out.Array("operands");
    for (const kp::Operand& operand : instruction.operands) {
        if (!IsValue(operand)) continue;
        out.Object();
        out.Number("kind", operand.kind);
        out.Number("value", operand.value);
        out.End();
    }
    out.End();
    if (instruction.target) {
        out.Number("target", *instruction.target);
    } else {
        out.Null("target");
    }
    out.Number("line", instruction.line);
    out.End();
}

void WriteJson(const kp::Assembly& assembly) {
    JsonLine out;
    out.Array("instructions");
    for (const kp::Instruction& instruction : assembly.instructions) {
        WriteInstruction(out, instruction);
    }
    out.End();
    out.Array("errors");
    for (const kp::AssemblyError& error : assembly.errors) {
        out.Object();
        out.Number("line", error.line);
        out.Number("column", error.column);
        out.Number("length", error.length);
        out.Text("message", error.message);
        out.End();
    }
    out.End();
    out.Number("lines", assembly.lines);
}

void PrintErrors(const kp::Assembly& assembly, const std::string& file) {
    for (const kp::AssemblyError& error : assembly.errors) {
        PutLine(file + base::Format(":%d:%d: ", error.line, error.column) + error.message);
    }
}

std::string OperandText(const kp::Operand& operand) {
    switch (operand.kind) {
        case kp::Operand::Register:
            return std::string(kp::kRegisterNames[operand.value]);
        case kp::Operand::Number:
            return base::Format("%d ($%02X)", operand.value, operand.value);
        case kp::Operand::Cell:
            return base::Format("[%d]", operand.value);
        case kp::Operand::CellByRegister:
            return '[' + std::string(kp::kRegisterNames[operand.value]) + ']';
        default:
            return {};
    }
}

std::string OperandsText(const kp::Instruction& instruction) {
    std::string text;
    for (const kp::Operand& operand : instruction.operands) {
        if (!IsValue(operand)) continue;
        if (!text.empty()) text += ", ";
        text += OperandText(operand);
    }
    return text;
}

// "7 (retry)": the index, and the names that the firmware gives it.
std::string TargetText(const kp::Assembly& assembly, std::uint16_t target) {
    std::string names;
    for (const kp::Symbol& label : assembly.labels) {
        if (label.value != target) continue;
        names += (names.empty() ? " (" : ", ") + label.name;
    }
    return std::to_string(target) + names + (names.empty() ? "" : ")");
}

void PrintListing(const kp::Assembly& assembly, const kp::CardConfig& card, bool colour) {
    using enum TextTable::Align;
    TextTable table({{"index", Right}, {"line", Right}, {"op"}, {"operands"}, {"target"}});
    for (const kp::Instruction& instruction : assembly.instructions) {
        const auto index = static_cast<std::size_t>(&instruction - assembly.instructions.data());
        table.Add({std::to_string(index), std::to_string(instruction.line),
                   std::string(kp::Info(instruction.op).name), OperandsText(instruction),
                   instruction.target ? TargetText(assembly, *instruction.target) : ""});
    }
    table.Print(colour);
    PutLine(base::Format("ROM %d of %d", assembly.lines, card.rom));
}

}  // namespace

Outcome RunAsm(const Request& request) {
    kp::Ticket ticket;
    std::string firmware;
    if (std::optional<Problem> problem = LoadTicket(request, ticket)) return *problem;
    if (std::optional<Problem> problem = ReadFirmware(request, firmware)) return *problem;
    const kp::Assembly assembly = kp::Assemble(firmware, ticket.machine);
    if (request.json) {
        WriteJson(assembly);
    } else if (assembly.errors.empty()) {
        PrintListing(assembly, ticket.machine, request.colour);
    } else {
        PrintErrors(assembly, request.files.back());
    }
    return assembly.errors.empty() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
