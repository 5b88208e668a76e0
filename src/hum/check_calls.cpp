#include <algorithm>

#include "checker_state.h"
#include "hum/builtins.h"

namespace hum {
namespace {

constexpr std::string_view kOrdinals[] = {"first", "second",  "third",  "fourth", "fifth",
                                          "sixth", "seventh", "eighth", "ninth",  "tenth"};

constexpr std::string_view kForeignOutput = "write-param received another module's output";

}  // namespace

TypeId Checker::Call(NodeId id) {
    const Node& node = tree_[id];
    const Node& callee = tree_[node.a];
    if (callee.kind != NodeKind::Name) {
        Fail(node.token, "only a named function can be called");
        return kNoType;
    }
    const std::uint32_t number = SymbolOf(callee.a);
    switch (checked_.symbols[number].kind) {
        case SymbolKind::Function:
            return CallFunction(id, number);
        case SymbolKind::Builtin:
            if (IsKnown(callee.a, Known::Len)) return Len(id);
            return CallBuiltin(id, checked_.symbols[number].value);
        case SymbolKind::None:
        case SymbolKind::Base:
            Fail(callee.token, "unknown function '" + NameText(callee.a) + "'");
            return kNoType;
        default:
            Fail(node.token, "only a named function can be called");
            return kNoType;
    }
}

bool Checker::BadCount(std::uint32_t name_token, std::size_t least, std::size_t most,
                       std::size_t given) {
    const std::string takes =
        "'" + NameText(NameAt(name_token)) + "' takes " + std::to_string(least);
    if (least != most) {
        return Fail(name_token, takes + " to " + std::to_string(most) + " arguments, not " +
                                    std::to_string(given));
    }
    return Fail(name_token, takes + (least == 1 ? " argument" : " arguments") + ", not " +
                                std::to_string(given));
}

bool Checker::BadArgument(std::size_t order, std::uint32_t name_token, std::string_view wanted) {
    const std::size_t last = std::size(kOrdinals) - 1;
    return Fail(name_token, "the " + std::string(kOrdinals[std::min(order, last)]) +
                                " argument of '" + NameText(NameAt(name_token)) + "' must be " +
                                std::string(wanted));
}

// The argument's type as a value; a structure has none and is reported by the caller.
TypeId Checker::ArgumentType(NodeId argument) {
    const TypeId type = Expression(argument);
    return type == kNoType ? kNoType : Decayed(type);
}

TypeId Checker::CallFunction(NodeId id, std::uint32_t symbol) {
    Node& node = tree_[id];
    const std::uint32_t name_token = tree_[node.a].token;
    if (!constant_message_.empty()) return NotConstant(node.token);
    const std::uint32_t number = checked_.symbols[symbol].value;
    const Function& function = checked_.functions[number];
    const std::size_t count = function.parameters.size();
    if (node.c != count) {
        BadCount(name_token, count, count, node.c);
        return kNoType;
    }
    std::uint32_t order = 0;
    for (NodeId argument = node.b; argument != 0; argument = tree_[argument].next, ++order) {
        const TypeId wanted = function.parameters[order];
        const TypeId type = ArgumentType(argument);
        if (type == kNoType) return kNoType;
        const bool is_number = checked_.types.IsNumber(wanted);
        if (!ConvertsTo(wanted, argument, type)) {
            BadArgument(order, name_token, is_number ? "a number" : "a pointer or an array");
            return kNoType;
        }
        if (!is_number) PassOn(argument, number, order, node.token);
    }
    if (function.body.block == 0) {
        Fail(name_token,
             "function '" + NameText(NameAt(name_token)) + "' is declared but has no body");
        return kNoType;
    }
    node.a = number;
    node.detail = static_cast<std::uint16_t>(Callee::Function);
    return function.result;
}

// What a function does with its parameters is known when all have been checked.
void Checker::PassOn(NodeId argument, std::uint32_t callee, std::uint32_t order,
                     std::uint32_t token) {
    const Origin origin = OriginOfPointer(argument);
    if (origin.kind == Origin::Kind::Parameter) {
        passed_on_.push_back({callee, order, context_.function, origin.number});
    }
    if (origin.kind == Origin::Kind::Module && !IsOwnOutput(origin)) {
        output_arguments_.push_back({token, callee, order});
    }
}

bool Checker::IsOwnOutput(const Origin& origin) const {
    return context_.kind == BodyKind::Module && origin.number == context_.module;
}

TypeId Checker::CallBuiltin(NodeId id, std::uint32_t number) {
    Node& node = tree_[id];
    const std::uint32_t name_token = tree_[node.a].token;
    if (!constant_message_.empty()) return NotConstant(node.token);
    const Builtin& builtin = kBuiltins[number];
    const std::size_t most = builtin.arguments.size();
    if (node.c > most || node.c + builtin.optional < most) {
        BadCount(name_token, most - builtin.optional, most, node.c);
        return kNoType;
    }
    std::uint32_t order = 0;
    for (NodeId argument = node.b; argument != 0; argument = tree_[argument].next, ++order) {
        const TypeId type = ArgumentType(argument);
        if (type == kNoType) return kNoType;
        const char letter = builtin.arguments[order];
        if (letter == 'p' || letter == 'w') {
            if (!IsNull(argument) && !PointsTo(type, letter == 'p' ? kFloat : kInt)) {
                BadArgument(order, name_token, "a pointer or an array");
                return kNoType;
            }
            if (!BuiltinWrites(argument, node.token)) return kNoType;
        } else if (!checked_.types.IsNumber(type)) {
            BadArgument(order, name_token, "a number");
            return kNoType;
        }
    }
    node.a = number;
    node.detail = static_cast<std::uint16_t>(Callee::Builtin);
    return builtin.result == 'f' ? kFloat : builtin.result == 'i' ? kInt : kVoid;
}

// Whether everything behind the pointer is of the scalar type, arrays and structures taken apart.
bool Checker::PointsTo(TypeId pointer, TypeId scalar) {
    if (!checked_.types.IsPointer(pointer)) return false;
    TypeId type = checked_.types[pointer].of;
    while (checked_.types.IsArray(type)) type = checked_.types[type].of;
    if (!checked_.types.IsStruct(type)) return type == scalar;
    const std::vector<StructType::Field>& fields =
        checked_.structs[checked_.types[type].count].fields;
    return std::all_of(fields.begin(), fields.end(), [&](const StructType::Field& field) {
        return field.type == scalar || PointsTo(checked_.types.PointerTo(field.type), scalar);
    });
}

// A built-in keeps its state behind every pointer that it takes.
bool Checker::BuiltinWrites(NodeId argument, std::uint32_t token) {
    const Origin origin = OriginOfPointer(argument);
    switch (origin.kind) {
        case Origin::Kind::Unknown:
            return true;
        case Origin::Kind::ReadOnly:
            return Fail(token, "not an lvalue");
        case Origin::Kind::Module:
            return IsOwnOutput(origin) || Fail(token, std::string(kForeignOutput));
        case Origin::Kind::Parameter:
            checked_.functions[context_.function].writes |=
                static_cast<std::uint16_t>(1u << origin.number);
            return true;
    }
    return true;
}

// Of an array or a score a constant; of a clip what the host says.
TypeId Checker::Len(NodeId id) {
    Node& node = tree_[id];
    const std::uint32_t name_token = tree_[node.a].token;
    if (node.c != 1) {
        BadCount(name_token, 1, 1, node.c);
        return kNoType;
    }
    // A score's length is known from the start, so a constant may use it.
    const Node& argument = tree_[node.b];
    TypeId type = kNoType;
    if (!constant_message_.empty() && argument.kind == NodeKind::Name) {
        type = checked_.symbols[SymbolOf(argument.a)].type;
    }
    if (type == kNoType) type = Expression(node.b);
    if (type == kNoType) return kNoType;
    if (checked_.types.IsArray(type)) return MakeInt(id, checked_.types[type].count);
    if (type != kClip) {
        Fail(name_token, "len() needs an array or a clip");
        return kNoType;
    }
    if (!constant_message_.empty()) return NotConstant(node.token);
    node.a = BuiltinNumber("len");
    node.detail = static_cast<std::uint16_t>(Callee::Builtin);
    return kInt;
}

// Follows what is written from the functions that write to those that pass their parameters on.
bool Checker::JudgeOutputArguments() {
    std::sort(passed_on_.begin(), passed_on_.end(), [](const PassedOn& a, const PassedOn& b) {
        return std::pair(a.callee, a.to) < std::pair(b.callee, b.to);
    });
    std::vector<std::pair<std::uint32_t, std::uint32_t>> open;  // functions and parameters
    for (std::uint32_t i = 0; i < checked_.functions.size(); ++i) {
        for (std::uint32_t parameter = 0; parameter < 16; ++parameter) {
            if ((checked_.functions[i].writes >> parameter & 1) != 0)
                open.emplace_back(i, parameter);
        }
    }
    while (!open.empty()) {
        const auto written = open.back();
        open.pop_back();
        const auto first = std::lower_bound(
            passed_on_.begin(), passed_on_.end(), written,
            [](const PassedOn& a, const auto& b) { return std::pair(a.callee, a.to) < b; });
        for (auto at = first; at != passed_on_.end() && std::pair(at->callee, at->to) == written;
             ++at) {
            std::uint16_t& writes = checked_.functions[at->caller].writes;
            const auto bit = static_cast<std::uint16_t>(1u << at->from);
            if ((writes & bit) != 0) continue;
            writes |= bit;
            open.emplace_back(at->caller, at->from);
        }
    }
    for (const OutputArgument& argument : output_arguments_) {
        if ((checked_.functions[argument.callee].writes >> argument.to & 1) != 0) {
            return Fail(argument.token, std::string(kForeignOutput));
        }
    }
    return true;
}

}  // namespace hum
