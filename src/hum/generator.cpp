#include "generator.h"

#include <bit>

#include "checker.h"
#include "generator_state.h"
#include "hum/memory_map.h"

namespace hum {

Generator::Generator(const Tokens& tokens, const Tree& tree, const Checked& checked,
                     Program& program)
    : tokens_(tokens),
      tree_(tree),
      checked_(checked),
      program_(program),
      calls_(checked.functions.size()),
      entries_(checked.functions.size(), -1),
      is_called_(checked.functions.size()) {}

void Generator::Run() {
    LayOutMemory();
    Describe();
    if (checked_.main.block != 0) {
        program_.main = static_cast<std::uint32_t>(Here());
        Coroutine(checked_.main, main_frame_, kNoModule);
    }
    for (std::uint32_t i = 0; i < checked_.modules.size(); ++i) {
        const Module& module = checked_.modules[i];
        if (module.abstract) continue;
        const StructType& output = checked_.structs[checked_.types[module.output].count];
        program_.modules.push_back({NameOf(module.body.token),
                                    std::string(tokens_.names.Text(output.name)),
                                    static_cast<std::uint32_t>(Here()), outputs_[i]});
        Coroutine(module.body, frames_[i], i);
    }
    if (checked_.master.block != 0) {
        program_.master = static_cast<std::uint32_t>(Here());
        Coroutine(checked_.master, master_frame_, kNoModule);
    }
    // Code for one may call others for the first time.
    for (std::size_t i = 0; i < called_.size() && !fault_; ++i) FunctionCode(called_[i]);
}

// Behind the data come the modules' outputs, then the frames of main, the modules and master.
void Generator::LayOutMemory() {
    program_.start = checked_.start_words;
    program_.data_words = checked_.data_end;
    outputs_.resize(checked_.modules.size());
    frames_.resize(checked_.modules.size());
    for (std::uint32_t i = 0; i < checked_.modules.size(); ++i) {
        const Module& module = checked_.modules[i];
        if (!module.abstract) outputs_[i] = Allot(Words(module.output), module.body.token);
    }
    main_frame_ = AllotFrame(checked_.main);
    for (std::uint32_t i = 0; i < checked_.modules.size(); ++i) {
        if (!checked_.modules[i].abstract) frames_[i] = AllotFrame(checked_.modules[i].body);
    }
    master_frame_ = AllotFrame(checked_.master);
}

std::uint32_t Generator::Allot(std::uint32_t words, std::uint32_t token) {
    const std::uint32_t address = program_.data_words;
    if (words > kMaxMemory - address) {
        Fail(token, "module frame is too large");
        return address;
    }
    program_.data_words += words;
    return address;
}

std::uint32_t Generator::AllotFrame(const Body& body) {
    const std::uint32_t frame = Allot(body.frame_words, body.token);
    for (const StartWord& word : body.start_words) {
        program_.start.push_back({frame + word.address, word.word});
    }
    return frame;
}

// What the program holds besides code.
void Generator::Describe() {
    for (const StructType& structure : checked_.structs) {
        if (IsBuiltinStruct(structure.name)) continue;
        program_.structs.push_back(
            {std::string(tokens_.names.Text(structure.name)), Words(structure.type)});
    }
    for (std::size_t i = 0; i < checked_.params.size(); ++i) {
        const StartWord& param = checked_.params[i];
        program_.params.push_back(
            {NameOf(checked_.param_tokens[i]), param.address, std::bit_cast<float>(param.word)});
    }
    for (const auto& [address, words] : checked_.persistent) {
        program_.persistent.push_back({address, words});
    }
    for (const Source& source : tokens_.sources) program_.sources.push_back(source.name);
}

std::string Generator::NameOf(std::uint32_t token) const {
    return std::string(tokens_.names.Text(tokens_.list[token].value));
}

void Generator::Coroutine(const Body& body, std::uint32_t frame, std::uint32_t module) {
    in_function_ = false;
    frame_ = frame;
    token_ = body.token;
    if (module != kNoModule) {
        output_ = outputs_[module];
        ModuleBlocks(checked_.modules[module]);
    } else {
        Block(body.block);
    }
    Halt();
}

// A module's bases come first, the furthest before all.
void Generator::ModuleBlocks(const Module& module) {
    if (module.parent != kNoModule) ModuleBlocks(checked_.modules[module.parent]);
    Block(module.body.block);
}

void Generator::FunctionCode(std::uint32_t number) {
    const Function& function = checked_.functions[number];
    in_function_ = true;
    result_ = function.result;
    token_ = function.body.token;
    program_.entries.push_back({NameOf(token_), static_cast<std::uint32_t>(Here())});
    entries_[number] = Here();
    LandAt(calls_[number], Here());
    Emit(Op::Enter, 0, function.ints, function.floats,
         static_cast<std::int32_t>(function.body.frame_words));
    Block(function.body.block);
    const Marks marks = Mark();
    if (result_ == kVoid) {
        Emit(Op::Ret, 0, 0, 0, 0);
    } else if (IsFloat(result_)) {
        Emit(Op::Ret, 0, LoadFloat(0), 0, 2);
    } else {
        Emit(Op::Ret, 0, LoadInt(0), 0, 1);
    }
    Release(marks);
}

void Generator::Fail(std::uint32_t token, std::string_view message) {
    if (!fault_) fault_ = FaultAt(tokens_, SpotOf(tokens_.list[token]), std::string(message));
}

// Columns are counted only as far as they are kept, so that one endless line costs no more than
// many short ones.
std::uint32_t Generator::Position(std::uint32_t token) {
    const Token& at = tokens_.list[token];
    const Token& last = tokens_.list[line_token_];
    if (at.line != last.line || at.source != last.source || at.offset < line_start_) {
        const std::string_view text = tokens_.sources[at.source].text;
        std::uint32_t start = at.offset;
        while (start > 0 && at.offset - start < 255 && text[start - 1] != '\n') --start;
        line_token_ = token;
        line_start_ = start;
    }
    return PackPosition(at.source, at.line, at.offset - line_start_ + 1);
}

void Generator::Emit(Op op, std::uint32_t rd, std::uint32_t ra, std::uint32_t rb, std::int32_t imm,
                     std::int32_t aux) {
    if (fault_) return;
    if (program_.code.size() == kMaxInstructions) return Fail(token_, "code too large");
    const auto byte = [](auto value) { return static_cast<std::uint8_t>(value); };
    program_.code.push_back({byte(op), byte(rd), byte(ra), byte(rb), imm, Position(token_), aux});
}

// A load or lea into a register, or a store out of one.
void Generator::EmitMemory(Op op, Register value, const Place& place) {
    const bool stores = op == Op::Store || op == Op::Storef;
    const std::uint32_t base = place.kind == Place::Kind::Fixed ? kAbsolute : place.base;
    Emit(op, stores ? 0 : value, stores ? value : 0, base, place.offset);
}

Generator::Register Generator::TakeInt() {
    const std::uint32_t limit = in_function_ ? kFrameRegister : kIntRegisters;
    if (ints_ < limit) return static_cast<Register>(ints_++);
    Fail(token_, "ran out of integer registers");
    return 0;
}

Generator::Register Generator::TakeFloat() {
    if (floats_ < kFloatRegisters) return static_cast<Register>(floats_++);
    Fail(token_, "ran out of float registers");
    return 0;
}

void Generator::Release(Marks marks) {
    ints_ = marks.ints;
    floats_ = marks.floats;
}

void Generator::Jump(Jumps& jumps, Op op, Register condition) {
    const std::int32_t here = Here();
    Emit(op, 0, condition, 0, jumps.last);
    if (!fault_) jumps.last = here;
}

void Generator::Land(Jumps& jumps) {
    LandAt(jumps, Here());
}

void Generator::LandAt(Jumps& jumps, std::int32_t target) {
    if (fault_) return;
    while (jumps.last >= 0) {
        Instruction& jump = program_.code[static_cast<std::size_t>(jumps.last)];
        jumps.last = std::exchange(jump.imm, target);
    }
}

std::optional<Fault> Generate(const Tokens& tokens, const Tree& tree, const Checked& checked,
                              Program& program) {
    Generator generator(tokens, tree, checked, program);
    generator.Run();
    return generator.TakeFault();
}

}  // namespace hum
