#include "checker_state.h"

namespace hum {

bool Checker::IsPlace(NodeId id) const {
    const Node& node = tree_[id];
    switch (node.kind) {
        case NodeKind::Name: {
            const SymbolKind kind = checked_.symbols[node.b].kind;
            return kind != SymbolKind::Module && kind != SymbolKind::Clip;
        }
        case NodeKind::Deref:
        case NodeKind::Index:
            return true;
        case NodeKind::Field:
            return checked_.types.IsPointer(tree_[node.a].type) || node.op == Tok::Arrow ||
                   IsPlace(node.a);
        default:
            return false;
    }
}

// What owns the memory that a place is in.
Checker::Origin Checker::OriginOfPlace(NodeId id) const {
    for (;;) {
        const Node& node = tree_[id];
        if (node.kind == NodeKind::Name) {
            const Symbol& symbol = checked_.symbols[node.b];
            if (symbol.read_only) return {Origin::Kind::ReadOnly, node.b};
            return {};
        }
        if (node.kind == NodeKind::Deref) return OriginOfPointer(node.a);
        if (node.kind != NodeKind::Field && node.kind != NodeKind::Index) return {};
        if (checked_.types.IsPointer(tree_[node.a].type)) return OriginOfPointer(node.a);
        id = node.a;
    }
}

// What a pointer points into, so far as its expression tells; an array counts as a pointer.
Checker::Origin Checker::OriginOfPointer(NodeId id) const {
    for (;;) {
        const Node& node = tree_[id];
        if (checked_.types.IsArray(node.type)) return OriginOfPlace(id);
        switch (node.kind) {
            case NodeKind::Name: {
                const Symbol& symbol = checked_.symbols[node.b];
                if (symbol.kind == SymbolKind::Module) return {Origin::Kind::Module, symbol.value};
                const bool is_parameter = context_.kind == BodyKind::Function &&
                                          symbol.kind == SymbolKind::Local &&
                                          symbol.value < context_.parameters_end;
                if (!is_parameter) return {};
                return {Origin::Kind::Parameter, ParameterAt(symbol)};
            }
            case NodeKind::Address:
                return OriginOfPlace(node.a);
            case NodeKind::Cast:
                id = node.b;
                break;
            case NodeKind::Step:
                id = node.a;
                break;
            case NodeKind::Binary:
                id =
                    static_cast<Operands>(node.detail) == Operands::IntAndPointer ? node.b : node.a;
                break;
            case NodeKind::Conditional: {
                const Origin then = OriginOfPointer(node.b);
                if (then.kind != Origin::Kind::Unknown) return then;
                id = node.c;
                break;
            }
            default:
                return {};
        }
    }
}

// Which of the function's parameters the symbol is.
std::uint32_t Checker::ParameterAt(const Symbol& symbol) const {
    const Function& function = checked_.functions[context_.function];
    std::uint32_t order = 0;
    for (NodeId parameter = function.first_parameter; tree_[parameter].token != symbol.token;
         parameter = tree_[parameter].next) {
        ++order;
    }
    return order;
}

bool Checker::CheckWrite(NodeId place, std::uint32_t token, std::string_view refusal) {
    if (!IsPlace(place)) return Fail(token, std::string(refusal));
    const Origin origin = OriginOfPlace(place);
    switch (origin.kind) {
        case Origin::Kind::Unknown:
            return true;
        case Origin::Kind::ReadOnly: {
            const bool is_tempo = checked_.symbols[origin.number].value == kBpmAddress &&
                                  checked_.symbols[origin.number].kind == SymbolKind::Host;
            return (is_tempo && context_.kind == BodyKind::Master) ||
                   Fail(token, std::string(refusal));
        }
        case Origin::Kind::Parameter:
            checked_.functions[context_.function].writes |=
                static_cast<std::uint16_t>(1u << origin.number);
            return true;
        case Origin::Kind::Module:
            if (context_.kind == BodyKind::Module && origin.number == context_.module) return true;
            return Fail(token, "cannot write another module's output from this module");
    }
    return true;
}

}  // namespace hum
