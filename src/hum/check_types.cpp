#include "checker.h"
#include "checker_state.h"

namespace hum {
namespace {

constexpr std::string_view kBadSize = "array size must be a positive integer constant";
constexpr std::string_view kNotConstant = "an initial value here must be a constant expression";
// Constants that lean on one another only by way of structures defined further down nest; others
// are worked out in order.
constexpr std::uint32_t kMaxConstantDepth = 64;

}  // namespace

bool IsScalarConst(const Tree& tree, const TopLevel& form) {
    if (form.kind != TopKind::Global || (form.flags & kConst) == 0) return false;
    const Node& declarator = tree[form.first];
    const Tok base = tree.types[form.type].base;
    return (base == Tok::IntType || base == Tok::FloatType) && declarator.a == 0 &&
           declarator.detail == 0;
}

// Everything that later constant expressions may use, in the order of the text.
bool Checker::ConstantsAndStructs() {
    for (std::uint32_t i = 0; i < tree_.top.size(); ++i) {
        const TopLevel& form = tree_.top[i];
        constants_seen_ = i;
        bool good = true;
        if (form.kind == TopKind::Struct) {
            good = LayOut(struct_of_[NameAt(form.token)] - 1);
        } else if (form.kind == TopKind::Score) {
            good = Score(i);
        } else if (IsScalarConst(tree_, form)) {
            good = EvaluateConst(i);
        }
        if (!good) return false;
    }
    return true;
}

// Makes the symbol a constant, which needs no memory.
bool Checker::EvaluateConst(std::uint32_t top) {
    const TopLevel& form = tree_.top[top];
    const std::uint32_t symbol = top_symbol_[top];
    if (checked_.symbols[symbol].kind == SymbolKind::Constant) return true;
    if (constant_depth_ == kMaxConstantDepth) return Fail(form.token, std::string(kNotConstant));
    const TypeId type = tree_.types[form.type].base == Tok::IntType ? kInt : kFloat;
    const NodeId value = tree_[form.first].b;
    std::vector<StartWord> words;
    ++constant_depth_;
    const std::uint32_t seen = std::exchange(constants_seen_, top);
    if (value != 0 && !StartValue(type, value, 0, words)) return false;
    constants_seen_ = seen;
    --constant_depth_;
    Symbol& constant = checked_.symbols[symbol];
    constant.kind = SymbolKind::Constant;
    constant.type = type;
    constant.value = words.empty() ? 0 : words[0].word;
    return true;
}

bool Checker::LayOut(std::uint32_t number) {
    if (checked_.structs[number].state == StructType::State::Done) return true;
    checked_.structs[number].state = StructType::State::UnderWay;
    const std::uint32_t seen = std::exchange(constants_seen_, checked_.structs[number].top);
    const TopLevel form = tree_.top[checked_.structs[number].top];
    std::uint32_t words = 0;
    for (NodeId field = form.first; field != 0; field = tree_[field].next) {
        const Node& declarator = tree_[field];
        const TypeName& base = tree_.types[declarator.c];
        if (base.base == Tok::Struct && (declarator.detail & ~kWrapBit) == 0) {
            const std::uint32_t inner = struct_of_[base.name] - 1;
            if (checked_.structs[inner].state == StructType::State::UnderWay) {
                return Fail(base.token, "expected field type");
            }
            if (!LayOut(inner)) return false;
        }
        const TypeId type = DeclaredType(field);
        if (type == kNoType) return false;
        const std::uint32_t name = NameAt(declarator.token);
        for (const StructType::Field& other : checked_.structs[number].fields) {
            if (other.name != name) continue;
            return Fail(declarator.token, "'" + NameText(name) + "' is already declared");
        }
        checked_.structs[number].fields.push_back({name, type, words});
        if (checked_.types[type].words > kMaxMemory - words) {
            return Fail(declarator.token, "array is too large");
        }
        words += checked_.types[type].words;
    }
    constants_seen_ = seen;
    checked_.types.SetWords(checked_.structs[number].type, words);
    checked_.structs[number].state = StructType::State::Done;
    return true;
}

TypeId Checker::BaseOf(const TypeName& name) {
    switch (name.base) {
        case Tok::IntType:
            return kInt;
        case Tok::FloatType:
            return kFloat;
        case Tok::Void:
            return kVoid;
        default:
            return checked_.structs[struct_of_[name.name] - 1].type;
    }
}

// Of a field, a parameter, a global or a local; an array of void is no type.
TypeId Checker::DeclaredType(NodeId id) {
    const Node& declarator = tree_[id];
    const std::uint32_t token = declarator.token;
    TypeId type = BaseOf(tree_.types[declarator.c]);
    for (int stars = declarator.detail & ~kWrapBit; stars > 0; --stars) {
        type = checked_.types.PointerTo(type);
    }
    if (type == kVoid) {
        Incompatible(token);
        return kNoType;
    }
    return SizedType(type, declarator.a, (declarator.detail & kWrapBit) != 0, token);
}

TypeId Checker::SizedType(TypeId element, NodeId sizes, bool wrap, std::uint32_t token) {
    std::uint32_t counts[8];
    std::size_t dimensions = 0;
    std::uint64_t elements = 1;
    for (NodeId size = sizes; size != 0; size = tree_[size].next) {
        std::uint32_t& count = counts[dimensions++];
        if (tree_[size].kind == NodeKind::None) {
            count = 0;
        } else if (!ConstantSize(size, count)) {
            return kNoType;
        } else {
            elements *= count;
        }
        const std::uint64_t words = elements * checked_.types[element].words;
        if (elements > kMaxArrayElements || words > kMaxMemory) {
            Fail(token, "array is too large");
            return kNoType;
        }
    }
    TypeId type = element;
    while (dimensions > 0) {
        const std::uint32_t count = counts[--dimensions];
        // Only the first size can be missing, that of a parameter, which is a pointer either way.
        if (count == 0) return checked_.types.PointerTo(type);
        type = checked_.types.ArrayOf(type, count, wrap);
    }
    return type;
}

// Of a cast or a sizeof.
TypeId Checker::TypeOf(const TypeName& name, std::uint32_t token) {
    TypeId type = BaseOf(name);
    if (name.base == Tok::Struct && name.stars == 0) {
        const std::uint32_t number = struct_of_[name.name] - 1;
        if (checked_.structs[number].state == StructType::State::UnderWay) {
            Fail(name.token, std::string(constant_message_));
            return kNoType;
        }
        const std::string_view message = std::exchange(constant_message_, {});
        if (!LayOut(number)) return kNoType;
        constant_message_ = message;
    }
    for (int stars = name.stars; stars > 0; --stars) type = checked_.types.PointerTo(type);
    if (name.sizes != 0 && type == kVoid) {
        Incompatible(token);
        return kNoType;
    }
    const std::string_view message = std::exchange(constant_message_, {});
    type = SizedType(type, name.sizes, false, token);
    constant_message_ = message;
    return type;
}

bool Checker::ConstantSize(NodeId size, std::uint32_t& count) {
    if (!ConstantNumber(size, kBadSize)) return false;
    const Node& value = tree_[size];
    count = value.a;
    if (value.kind != NodeKind::Int || static_cast<std::int32_t>(count) < 1) {
        return Fail(FirstToken(size), std::string(kBadSize));
    }
    return true;
}

// Leaves an Int or a Float in the place of the expression.
bool Checker::ConstantNumber(NodeId expression, std::string_view message) {
    const std::string_view before = std::exchange(constant_message_, message);
    const std::uint32_t token = tree_[expression].token;
    if (Value(expression) == kNoType) return false;
    constant_message_ = before;
    const NodeKind kind = tree_[expression].kind;
    return kind == NodeKind::Int || kind == NodeKind::Float || Fail(token, std::string(message));
}

}  // namespace hum
