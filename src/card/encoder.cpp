#include "encoder.h"

#include "names.h"
#include "number.h"

namespace kp {
namespace {

constexpr const char* kNoCrcEngine = "This card has no CRC engine.";

// What an operand's kind admits. A label is a case of its own.
struct KindRule {
    bool cell;         // a RAM cell
    const char* need;  // what to say of anything but a register to write; null where one is read
};

const KindRule& Rule(OperandKind kind) {
    static constexpr KindRule kRules[] = {
        {true, " needs a register or a RAM cell to write."},  // MovTarget
        {true, nullptr},                                      // MovSource
        {false, " needs a register here."},                   // Register
        {false, nullptr},                                     // Value
        {false, nullptr},                                     // Label
    };
    return kRules[static_cast<std::size_t>(kind)];
}

// The part without which an instruction does nothing on a card.
struct PartRule {
    Op op;
    bool CardConfig::*part;
    const char* message;
};
constexpr PartRule kPartRules[] = {
    {Op::Crc, &CardConfig::crc, kNoCrcEngine},
    {Op::Tmr, &CardConfig::timer, "This card has no timer."},
    {Op::Hin, &CardConfig::host, "This card has no host port."},
    {Op::Hout, &CardConfig::host, "This card has no host port."},
};

std::string CountMessage(const InstructionInfo& info) {
    const std::string name(info.name);
    const std::string most = std::to_string(info.most);
    if (info.most == 0) return name + " takes no operands.";
    if (info.optional > 0) {
        return name + " takes " + std::to_string(info.Least()) + " or " + most + " operands.";
    }
    return name + " takes " + most + (info.most == 1 ? " operand." : " operands.");
}

bool IsFitted(Register number, const CardConfig& config) {
    switch (number) {
        case kCrc:
            return config.crc;
        case kClk:
            return config.clock;
        case kRxn:
            return true;
        default:
            return config.HasRegister(number);
    }
}

std::string RegisterName(Register number) {
    return std::string(kRegisterNames[number]);
}

bool IsCell(const Operand& operand) {
    return operand.kind == Operand::Cell || operand.kind == Operand::CellByRegister;
}

}  // namespace

bool Encoder::Encode(const SourceLine& line, std::span<const Piece> operands) {
    info_ = FindInstruction(line.name.text);
    if (!info_)
        return errors_.Fail(line.name, "Unknown instruction " + Quoted(line.name.text) + ".");
    const int count = static_cast<int>(operands.size());
    if (count < info_->Least() || count > info_->most) {
        return errors_.Fail(line.name, CountMessage(*info_));
    }
    made_ = Instruction();
    made_.op = info_->op;
    made_.line = line.number;
    operands_ = 0;
    for (std::size_t k = 0; k < operands.size(); ++k) {
        if (!EncodeOperand(operands[k], info_->operands[k])) return false;
    }
    return CheckWhole(line.name, operands);
}

bool Encoder::EncodeOperand(const Piece& piece, OperandKind kind) {
    if (piece.text.empty()) return errors_.Fail(piece, "An operand is missing here.");
    const KindRule& rule = Rule(kind);
    if (piece.text.starts_with('[')) {
        if (!piece.text.ends_with(']')) {
            return errors_.Fail(piece, "This RAM cell is missing its closing bracket.");
        }
        if (!rule.cell) return errors_.Fail(piece, "Only mov can read or write a RAM cell.");
        return EncodeCell(piece);
    }
    if (kind == OperandKind::Label) return EncodeLabel(piece);
    const auto number = FindRegister(piece.text);
    if (number) return EncodeRegister(piece, *number, rule.need != nullptr);
    if (rule.need) return errors_.Fail(piece, std::string(info_->name) + rule.need);
    return EncodeValue(piece);
}

bool Encoder::EncodeCell(const Piece& piece) {
    if (config_.ram == 0) return errors_.Fail(piece, "This card has no RAM.");
    std::string_view text = piece.text.substr(1, piece.text.size() - 2);
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    if (text.empty()) return errors_.Fail(piece, "An operand is missing here.");
    if (const auto number = FindRegister(text)) {
        if (!CheckFitted(piece, *number)) return false;
        AddOperand(Operand::CellByRegister, *number);
        return true;
    }
    std::int32_t address = 0;
    if (!ReadValue(piece, text, address)) return false;
    if (address < 0 || address >= config_.ram) {
        return errors_.Fail(piece, "RAM address " + std::to_string(address) +
                                       " is outside this card's RAM (0 to " +
                                       std::to_string(config_.ram - 1) + ").");
    }
    AddOperand(Operand::Cell, address);
    return true;
}

bool Encoder::EncodeRegister(const Piece& piece, Register number, bool written) {
    if (!CheckFitted(piece, number)) return false;
    if (written && (number == kClk || number == kRxn)) {
        return errors_.Fail(piece, "Register " + RegisterName(number) + " is read-only.");
    }
    AddOperand(Operand::Register, number);
    return true;
}

bool Encoder::CheckFitted(const Piece& marked, Register number) {
    if (IsFitted(number, config_)) return true;
    if (number == kCrc) return errors_.Fail(marked, kNoCrcEngine);
    if (number == kClk) return errors_.Fail(marked, "This card has no clock.");
    return errors_.Fail(marked,
                        "Register " + RegisterName(number) + " is not fitted on this card.");
}

bool Encoder::EncodeLabel(const Piece& piece) {
    const Symbol* label = symbols_.labels.Find(piece.text);
    if (!label) return errors_.Fail(piece, "Label " + Quoted(piece.text) + " is not defined.");
    made_.target = static_cast<std::uint16_t>(label->value);
    return true;
}

bool Encoder::EncodeValue(const Piece& piece) {
    std::int32_t value = 0;
    if (!ReadValue(piece, piece.text, value)) return false;
    AddOperand(Operand::Number, value);
    return true;
}

// Reads a number or a constant; errors mark the operand in which the text stands.
bool Encoder::ReadValue(const Piece& marked, std::string_view text, std::int32_t& value) {
    const Reading reading = ReadNumber(text);
    switch (reading.kind) {
        case Reading::Number:
            value = static_cast<std::int32_t>(reading.value);
            return true;
        case Reading::OutOfRange:
            return errors_.Fail(marked, RangeMessage(reading, text));
        case Reading::Malformed:
            return errors_.Fail(marked, Quoted(text) + " is not a valid number.");
        case Reading::Name:
            break;
    }
    if (const Symbol* constant = symbols_.constants.Find(text)) {
        value = constant->value;
        return true;
    }
    if (symbols_.labels.Find(text)) {
        return errors_.Fail(marked, Quoted(text) + " is a label; a value is expected here.");
    }
    return errors_.Fail(marked, "Unknown name " + Quoted(text) + ".");
}

// What can be told only when all operands are known.
bool Encoder::CheckWhole(const Piece& name, std::span<const Piece> operands) {
    if (IsCell(made_.operands[0]) && IsCell(made_.operands[1])) {
        return errors_.Fail(name, "mov cannot copy from RAM to RAM in one step.");
    }
    const bool has_timeout = info_->optional > 0 && made_.target;
    if (has_timeout && !config_.timer) {
        return errors_.Fail(operands.back(),
                            "A timeout target needs a timer, and this card has none.");
    }
    for (const PartRule& rule : kPartRules) {
        if (rule.op == info_->op && !(config_.*rule.part)) {
            return errors_.Fail(name, rule.message);
        }
    }
    return true;
}

void Encoder::AddOperand(Operand::Kind kind, std::int32_t value) {
    made_.operands[operands_++] = {kind, static_cast<std::uint16_t>(value)};
}

}  // namespace kp
