#include "symbols.h"

#include <algorithm>

#include "card/instructions.h"
#include "number.h"

namespace kp {
namespace {

bool IsReserved(std::string_view name) {
    return FindInstruction(name) || FindRegister(name) || SameName()(name, "def");
}

bool IsConstantCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_';
}

class SymbolReader {
public:
    explicit SymbolReader(ErrorList& errors) : errors_(errors) {}

    Symbols Read(const SourceLines& source);

private:
    void EnterLabel(const Piece& label);
    void EnterConstant(const Piece& def, const Piece& name, const Piece& value);
    bool CheckConstantName(const Piece& name);
    bool ReadConstant(const Piece& value, std::int32_t& word);

    ErrorList& errors_;
    Symbols symbols_;
    std::int32_t line_ = 0;
    std::int32_t next_instruction_ = 0;
};

Symbols SymbolReader::Read(const SourceLines& source) {
    for (const SourceLine& line : source.All()) {
        line_ = line.number;
        errors_.EnterLine(line_);
        for (const Piece& label : source.Labels(line)) EnterLabel(label);
        if (line.is_def) {
            const auto operands = source.Operands(line);
            EnterConstant(line.name, operands[0], operands[1]);
        }
        if (line.HasInstruction()) ++next_instruction_;
    }
    return std::move(symbols_);
}

void SymbolReader::EnterLabel(const Piece& label) {
    if (IsReserved(label.text)) {
        errors_.Fail(label, Quoted(label.text) + " is a reserved word and cannot name a label.");
    } else if (const Symbol* earlier = symbols_.labels.Find(label.text)) {
        errors_.Fail(label, "Label " + Quoted(label.text) + " is already defined on line " +
                                std::to_string(earlier->line) + ".");
    } else {
        symbols_.labels.Add(label.text, next_instruction_, line_);
    }
}

void SymbolReader::EnterConstant(const Piece& def, const Piece& name, const Piece& value) {
    std::int32_t word = 0;
    if (name.text.empty() || value.text.empty()) {
        errors_.Fail(def, "def needs a name and a value, as in: def SYNC $C1");
    } else if (CheckConstantName(name) && ReadConstant(value, word)) {
        symbols_.constants.Add(name.text, word, line_);
    }
}

bool SymbolReader::CheckConstantName(const Piece& name) {
    if (!IsLetter(name.text[0])) return errors_.Fail(name, "A constant name starts with a letter.");
    if (!std::ranges::all_of(name.text, IsConstantCharacter)) {
        return errors_.Fail(name, "A constant name holds only letters, digits, and underscores.");
    }
    if (IsReserved(name.text)) {
        return errors_.Fail(name,
                            Quoted(name.text) + " is a reserved word and cannot name a constant.");
    }
    const Symbol* earlier = symbols_.constants.Find(name.text);
    return !earlier ||
           errors_.Fail(name, "Constant " + Quoted(name.text) + " is already defined on line " +
                                  std::to_string(earlier->line) + ".");
}

bool SymbolReader::ReadConstant(const Piece& value, std::int32_t& word) {
    const Reading reading = ReadNumber(value.text);
    if (reading.kind == Reading::OutOfRange) {
        return errors_.Fail(value, RangeMessage(reading, value.text));
    }
    if (reading.kind == Reading::Number) {
        word = static_cast<std::uint16_t>(reading.value);
        return true;
    }
    const Symbol* earlier = symbols_.constants.Find(value.text);
    if (!earlier) return errors_.Fail(value, Quoted(value.text) + " is not a number.");
    word = earlier->value;
    return true;
}

}  // namespace

Symbols ReadSymbols(const SourceLines& source, ErrorList& errors) {
    return SymbolReader(errors).Read(source);
}

}  // namespace kp
