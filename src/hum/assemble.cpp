#include "hum/assemble.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdlib>

#include "checker.h"
#include "hum/opcodes.h"

namespace hum {
namespace {

constexpr std::size_t kMnemonicColumns = 8;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

bool IsWordByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// The opcode of a mnemonic; of "op200" and the like its number. -1 for anything else.
int OpcodeOf(std::string_view mnemonic) {
    for (std::size_t i = 0; i < kOpcodeCount; ++i) {
        if (kOpcodes[i].mnemonic == mnemonic) return static_cast<int>(i);
    }
    std::uint8_t number = 0;
    if (!mnemonic.starts_with("op")) return -1;
    const char* end = mnemonic.data() + mnemonic.size();
    const auto [stop, status] = std::from_chars(mnemonic.data() + 2, end, number);
    return status == std::errc() && stop == end ? number : -1;
}

class Assembler {
public:
    Assembler(std::string_view name, std::string_view text, Program& program)
        : name_(name), text_(text), program_(program) {}

    std::optional<Fault> Read() {
        program_ = {};
        program_.sources.emplace_back(name_);
        while (at_ < text_.size() && ReadLine()) {
        }
        // A name may stand for a structure that follows.
        if (!fault_) PlaceOutputs();
        if (program_.data_words < kDataAddress + kAssembledDataWords) {
            program_.data_words = kDataAddress + kAssembledDataWords;
        }
        return fault_;
    }

private:
    bool ReadLine();
    bool ReadDirective();
    bool ReadInstruction();
    bool ReadOperands(Form form, Instruction& in);
    bool ReadRaw(Instruction& in);
    bool ReadElement(char kind, Instruction& in);
    bool ReadMemory(Instruction& in);
    bool ReadFloat(std::int32_t& bits);
    void PlaceOutputs();

    bool Fail(std::string message) {
        if (!fault_) {
            const auto column = static_cast<std::uint32_t>(at_ - line_start_) + 1;
            fault_ = Fault{std::string(name_), line_, column, std::move(message)};
        }
        return false;
    }
    void SkipBlanks() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
        if (at_ < text_.size() && text_[at_] == ';') {
            while (at_ < text_.size() && text_[at_] != '\n') ++at_;
        }
    }
    bool AtLineEnd() const { return at_ == text_.size() || text_[at_] == '\n'; }
    std::string_view Word() {
        SkipBlanks();
        const std::size_t start = at_;
        while (at_ < text_.size() && IsWordByte(text_[at_])) ++at_;
        return text_.substr(start, at_ - start);
    }
    bool Literal(std::string_view expected) {
        SkipBlanks();
        if (!text_.substr(at_).starts_with(expected)) {
            return Fail("expected '" + std::string(expected) + "'");
        }
        at_ += expected.size();
        return true;
    }
    template <class Integer>
    bool Number(Integer& number, int base = 10) {
        SkipBlanks();
        const char* end = text_.data() + text_.size();
        const auto [stop, status] = std::from_chars(text_.data() + at_, end, number, base);
        if (status == std::errc::result_out_of_range) return Fail("number out of range");
        if (status != std::errc()) return Fail("expected a number");
        at_ = static_cast<std::size_t>(stop - text_.data());
        return true;
    }
    bool Register(char kind, std::uint8_t& number) {
        SkipBlanks();
        const std::size_t start = at_;
        if (!AtLineEnd() && text_[at_] == kind) {
            ++at_;
            const char* end = text_.data() + text_.size();
            const auto [stop, status] = std::from_chars(text_.data() + at_, end, number);
            at_ = static_cast<std::size_t>(stop - text_.data());
            if (status == std::errc() && number < kIntRegisters) return true;
        }
        at_ = start;
        return Fail(std::string("expected a register ") + kind + "0 to " + kind + "11");
    }

    std::string_view name_;
    std::string_view text_;
    Program& program_;
    std::size_t at_ = 0;
    std::size_t line_start_ = 0;
    std::uint32_t line_ = 1;
    std::optional<Fault> fault_;
};

bool Assembler::ReadLine() {
    line_start_ = at_;
    SkipBlanks();
    if (!AtLineEnd()) {
        if (!(text_[at_] == '.' ? ReadDirective() : ReadInstruction())) return false;
        SkipBlanks();
        if (!AtLineEnd()) return Fail("expected the end of the line");
    }
    if (at_ == text_.size()) return true;
    ++at_;
    ++line_;
    return true;
}

bool Assembler::ReadDirective() {
    ++at_;
    const std::size_t start = at_;
    const std::string_view directive = Word();
    const auto here = static_cast<std::uint32_t>(program_.code.size());
    if (directive == "main" || directive == "master") {
        std::uint32_t& code = directive == "main" ? program_.main : program_.master;
        if (code != kNoCode) return Fail("'" + std::string(directive) + "' is already declared");
        code = here;
        return true;
    }
    const bool is_struct = directive == "struct";
    if (!is_struct && directive != "module" && directive != "entry") {
        at_ = start - 1;
        return Fail("unknown directive '." + std::string(directive) + "'");
    }
    const std::string_view name = Word();
    if (name.empty()) return Fail("expected identifier");
    if (is_struct) {
        std::uint32_t words = 0;
        if (!Number(words)) return false;
        if (words > kMaxMemory) return Fail("number out of range");
        program_.structs.push_back({std::string(name), words});
    } else if (directive == "entry") {
        program_.entries.push_back({std::string(name), here});
    } else {
        const std::string_view output = Word();
        if (output.empty()) return Fail("expected module output type");
        constexpr std::size_t kMostModules = 255;
        if (program_.modules.size() == kMostModules) return Fail("too many modules");
        program_.modules.push_back({std::string(name), std::string(output), here, 0});
    }
    return true;
}

bool Assembler::ReadInstruction() {
    if (program_.code.size() == kMaxInstructions) return Fail("code too large");
    const std::size_t start = at_;
    const std::string_view mnemonic = Word();
    int opcode = OpcodeOf(mnemonic);
    if (opcode < 0) {
        // The longest mnemonics fill their columns, and nothing parts them from their operands.
        opcode = OpcodeOf(mnemonic.substr(0, kMnemonicColumns));
        at_ = start + kMnemonicColumns;
    }
    if (opcode < 0) {
        at_ = start;
        return Fail("unknown instruction '" + std::string(mnemonic) + "'");
    }
    Instruction in;
    in.op = static_cast<std::uint8_t>(opcode);
    in.pos = PackPosition(0, line_, static_cast<std::uint32_t>(start - line_start_) + 1);
    SkipBlanks();
    const bool is_known = in.op < kOpcodeCount;
    const bool raw = text_.substr(at_).starts_with("rd=");
    if (!(raw || !is_known ? ReadRaw(in) : ReadOperands(kOpcodes[in.op].form, in))) return false;
    program_.code.push_back(in);
    return true;
}

bool Assembler::ReadRaw(Instruction& in) {
    if (!Literal("rd=") || !Number(in.rd) || !Literal("ra=") || !Number(in.ra)) return false;
    if (!Literal("rb=") || !Number(in.rb) || !Literal("imm=") || !Number(in.imm)) return false;
    SkipBlanks();
    if (!text_.substr(at_).starts_with("stride=")) return true;
    return Literal("stride=") && Number(in.aux);
}

bool Assembler::ReadOperands(Form form, Instruction& in) {
    const auto two = [&](char to, char from) {
        return Register(to, in.rd) && Literal(",") && Register(from, in.ra);
    };
    const auto three = [&](char to, char from) {
        return two(to, from) && Literal(",") && Register(from, in.rb);
    };
    const auto load = [&](char to) {
        return Register(to, in.rd) && Literal(",") && ReadMemory(in);
    };
    const auto store = [&](char from) {
        return ReadMemory(in) && Literal(",") && Register(from, in.ra);
    };
    switch (form) {
        case Form::None:
            return true;
        case Form::LoadInt:
            return Register('i', in.rd) && Literal(",") && Number(in.imm);
        case Form::LoadFloat:
            return Register('f', in.rd) && Literal(",") && ReadFloat(in.imm);
        case Form::Ints2:
            return two('i', 'i');
        case Form::Floats2:
            return two('f', 'f');
        case Form::IntToFloat:
            return two('f', 'i');
        case Form::FloatToInt:
            return two('i', 'f');
        case Form::Ints3:
            return three('i', 'i');
        case Form::Floats3:
            return three('f', 'f');
        case Form::CompareFloats:
            return three('i', 'f');
        case Form::MemoryToInt:
            return load('i');
        case Form::MemoryToFloat:
            return load('f');
        case Form::IntToMemory:
            return store('i');
        case Form::FloatToMemory:
            return store('f');
        case Form::Jump:
            return Number(in.imm);
        case Form::JumpIf:
            return Register('i', in.ra) && Literal(",") && Number(in.imm);
        case Form::IntTarget:
            return Register('i', in.rd);
        case Form::IntSource:
            return Register('i', in.ra);
        case Form::FloatTarget:
            return Register('f', in.rd);
        case Form::FloatSource:
            return Register('f', in.ra);
        case Form::IntElement:
            return ReadElement('i', in);
        case Form::FloatElement:
            return ReadElement('f', in);
        case Form::Raw:
            return Literal("rd=");
    }
    return false;
}

bool Assembler::ReadElement(char kind, Instruction& in) {
    return Register(kind, in.rd) && Literal(",") && Register('i', in.ra) && Literal(",") &&
           Register('i', in.rb) && Literal("count") && Number(in.imm) && Literal(",") &&
           Literal("stride") && Number(in.aux);
}

bool Assembler::ReadMemory(Instruction& in) {
    if (!Literal("[")) return false;
    SkipBlanks();
    if (text_.substr(at_).starts_with("0x")) {
        at_ += 2;
        std::uint32_t address = 0;
        if (!Number(address, 16)) return false;
        in.rb = kAbsolute;
        in.imm = static_cast<std::int32_t>(address);
        return Literal("]");
    }
    if (!Register('i', in.rb)) return false;
    SkipBlanks();
    if (!AtLineEnd() && text_[at_] == '+') ++at_;
    if (!AtLineEnd() && text_[at_] != ']' && !Number(in.imm)) return false;
    return Literal("]");
}

bool Assembler::ReadFloat(std::int32_t& bits) {
    SkipBlanks();
    const std::size_t end = std::min(text_.find_first_of(" \t\r\n;", at_), text_.size());
    const std::string number(text_.substr(at_, end - at_));
    char* stop = nullptr;
    const float value = std::strtof(number.c_str(), &stop);
    if (number.empty() || *stop != '\0') return Fail("expected a number");
    at_ = end;
    bits = std::bit_cast<std::int32_t>(value);
    return true;
}

void Assembler::PlaceOutputs() {
    std::uint32_t address = kDataAddress;
    for (Program::Module& module : program_.modules) {
        module.output_address = address;
        for (const Program::Struct& structure : program_.structs) {
            if (structure.name != module.output) continue;
            if (structure.words > kMaxMemory - address) {
                Fail("module frame is too large");
                return;
            }
            address += structure.words;
            break;
        }
    }
    program_.data_words = address;
}

}  // namespace

std::optional<Fault> Assemble(std::string_view name, std::string_view text, Program& program) {
    return Assembler(name.empty() ? "<input>" : name, text, program).Read();
}

}  // namespace hum
