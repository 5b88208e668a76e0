#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "checked.h"
#include "hum/memory_map.h"
#include "sources.h"

namespace hum {

inline constexpr std::uint32_t kNoSymbol = 0;

// Whether the form is a const number, which constant expressions below it may use.
bool IsScalarConst(const Tree& tree, const TopLevel& form);

// Gives every expression its type and every name its meaning. Every function returns false or
// kNoType once a fault is set.
class Checker {
public:
    Checker(const Tokens& tokens, Tree& tree, Checked& checked);
    bool Program();
    std::optional<Fault> TakeFault() { return std::move(fault_); }

private:
    enum class BodyKind : std::uint8_t { Function, Module, Master, Main };

    // What is known of the body being checked.
    struct Context {
        BodyKind kind = BodyKind::Function;
        Body* body = nullptr;
        std::uint32_t module = kNoModule;
        std::uint32_t function = 0;
        std::uint32_t locals = 0;
        std::uint32_t loops = 0;
        std::uint32_t parameters_end = 0;  // offset of a function's first word that is no parameter
    };
    // A base module's scope, kept for the modules that continue it.
    struct BaseScope {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> bindings;  // names and symbols
        std::uint32_t locals = 0;
    };
    struct Hidden {
        std::uint32_t name;
        std::uint32_t symbol;  // what the name meant before
    };
    // A pointer's origin so far as it can be told: a module's output or a function's parameter.
    struct Origin {
        enum class Kind : std::uint8_t { Unknown, Module, Parameter, ReadOnly };
        Kind kind = Kind::Unknown;
        std::uint32_t number = 0;
    };
    // "Parameter `from` of `caller` is passed on as parameter `to` of `callee`."
    struct PassedOn {
        std::uint32_t callee, to, caller, from;
    };
    // Another module's output as an argument, to be judged when all functions are known.
    struct OutputArgument {
        std::uint32_t token, callee, to;
    };

    // checker.cpp
    bool Fail(std::uint32_t token, std::string message);
    bool Incompatible(std::uint32_t token) { return Fail(token, "incompatible types"); }
    std::string NameText(std::uint32_t name) const { return std::string(tokens_.names.Text(name)); }
    std::uint32_t NameAt(std::uint32_t token) const { return tokens_.list[token].value; }
    std::uint32_t AddSymbol(SymbolKind kind, TypeId type, std::uint32_t value, std::uint32_t token);
    std::uint32_t SymbolOf(std::uint32_t name) const { return binding_[name]; }
    bool Declare(std::uint32_t name, std::uint32_t symbol);
    void OpenScope();
    void CloseScope();
    std::uint32_t FirstToken(NodeId expression) const;

    // check_names.cpp: everything that has a name before a body is looked at.
    void DeclareBuiltins();
    void DeclareBuiltinStructs();
    bool DeclareTopLevel();
    bool DeclareOne(std::uint32_t top);
    bool DeclareStruct(std::uint32_t top);
    bool DeclareFunction(std::uint32_t top);
    bool DeclareModule(std::uint32_t top);
    bool DeclareBody(std::uint32_t top);

    // check_types.cpp
    bool ConstantsAndStructs();
    bool EvaluateConst(std::uint32_t top);
    bool LayOut(std::uint32_t structure);
    TypeId BaseOf(const TypeName& name);
    TypeId DeclaredType(NodeId declarator);
    TypeId SizedType(TypeId element, NodeId sizes, bool wrap, std::uint32_t token);
    TypeId TypeOf(const TypeName& name, std::uint32_t token);
    bool ConstantSize(NodeId size, std::uint32_t& count);
    bool ConstantNumber(NodeId expression, std::string_view message);

    // check_globals.cpp
    bool Globals();
    bool Score(std::uint32_t top);
    bool Clip(std::uint32_t top);
    bool Param(std::uint32_t top);
    bool Global(std::uint32_t top);
    bool Signature(std::uint32_t top);
    bool ModuleHead(std::uint32_t top);
    bool NotABase(const Module& module);
    bool Bases();
    bool Reserve(std::uint32_t words, std::uint32_t token, std::uint32_t& address);
    bool StartValue(TypeId type, NodeId value, std::uint32_t address,
                    std::vector<StartWord>& words);

    // check_bodies.cpp
    bool Bodies();
    bool FunctionBody(std::uint32_t number);
    bool ModuleBody(std::uint32_t number);
    bool PlainBody(Body& body, BodyKind kind);
    bool Statements(NodeId block);
    bool Statement(NodeId statement);
    bool Scoped(NodeId statement);
    bool If(NodeId statement);
    bool Condition(NodeId expression);
    bool LoopBody(NodeId statement);
    bool For(NodeId statement);
    bool Return(NodeId statement);
    bool Pause(NodeId statement);
    bool Local(NodeId statement);
    bool LocalVariable(NodeId declarator, std::uint16_t flags);
    bool AllotFrame(std::uint32_t words, std::uint32_t token, std::uint32_t& offset);
    bool InitialValue(TypeId type, NodeId value, std::uint32_t token);
    // What a braced initial value gives to the parts of a structure or an array: calls
    // entry(type, value, offset) for each.
    template <class Entry>
    bool EachEntry(TypeId type, NodeId value, Entry entry);
    bool TooMany(TypeId type, NodeId extra);

    // check_expressions.cpp
    TypeId Expression(NodeId id);
    TypeId ExpressionOf(NodeId id);
    TypeId Value(NodeId id);
    TypeId Decayed(TypeId type);
    bool Number(NodeId id);
    bool ConvertsTo(TypeId target, NodeId value, TypeId value_type) const;
    TypeId Name(NodeId id);
    TypeId This(NodeId id);
    TypeId Unary(NodeId id);
    TypeId Step(NodeId id);
    TypeId BinaryChain(NodeId id);
    TypeId Binary(NodeId id, TypeId left, TypeId right);
    TypeId PointerArithmetic(NodeId id, TypeId left, TypeId right);
    TypeId Comparison(NodeId id, TypeId left, TypeId right);
    TypeId Logical(NodeId id);
    TypeId Conditional(NodeId id);
    TypeId Assign(NodeId id);
    TypeId Index(NodeId id);
    TypeId Field(NodeId id);
    TypeId Deref(NodeId id);
    TypeId Address(NodeId id);
    TypeId Cast(NodeId id);
    TypeId NotConstant(std::uint32_t token);
    TypeId Mismatch(std::uint32_t token);
    bool IsNull(NodeId id) const;

    // check_constants.cpp
    bool IsConstant(NodeId id) const;
    TypeId MakeInt(NodeId id, std::uint32_t value);
    TypeId MakeFloat(NodeId id, std::uint32_t bits);
    TypeId ConvertConstant(NodeId id, TypeId type);
    TypeId FoldUnary(NodeId id);
    TypeId FoldBinary(NodeId id);
    bool IsTrue(NodeId id) const;
    bool PendingConstant(std::uint32_t symbol);
    bool IsAbove(const Symbol& symbol) const;

    // check_calls.cpp
    TypeId Call(NodeId id);
    TypeId CallFunction(NodeId id, std::uint32_t symbol);
    TypeId CallBuiltin(NodeId id, std::uint32_t number);
    TypeId Len(NodeId id);
    bool BadCount(std::uint32_t name_token, std::size_t least, std::size_t most, std::size_t given);
    bool BadArgument(std::size_t order, std::uint32_t name_token, std::string_view wanted);
    TypeId ArgumentType(NodeId argument);
    void PassOn(NodeId argument, std::uint32_t callee, std::uint32_t order, std::uint32_t token);
    bool IsOwnOutput(const Origin& origin) const;
    bool PointsTo(TypeId pointer, TypeId scalar);
    bool BuiltinWrites(NodeId argument, std::uint32_t token);
    bool JudgeOutputArguments();

    // check_places.cpp
    bool IsPlace(NodeId id) const;
    Origin OriginOfPlace(NodeId place) const;
    Origin OriginOfPointer(NodeId pointer) const;
    bool CheckWrite(NodeId place, std::uint32_t token, std::string_view refusal);
    std::uint32_t ParameterAt(const Symbol& symbol) const;

    const Tokens& tokens_;
    Tree& tree_;
    Checked& checked_;
    std::vector<std::uint32_t> binding_;     // a name's symbol, or kNoSymbol
    std::vector<std::uint32_t> struct_of_;   // a name's structure plus 1, or 0
    std::vector<std::uint32_t> top_symbol_;  // by place in Tree::top
    std::vector<Hidden> hidden_;
    std::vector<std::size_t> scopes_;  // where each begins in hidden_
    std::uint32_t scope_count_ = 0;
    std::vector<std::uint32_t> scope_numbers_;
    std::vector<BaseScope> base_scopes_;  // by module
    std::vector<PassedOn> passed_on_;
    std::vector<OutputArgument> output_arguments_;
    std::vector<NodeId> chain_;  // of operators whose left sides are being followed
    Context context_;
    std::string_view constant_message_;  // set while only constants may stand
    std::uint32_t constants_seen_ = 0;   // top-level forms before this one are declared above
    std::uint32_t constant_depth_ = 0;
    std::uint32_t next_address_ = kDataAddress;
    std::optional<Fault> fault_;
};

template <class Entry>
bool Checker::EachEntry(TypeId type, NodeId value, Entry entry) {
    if (tree_[value].kind != NodeKind::Braces) {
        return Fail(FirstToken(value),
                    "a struct or array is initialized with { ... }, not an expression");
    }
    const bool is_array = checked_.types.IsArray(type);
    const std::uint32_t number = checked_.types[type].count;
    const std::size_t room = is_array ? number : checked_.structs[number].fields.size();
    std::size_t count = 0;
    for (NodeId part = tree_[value].a; part != 0; part = tree_[part].next, ++count) {
        if (count == room) return TooMany(type, part);
        TypeId part_type = kNoType;
        std::uint32_t offset = 0;
        if (is_array) {
            part_type = checked_.types[type].of;
            offset = static_cast<std::uint32_t>(count) * checked_.types[part_type].words;
        } else {
            part_type = checked_.structs[number].fields[count].type;
            offset = checked_.structs[number].fields[count].offset;
        }
        if (!entry(part_type, part, offset)) return false;
    }
    return true;
}

}  // namespace hum
