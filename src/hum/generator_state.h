#pragma once

#include <optional>
#include <string>
#include <vector>

#include "checked.h"
#include "generator.h"
#include "hum/builtins.h"
#include "hum/opcodes.h"
#include "sources.h"

namespace hum {

// Code is made in one walk over the tree. Temporaries are a stack of registers for each kind; the
// value of an expression lands in the register that was the first free one before it. After a
// fault the walk goes on without effect until it ends.
class Generator {
public:
    Generator(const Tokens& tokens, const Tree& tree, const Checked& checked, Program& program);
    void Run();
    std::optional<Fault> TakeFault() { return std::move(fault_); }

private:
    using Register = std::uint8_t;

    // A word, or the first word of something larger, that an instruction can reach.
    struct Place {
        enum class Kind : std::uint8_t { Fixed, Based, Element };
        Kind kind = Kind::Fixed;
        Register base = 0;        // Based, Element
        std::int32_t offset = 0;  // Fixed: the address; Based: from the base
        Register index = 0;       // Element, as the rest: an array's scalar by its index
        bool wrap = false;
        std::uint32_t count = 0;
        std::uint32_t stride = 0;
    };
    // Jumps that wait for their target: the last of them, each holding the one before in imm.
    struct Jumps {
        std::int32_t last = -1;
    };
    struct Loop {
        Jumps leave;
        Jumps again;
        bool is_sustain = false;
    };
    struct Marks {
        std::uint32_t ints;
        std::uint32_t floats;
    };

    // generator.cpp
    void LayOutMemory();
    std::uint32_t Allot(std::uint32_t words, std::uint32_t token);
    std::uint32_t AllotFrame(const Body& body);
    void Coroutine(const Body& body, std::uint32_t frame, std::uint32_t module);
    void ModuleBlocks(const Module& module);
    void FunctionCode(std::uint32_t number);
    void Describe();
    std::string NameOf(std::uint32_t token) const;
    void Fail(std::uint32_t token, std::string_view message);
    std::int32_t Here() const { return static_cast<std::int32_t>(program_.code.size()); }
    void Emit(Op op, std::uint32_t rd, std::uint32_t ra, std::uint32_t rb, std::int32_t imm = 0,
              std::int32_t aux = 0);
    void EmitMemory(Op op, Register value, const Place& place);
    std::uint32_t Position(std::uint32_t token);
    Register TakeInt();
    Register TakeFloat();
    Marks Mark() const { return {ints_, floats_}; }
    void Release(Marks marks);
    void Jump(Jumps& jumps, Op op, Register condition);
    void Land(Jumps& jumps);
    void LandAt(Jumps& jumps, std::int32_t target);

    // generate_statements.cpp
    void Block(NodeId block);
    void Statement(NodeId statement);
    void StatementOf(NodeId statement);
    void If(NodeId statement);
    void While(NodeId statement);
    void For(NodeId statement);
    void Leave(NodeId statement);
    void Return(NodeId statement);
    void Halt();
    void Pause(NodeId statement);
    void Span(TimeUnit unit, NodeId length);
    void Sustain(NodeId statement);
    void SwapCarry(Register with);
    void ClearCarry();
    void Locals(NodeId statement, std::uint16_t flags);
    void LocalStart(const Place& place, TypeId type, NodeId value);
    void Fill(const Place& place, TypeId type, NodeId value);
    void Clear(const Place& place, std::uint32_t words);
    void Branch(NodeId condition, bool when, Jumps& jumps);

    // generate_expressions.cpp
    void Discard(NodeId expression);
    Register Value(NodeId expression);
    Register ValueOf(NodeId expression);
    Register IntValue(NodeId expression);
    Register FloatValue(NodeId expression);
    Register ValueAs(NodeId expression, TypeId type);
    Register LoadInt(std::int32_t value);
    Register LoadFloat(std::uint32_t bits);
    Register ToFloat(Register value, Marks marks);
    Register ToInt(Register value, Marks marks);
    Register Unary(NodeId expression);
    Register BinaryChain(NodeId expression);
    Register Binary(const Node& node, Register left);
    Register PointerArithmetic(const Node& node, Register left);
    Register Scaled(NodeId number, std::uint32_t words);
    void Scale(Register value, std::uint32_t words);
    Register Truth(NodeId expression);
    Register Conditional(NodeId expression);
    Register Call(NodeId expression);
    static constexpr std::uint32_t kMaxOfOneKind = 12;  // arguments in registers
    std::int32_t CallTarget(std::uint32_t function);
    Register Assign(NodeId expression, bool wanted);
    Register Update(NodeId expression, bool wanted);
    Register Step(NodeId expression, bool wanted);
    Register Kept(Register value, Marks marks, bool is_float, bool wanted);

    // generate_places.cpp
    Place PlaceOf(NodeId expression);
    Place PlaceBehind(NodeId pointer);
    Place NamedPlace(const Symbol& symbol) const;
    Place IndexPlace(NodeId expression);
    Place ArrayElement(NodeId expression);
    Place PointerElement(NodeId expression);
    Place Row(const Place& element);
    Place FramePlace(std::uint32_t offset) const;
    Register AddressIn(const Place& place, Marks marks);
    Register Load(const Place& place, TypeId type, Marks marks);
    void Store(const Place& place, bool is_float, Register value);

    bool IsFloat(TypeId type) const { return type == kFloat; }
    std::uint32_t Words(TypeId type) const { return checked_.types[type].words; }
    static Place Shifted(Place place, std::uint32_t words);

    const Tokens& tokens_;
    const Tree& tree_;
    const Checked& checked_;
    Program& program_;
    std::optional<Fault> fault_;
    std::uint32_t token_ = 0;  // of what is being made
    std::uint32_t ints_ = 0;   // registers in use
    std::uint32_t floats_ = 0;
    bool in_function_ = false;
    TypeId result_ = kVoid;               // of that function
    std::uint32_t frame_ = 0;             // address of the body's frame outside of functions
    std::uint32_t output_ = 0;            // address of the module's output
    std::vector<std::uint32_t> outputs_;  // addresses by module
    std::vector<std::uint32_t> frames_;
    std::uint32_t main_frame_ = 0;
    std::uint32_t master_frame_ = 0;
    std::vector<Loop> loops_;
    std::vector<NodeId> chain_;
    std::vector<std::uint32_t> called_;  // functions in the order of their first call
    std::vector<Jumps> calls_;           // that wait, by function, as the rest
    std::vector<std::int32_t> entries_;  // first instruction, or -1
    std::vector<bool> is_called_;
    std::uint32_t line_token_ = 0;  // the place of the last instruction, and where its line begins
    std::uint32_t line_start_ = 0;
};

}  // namespace hum
