#include "checker_state.h"

namespace hum {

TypeId Checker::Expression(NodeId id) {
    const TypeId type = ExpressionOf(id);
    tree_[id].type = type;
    return type;
}

TypeId Checker::ExpressionOf(NodeId id) {
    const Node& node = tree_[id];
    switch (node.kind) {
        case NodeKind::Int:
            return kInt;
        case NodeKind::Float:
            return kFloat;
        case NodeKind::Name:
            return Name(id);
        case NodeKind::Unary:
            return Unary(id);
        case NodeKind::Binary:
            return BinaryChain(id);
        case NodeKind::Logical:
            return Logical(id);
        case NodeKind::Conditional:
            return Conditional(id);
        case NodeKind::Call:
            return Call(id);
        case NodeKind::Cast:
            return Cast(id);
        case NodeKind::SizeofType: {
            const TypeId type = TypeOf(tree_.types[node.a], node.token);
            return type == kNoType ? kNoType : MakeInt(id, checked_.types[type].words);
        }
        case NodeKind::SizeofValue: {
            const TypeId type = Expression(node.a);
            return type == kNoType ? kNoType : MakeInt(id, checked_.types[type].words);
        }
        default:
            break;
    }
    if (!constant_message_.empty()) return NotConstant(node.token);
    switch (node.kind) {
        case NodeKind::This:
            return This(id);
        case NodeKind::Step:
            return Step(id);
        case NodeKind::Assign:
            return Assign(id);
        case NodeKind::Index:
            return Index(id);
        case NodeKind::Field:
            return Field(id);
        case NodeKind::Deref:
            return Deref(id);
        default:
            return Address(id);
    }
}

TypeId Checker::NotConstant(std::uint32_t token) {
    Fail(token, std::string(constant_message_));
    return kNoType;
}

TypeId Checker::Mismatch(std::uint32_t token) {
    Incompatible(token);
    return kNoType;
}

TypeId Checker::Decayed(TypeId type) {
    if (type == kClip) return kInt;
    return checked_.types.IsArray(type) ? checked_.types.PointerTo(checked_.types[type].of) : type;
}

// The type of an expression that must be a number or a pointer.
TypeId Checker::Value(NodeId id) {
    const TypeId type = Expression(id);
    if (type == kNoType) return kNoType;
    if (type == kVoid || checked_.types.IsStruct(type)) return Mismatch(FirstToken(id));
    return Decayed(type);
}

bool Checker::Number(NodeId id) {
    const TypeId type = Value(id);
    if (type == kNoType) return false;
    return checked_.types.IsNumber(type) || Incompatible(FirstToken(id));
}

bool Checker::ConvertsTo(TypeId target, NodeId value, TypeId value_type) const {
    if (target == value_type) return true;
    if (checked_.types.IsNumber(target)) return checked_.types.IsNumber(value_type);
    return checked_.types.IsPointer(target) && IsNull(value);
}

// A literal 0, which is a pointer of every type.
bool Checker::IsNull(NodeId id) const {
    return tree_[id].kind == NodeKind::Int && tree_[id].a == 0;
}

TypeId Checker::Name(NodeId id) {
    const Node& node = tree_[id];
    const std::uint32_t number = SymbolOf(node.a);
    const Symbol& symbol = checked_.symbols[number];
    switch (symbol.kind) {
        case SymbolKind::None:
        case SymbolKind::Base:
            Fail(node.token, "unknown identifier '" + NameText(node.a) + "'");
            return kNoType;
        case SymbolKind::Function:
        case SymbolKind::Builtin:
            Fail(node.token, "'" + NameText(node.a) + "' is a function; call it with ( )");
            return kNoType;
        case SymbolKind::Constant: {
            if (!constant_message_.empty() && !IsAbove(symbol)) return NotConstant(node.token);
            return symbol.type == kInt ? MakeInt(id, symbol.value) : MakeFloat(id, symbol.value);
        }
        default:
            break;
    }
    if (!constant_message_.empty()) {
        if (!PendingConstant(number)) return NotConstant(node.token);
        return Name(id);
    }
    tree_[id].b = number;
    return symbol.type;
}

TypeId Checker::This(NodeId id) {
    if (context_.kind != BodyKind::Module) {
        Fail(tree_[id].token, "'this' is only valid in a module");
        return kNoType;
    }
    return checked_.types.PointerTo(checked_.modules[context_.module].output);
}

TypeId Checker::Unary(NodeId id) {
    const Node& node = tree_[id];
    const TypeId type = Value(node.a);
    if (type == kNoType) return kNoType;
    const bool fits = node.op == Tok::Not ||
                      (node.op == Tok::Tilde ? type == kInt : checked_.types.IsNumber(type));
    if (!fits) return Mismatch(node.token);
    if (IsConstant(node.a)) return FoldUnary(id);
    return node.op == Tok::Not ? kInt : type;
}

TypeId Checker::Step(NodeId id) {
    const Node& node = tree_[id];
    const TypeId type = Expression(node.a);
    if (type == kNoType || !CheckWrite(node.a, node.token, "not an lvalue")) return kNoType;
    const bool fits = checked_.types.IsNumber(type) || checked_.types.IsPointer(type);
    return fits ? type : Mismatch(node.token);
}

// A chain of operators leans to the left and may be of any length.
TypeId Checker::BinaryChain(NodeId id) {
    const std::size_t bottom = chain_.size();
    NodeId at = id;
    for (; tree_[at].kind == NodeKind::Binary; at = tree_[at].a) chain_.push_back(at);
    TypeId left = Value(at);
    while (left != kNoType && chain_.size() > bottom) {
        at = chain_.back();
        chain_.pop_back();
        const TypeId right = Value(tree_[at].b);
        if (right == kNoType) return kNoType;
        left = Binary(at, left, right);
        tree_[at].type = left;
    }
    return left;
}

TypeId Checker::Binary(NodeId id, TypeId left, TypeId right) {
    Node& node = tree_[id];
    if (node.op >= Tok::Equal && node.op <= Tok::GreaterEqual) return Comparison(id, left, right);
    const Types& types = checked_.types;
    if (types.IsPointer(left) || types.IsPointer(right)) return PointerArithmetic(id, left, right);
    TypeId result = left == kInt && right == kInt ? kInt : kFloat;
    const bool ints_only = node.op >= Tok::And && node.op <= Tok::Shr;
    if (ints_only && result != kInt) return Mismatch(node.token);
    node.detail = static_cast<std::uint16_t>(result == kInt ? Operands::Int : Operands::Float);
    if (IsConstant(node.a) && IsConstant(node.b)) return FoldBinary(id);
    return result;
}

TypeId Checker::PointerArithmetic(NodeId id, TypeId left, TypeId right) {
    Node& node = tree_[id];
    const bool left_points = checked_.types.IsPointer(left);
    Operands operands = Operands::PointerAndInt;
    TypeId result = left;
    if (left_points && right == left) {
        operands = Operands::Pointers;
        result = kInt;
        if (node.op != Tok::Minus) return Mismatch(node.token);
    } else if (left_points && right == kInt) {
        if (node.op != Tok::Plus && node.op != Tok::Minus) return Mismatch(node.token);
    } else if (left == kInt && node.op == Tok::Plus) {
        operands = Operands::IntAndPointer;
        result = right;
    } else {
        return Mismatch(node.token);
    }
    node.detail = static_cast<std::uint16_t>(operands);
    return result;
}

TypeId Checker::Comparison(NodeId id, TypeId left, TypeId right) {
    Node& node = tree_[id];
    const Types& types = checked_.types;
    Operands operands = Operands::Int;
    if (types.IsNumber(left) && types.IsNumber(right)) {
        if (left == kFloat || right == kFloat) operands = Operands::Float;
    } else if (left != right && !(types.IsPointer(left) && IsNull(node.b)) &&
               !(types.IsPointer(right) && IsNull(node.a))) {
        return Mismatch(node.token);
    }
    node.detail = static_cast<std::uint16_t>(operands);
    if (IsConstant(node.a) && IsConstant(node.b)) return FoldBinary(id);
    return kInt;
}

TypeId Checker::Logical(NodeId id) {
    const Node& node = tree_[id];
    if (Value(node.a) == kNoType || Value(node.b) == kNoType) return kNoType;
    if (!IsConstant(node.a) || !IsConstant(node.b)) return kInt;
    const bool left = IsTrue(node.a);
    const bool right = IsTrue(node.b);
    return MakeInt(id, node.op == Tok::AndAnd ? left && right : left || right);
}

TypeId Checker::Conditional(NodeId id) {
    const Node& node = tree_[id];
    if (Value(node.a) == kNoType) return kNoType;
    const TypeId then = Expression(node.b);
    if (then == kNoType) return kNoType;
    const TypeId otherwise = Expression(node.c);
    if (otherwise == kNoType) return kNoType;
    if (then == kVoid && otherwise == kVoid) return kVoid;
    const TypeId a = Decayed(then);
    const TypeId b = Decayed(otherwise);
    const Types& types = checked_.types;
    TypeId result = kNoType;
    if (types.IsNumber(a) && types.IsNumber(b)) {
        result = a == kInt && b == kInt ? kInt : kFloat;
    } else if (types.IsPointer(a) && (a == b || IsNull(node.c))) {
        result = a;
    } else if (types.IsPointer(b) && IsNull(node.b)) {
        result = b;
    } else {
        return Mismatch(node.token);
    }
    if (!IsConstant(node.a) || !IsConstant(node.b) || !IsConstant(node.c)) return result;
    const NodeId chosen = IsTrue(node.a) ? node.b : node.c;
    if (ConvertConstant(chosen, result) == kNoType) return kNoType;
    const std::uint32_t word = tree_[chosen].a;
    return result == kInt ? MakeInt(id, word) : MakeFloat(id, word);
}

TypeId Checker::Assign(NodeId id) {
    Node& node = tree_[id];
    const TypeId type = Expression(node.a);
    if (type == kNoType) return kNoType;
    if (!CheckWrite(node.a, node.token, "the left side of '=' cannot be assigned")) return kNoType;
    const Types& types = checked_.types;
    if (types.IsAggregate(type)) {
        Fail(node.token, "a struct or array cannot be assigned whole; assign its fields");
        return kNoType;
    }
    const TypeId value = Value(node.b);
    if (value == kNoType) return kNoType;
    if (node.op == Tok::Assign) {
        return ConvertsTo(type, node.b, value) ? type : Mismatch(node.token);
    }
    Operands operands = type == kInt && value == kInt ? Operands::Int : Operands::Float;
    if (types.IsPointer(type)) {
        operands = Operands::PointerAndInt;
        const bool moves = node.op == Tok::PlusAssign || node.op == Tok::MinusAssign;
        if (value != kInt || !moves) return Mismatch(node.token);
    } else if (!types.IsNumber(type) || !types.IsNumber(value)) {
        return Mismatch(node.token);
    }
    const bool ints_only = node.op >= Tok::AndAssign;
    if (ints_only && operands != Operands::Int) return Mismatch(node.token);
    node.detail = static_cast<std::uint16_t>(operands);
    return type;
}

TypeId Checker::Index(NodeId id) {
    const Node& node = tree_[id];
    const TypeId object = Expression(node.a);
    if (object == kNoType) return kNoType;
    const Type& type = checked_.types[object];
    if (type.kind != TypeKind::Array && type.kind != TypeKind::Pointer) {
        Fail(node.token, "index of a non-array");
        return kNoType;
    }
    const TypeId element = type.of;
    const TypeId index = Value(node.b);
    if (index == kNoType) return kNoType;
    return checked_.types.IsNumber(index) ? element : Mismatch(node.token);
}

TypeId Checker::Field(NodeId id) {
    Node& node = tree_[id];
    TypeId object = Expression(node.a);
    if (object == kNoType) return kNoType;
    if (node.op == Tok::Arrow) {
        object = Decayed(object);
        if (!checked_.types.IsPointer(object)) {
            Fail(node.token, "dereference of a non-pointer");
            return kNoType;
        }
    }
    if (checked_.types.IsPointer(object)) object = checked_.types[object].of;
    if (checked_.types.IsStruct(object)) {
        for (const StructType::Field& field :
             checked_.structs[checked_.types[object].count].fields) {
            if (field.name != node.b) continue;
            node.c = field.offset;
            return field.type;
        }
    }
    Fail(node.token + 1, "no field '" + NameText(node.b) + "'");
    return kNoType;
}

TypeId Checker::Deref(NodeId id) {
    const Node& node = tree_[id];
    const TypeId type = Expression(node.a);
    if (type == kNoType) return kNoType;
    const TypeId pointer = Decayed(type);
    if (!checked_.types.IsPointer(pointer)) {
        Fail(node.token, "dereference of a non-pointer");
        return kNoType;
    }
    return checked_.types[pointer].of;
}

TypeId Checker::Address(NodeId id) {
    const Node& node = tree_[id];
    const TypeId type = Expression(node.a);
    if (type == kNoType) return kNoType;
    const Origin origin =
        IsPlace(node.a) ? OriginOfPlace(node.a) : Origin{Origin::Kind::ReadOnly, 0};
    if (origin.kind == Origin::Kind::ReadOnly) {
        Fail(node.token, "not an lvalue");
        return kNoType;
    }
    return checked_.types.IsArray(type) ? Decayed(type) : checked_.types.PointerTo(type);
}

TypeId Checker::Cast(NodeId id) {
    const Node& node = tree_[id];
    const TypeId target = TypeOf(tree_.types[node.a], node.token);
    if (target == kNoType) return kNoType;
    const TypeId value = Value(node.b);
    if (value == kNoType) return kNoType;
    const Types& types = checked_.types;
    const bool fits = types.IsNumber(target)
                          ? types.IsNumber(value) || (target == kInt && types.IsPointer(value))
                          : types.IsPointer(target) && (types.IsPointer(value) || value == kInt);
    if (!fits) return Mismatch(node.token);
    if (!types.IsNumber(target) || !IsConstant(node.b)) return target;
    if (ConvertConstant(node.b, target) == kNoType) return kNoType;
    const std::uint32_t word = tree_[node.b].a;
    return target == kInt ? MakeInt(id, word) : MakeFloat(id, word);
}

}  // namespace hum
