#include "hum/listing.h"

#include <bit>
#include <cstdlib>
#include <map>

#include "base/format.h"
#include "hum/opcodes.h"

namespace hum {
namespace {

std::string Raw(const Instruction& in) {
    const std::string mnemonic =
        in.op < kOpcodeCount ? std::string(kOpcodes[in.op].mnemonic) : base::Format("op%u", in.op);
    std::string text =
        base::Format("%-8srd=%u ra=%u rb=%u imm=%d", mnemonic.c_str(), in.rd, in.ra, in.rb, in.imm);
    if (in.aux != 0) text += base::Format(" stride=%d", in.aux);
    return text;
}

std::string Memory(const Instruction& in) {
    if (in.rb == kAbsolute) return base::Format("[0x%x]", static_cast<std::uint32_t>(in.imm));
    if (in.imm == 0) return base::Format("[i%u]", in.rb);
    return base::Format("[i%u%+d]", in.rb, in.imm);
}

std::string Element(const char* mnemonic, char kind, const Instruction& in) {
    return base::Format("%-8s%c%u, i%u, i%u  count %d, stride %d", mnemonic, kind, in.rd, in.ra,
                        in.rb, in.imm, in.aux);
}

std::string Float(const char* mnemonic, const Instruction& in) {
    const std::string number =
        base::Format("%g", static_cast<double>(std::bit_cast<float>(in.imm)));
    const float back = std::strtof(number.c_str(), nullptr);
    if (std::bit_cast<std::int32_t>(back) != in.imm) return Raw(in);
    return base::Format("%-8sf%u, ", mnemonic, in.rd) + number;
}

}  // namespace

std::string InstructionText(const Instruction& in) {
    if (in.op >= kOpcodeCount) return Raw(in);
    const Opcode& opcode = kOpcodes[in.op];
    const std::string name(opcode.mnemonic);
    const char* op = name.c_str();
    switch (opcode.form) {
        case Form::None:
            return name;
        case Form::LoadInt:
            return base::Format("%-8si%u, %d", op, in.rd, in.imm);
        case Form::LoadFloat:
            return Float(op, in);
        case Form::Ints2:
            return base::Format("%-8si%u, i%u", op, in.rd, in.ra);
        case Form::Floats2:
            return base::Format("%-8sf%u, f%u", op, in.rd, in.ra);
        case Form::IntToFloat:
            return base::Format("%-8sf%u, i%u", op, in.rd, in.ra);
        case Form::FloatToInt:
            return base::Format("%-8si%u, f%u", op, in.rd, in.ra);
        case Form::Ints3:
            return base::Format("%-8si%u, i%u, i%u", op, in.rd, in.ra, in.rb);
        case Form::Floats3:
            return base::Format("%-8sf%u, f%u, f%u", op, in.rd, in.ra, in.rb);
        case Form::CompareFloats:
            return base::Format("%-8si%u, f%u, f%u", op, in.rd, in.ra, in.rb);
        case Form::MemoryToInt:
            return base::Format("%-8si%u, ", op, in.rd) + Memory(in);
        case Form::MemoryToFloat:
            return base::Format("%-8sf%u, ", op, in.rd) + Memory(in);
        case Form::IntToMemory:
            return base::Format("%-8s%s, i%u", op, Memory(in).c_str(), in.ra);
        case Form::FloatToMemory:
            return base::Format("%-8s%s, f%u", op, Memory(in).c_str(), in.ra);
        case Form::Jump:
            return base::Format("%-8s%d", op, in.imm);
        case Form::JumpIf:
            return base::Format("%-8si%u, %d", op, in.ra, in.imm);
        case Form::IntTarget:
            return base::Format("%-8si%u", op, in.rd);
        case Form::IntSource:
            return base::Format("%-8si%u", op, in.ra);
        case Form::FloatTarget:
            return base::Format("%-8sf%u", op, in.rd);
        case Form::FloatSource:
            return base::Format("%-8sf%u", op, in.ra);
        case Form::IntElement:
            return Element(op, 'i', in);
        case Form::FloatElement:
            return Element(op, 'f', in);
        case Form::Raw:
            return Raw(in);
    }
    return Raw(in);
}

std::string Listing(const Program& program) {
    std::string text;
    for (const Program::Struct& structure : program.structs) {
        text += base::Format(".struct %s %u\n", structure.name.c_str(), structure.words);
    }
    std::multimap<std::uint32_t, std::string> heads;
    if (program.main != kNoCode) heads.emplace(program.main, ".main");
    for (const Program::Module& module : program.modules) {
        heads.emplace(module.code, ".module " + module.name + " " + module.output);
    }
    if (program.master != kNoCode) heads.emplace(program.master, ".master");
    for (const Program::Entry& entry : program.entries) {
        heads.emplace(entry.code, ".entry " + entry.name);
    }
    auto head = heads.begin();
    for (std::uint32_t i = 0; i < program.code.size(); ++i) {
        for (; head != heads.end() && head->first == i; ++head) text += head->second + '\n';
        text += InstructionText(program.code[i]) + '\n';
    }
    return text;
}

}  // namespace hum
