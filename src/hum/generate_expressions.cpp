#include <bit>

#include "generator_state.h"

namespace hum {
namespace {

struct Operation {
    Tok token;
    Op ints;
    Op floats;
};

constexpr Operation kOperations[] = {
    {Tok::Plus, Op::Add, Op::Addf},
    {Tok::Minus, Op::Sub, Op::Subf},
    {Tok::Star, Op::Mul, Op::Mulf},
    {Tok::Slash, Op::Div, Op::Divf},
    {Tok::Percent, Op::Mod, Op::Fmod},
    {Tok::And, Op::And, Op::Nop},
    {Tok::Or, Op::Or, Op::Nop},
    {Tok::Xor, Op::Xor, Op::Nop},
    {Tok::Shl, Op::Shl, Op::Nop},
    {Tok::Sar, Op::Sar, Op::Nop},
    {Tok::Shr, Op::Shr, Op::Nop},
    {Tok::Equal, Op::Cmpeq, Op::Fcmpeq},
    {Tok::NotEqual, Op::Cmpne, Op::Fcmpne},
    {Tok::Less, Op::Cmplt, Op::Fcmplt},
    {Tok::LessEqual, Op::Cmple, Op::Fcmple},
    {Tok::Greater, Op::Cmpgt, Op::Fcmpgt},
    {Tok::GreaterEqual, Op::Cmpge, Op::Fcmpge},
};

// In the order of the assignment operators behind '='.
constexpr Tok kUpdates[] = {Tok::Plus, Tok::Minus, Tok::Star, Tok::Slash, Tok::Percent, Tok::And,
                            Tok::Or,   Tok::Xor,   Tok::Shl,  Tok::Sar,   Tok::Shr};

Op OpFor(Tok token, bool floats) {
    for (const Operation& operation : kOperations) {
        if (operation.token == token) return floats ? operation.floats : operation.ints;
    }
    return Op::Nop;
}

bool IsComparison(Tok token) {
    return token >= Tok::Equal && token <= Tok::GreaterEqual;
}

Operands OperandsOf(const Node& node) {
    return static_cast<Operands>(node.detail);
}

}  // namespace

// For its effect alone.
void Generator::Discard(NodeId id) {
    const Marks marks = Mark();
    switch (tree_[id].kind) {
        case NodeKind::Assign:
            Assign(id, false);
            break;
        case NodeKind::Step:
            Step(id, false);
            break;
        default:
            Value(id);
            break;
    }
    Release(marks);
}

// The value as it is: floats in a float register, everything else in an int register. An array
// gives its address. The fault of running out of registers is told at the expression itself.
Generator::Register Generator::Value(NodeId id) {
    if (fault_) return 0;
    token_ = tree_[id].token;
    return ValueOf(id);
}

Generator::Register Generator::ValueOf(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    switch (node.kind) {
        case NodeKind::Int:
            return LoadInt(static_cast<std::int32_t>(node.a));
        case NodeKind::Float:
            return LoadFloat(node.a);
        case NodeKind::This:
            return LoadInt(static_cast<std::int32_t>(output_));
        case NodeKind::Unary:
            return Unary(id);
        case NodeKind::Binary:
            return BinaryChain(id);
        case NodeKind::Logical:
            return Truth(id);
        case NodeKind::Conditional:
            return Conditional(id);
        case NodeKind::Call:
            return Call(id);
        case NodeKind::Assign:
            return Assign(id, true);
        case NodeKind::Step:
            return Step(id, true);
        case NodeKind::Address:
            return AddressIn(PlaceOf(node.a), marks);
        case NodeKind::Cast: {
            const TypeId type = node.type;
            return checked_.types.IsNumber(type) ? ValueAs(node.b, type) : IntValue(node.b);
        }
        case NodeKind::Name: {
            const Symbol& symbol = checked_.symbols[node.b];
            if (symbol.kind == SymbolKind::Clip) {
                return LoadInt(static_cast<std::int32_t>(symbol.value));
            }
            if (symbol.kind == SymbolKind::Module) return AddressIn(PlaceBehind(id), marks);
            break;
        }
        default:
            break;
    }
    const Place place = PlaceOf(id);
    token_ = node.token;
    if (checked_.types.IsAggregate(node.type)) return AddressIn(place, marks);
    return Load(place, node.type, marks);
}

Generator::Register Generator::IntValue(NodeId id) {
    const Marks marks = Mark();
    const Register value = Value(id);
    return IsFloat(tree_[id].type) ? ToInt(value, marks) : value;
}

Generator::Register Generator::FloatValue(NodeId id) {
    const Marks marks = Mark();
    const Node& node = tree_[id];
    if (node.kind == NodeKind::Int) {
        const auto value = static_cast<float>(static_cast<std::int32_t>(node.a));
        return LoadFloat(std::bit_cast<std::uint32_t>(value));
    }
    const Register value = Value(id);
    return IsFloat(node.type) ? value : ToFloat(value, marks);
}

Generator::Register Generator::ValueAs(NodeId id, TypeId type) {
    return IsFloat(type) ? FloatValue(id) : IntValue(id);
}

Generator::Register Generator::LoadInt(std::int32_t value) {
    const Register to = TakeInt();
    Emit(Op::Li, to, 0, 0, value);
    return to;
}

Generator::Register Generator::LoadFloat(std::uint32_t bits) {
    const Register to = TakeFloat();
    Emit(Op::Lf, to, 0, 0, static_cast<std::int32_t>(bits));
    return to;
}

Generator::Register Generator::ToFloat(Register value, Marks marks) {
    Release(marks);
    const Register to = TakeFloat();
    Emit(Op::I2f, to, value, 0);
    return to;
}

Generator::Register Generator::ToInt(Register value, Marks marks) {
    Release(marks);
    const Register to = TakeInt();
    Emit(Op::F2i, to, value, 0);
    return to;
}

Generator::Register Generator::Unary(NodeId id) {
    const Node& node = tree_[id];
    if (node.op == Tok::Not) return Truth(id);
    const Register value = Value(node.a);
    token_ = node.token;
    if (node.op == Tok::Tilde) Emit(Op::Not, value, value, 0);
    if (node.op == Tok::Minus) Emit(IsFloat(node.type) ? Op::Negf : Op::Neg, value, value, 0);
    return value;
}

// Up along the left side of a chain, with what has been worked out always in the same register.
Generator::Register Generator::BinaryChain(NodeId id) {
    const std::size_t bottom = chain_.size();
    const Marks marks = Mark();
    NodeId at = id;
    for (; tree_[at].kind == NodeKind::Binary; at = tree_[at].a) chain_.push_back(at);
    Register left = Value(at);
    TypeId type = tree_[at].type;
    while (chain_.size() > bottom) {
        const Node& node = tree_[chain_.back()];
        chain_.pop_back();
        if (OperandsOf(node) == Operands::Float && !IsFloat(type)) left = ToFloat(left, marks);
        left = Binary(node, left);
        type = node.type;
    }
    return left;
}

Generator::Register Generator::Binary(const Node& node, Register left) {
    const Operands operands = OperandsOf(node);
    const bool compares = IsComparison(node.op);
    if (operands != Operands::Int && operands != Operands::Float) {
        return PointerArithmetic(node, left);
    }
    const bool floats = operands == Operands::Float;
    Marks marks = Mark();
    const Register right = floats ? FloatValue(node.b) : IntValue(node.b);
    token_ = node.token;
    Release(marks);
    if (!floats || !compares) {
        Emit(OpFor(node.op, floats), left, left, right);
        return left;
    }
    --floats_;
    const Register result = TakeInt();
    Emit(OpFor(node.op, true), result, left, right);
    return result;
}

Generator::Register Generator::PointerArithmetic(const Node& node, Register left) {
    const Marks marks = Mark();
    const Operands operands = OperandsOf(node);
    const TypeId pointer = operands == Operands::IntAndPointer ? node.type : tree_[node.a].type;
    const std::uint32_t words = Words(checked_.types[pointer].of);
    if (operands == Operands::IntAndPointer) Scale(left, words);
    const Register right =
        operands == Operands::PointerAndInt ? Scaled(node.b, words) : IntValue(node.b);
    token_ = node.token;
    Release(marks);
    Emit(node.op == Tok::Minus ? Op::Sub : Op::Add, left, left, right);
    if (operands == Operands::Pointers && words != 1) {
        Emit(Op::Div, left, left, LoadInt(static_cast<std::int32_t>(words)));
        Release(marks);
    }
    return left;
}

Generator::Register Generator::Scaled(NodeId id, std::uint32_t words) {
    const Node& node = tree_[id];
    if (node.kind == NodeKind::Int) return LoadInt(static_cast<std::int32_t>(node.a * words));
    const Register value = IntValue(id);
    Scale(value, words);
    return value;
}

void Generator::Scale(Register value, std::uint32_t words) {
    if (words == 1) return;
    const Marks marks = Mark();
    Emit(Op::Mul, value, value, LoadInt(static_cast<std::int32_t>(words)));
    Release(marks);
}

// 1 or 0 for && and || and !; for anything else an int that is 0 when it is false.
Generator::Register Generator::Truth(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    if (node.kind == NodeKind::Logical) {
        Jumps is_false;
        Jumps end;
        Branch(id, false, is_false);
        LoadInt(1);
        Jump(end, Op::Jmp, 0);
        Land(is_false);
        Release(marks);
        const Register value = LoadInt(0);
        Land(end);
        return value;
    }
    const bool inverts = node.kind == NodeKind::Unary && node.op == Tok::Not;
    const NodeId operand = inverts ? node.a : id;
    const Register value = operand == id && node.kind != NodeKind::Unary ? Value(id)
                           : inverts                                     ? Value(operand)
                                                                         : Unary(id);
    const bool is_float = IsFloat(tree_[operand].type);
    token_ = node.token;
    if (!is_float && !inverts) return value;
    const Register zero = is_float ? LoadFloat(0) : LoadInt(0);
    Release(marks);
    const Register result = TakeInt();
    const Op op = inverts ? (is_float ? Op::Fcmpeq : Op::Cmpeq) : Op::Fcmpne;
    Emit(op, result, value, zero);
    return result;
}

Generator::Register Generator::Conditional(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    Jumps otherwise;
    Jumps end;
    Branch(node.a, false, otherwise);
    const auto branch = [&](NodeId value) {
        Release(marks);
        return node.type == kVoid ? Value(value) : ValueAs(value, node.type);
    };
    Register result = branch(node.b);
    token_ = node.token;
    Jump(end, Op::Jmp, 0);
    Land(otherwise);
    result = branch(node.c);
    Land(end);
    return result;
}

Generator::Register Generator::Call(NodeId id) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    const bool is_builtin = static_cast<Callee>(node.detail) == Callee::Builtin;
    const Builtin* builtin = is_builtin ? &kBuiltins[node.a] : nullptr;
    std::size_t order = 0;
    for (NodeId argument = node.b; argument != 0; argument = tree_[argument].next, ++order) {
        const bool is_float = is_builtin ? builtin->arguments[order] == 'f'
                                         : IsFloat(checked_.functions[node.a].parameters[order]);
        const Marks taken = Mark();
        const std::uint32_t of_kind =
            is_float ? taken.floats - marks.floats : taken.ints - marks.ints;
        if (of_kind == kMaxOfOneKind) Fail(node.token, "too many arguments of one kind in a call");
        is_float ? FloatValue(argument) : IntValue(argument);
    }
    token_ = node.token;
    for (; is_builtin && order < builtin->arguments.size(); ++order) LoadInt(0);
    Release(marks);
    Register result = 0;
    if (IsFloat(node.type)) result = TakeFloat();
    if (!IsFloat(node.type) && node.type != kVoid) result = TakeInt();
    if (is_builtin) {
        Emit(Op::Svc, result, marks.ints, marks.floats, static_cast<std::int32_t>(node.a));
    } else {
        Emit(Op::Call, result, marks.ints, marks.floats, CallTarget(node.a));
    }
    return result;
}

// The function's first instruction, or a link in the chain of those that wait for it.
std::int32_t Generator::CallTarget(std::uint32_t function) {
    if (entries_[function] >= 0) return entries_[function];
    if (!is_called_[function]) called_.push_back(function);
    is_called_[function] = true;
    const std::int32_t before = calls_[function].last;
    if (!fault_) calls_[function].last = Here();
    return before;
}

Generator::Register Generator::Assign(NodeId id, bool wanted) {
    const Node& node = tree_[id];
    if (node.op != Tok::Assign) return Update(id, wanted);
    const Register value = ValueAs(node.b, node.type);
    const Marks marks = Mark();
    token_ = node.token;
    const Place place = PlaceOf(node.a);
    token_ = node.token;
    Store(place, IsFloat(node.type), value);
    Release(marks);
    return value;
}

// a op= b: the place and its value come before b.
Generator::Register Generator::Update(NodeId id, bool wanted) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    Place place = PlaceOf(node.a);
    if (place.kind == Place::Kind::Element) place = Row(place);
    token_ = node.token;
    const bool is_float = IsFloat(node.type);
    const Marks with_place = Mark();
    Register value = Load(place, node.type, with_place);
    const Operands operands = OperandsOf(node);
    const Tok op =
        kUpdates[static_cast<std::size_t>(node.op) - static_cast<std::size_t>(Tok::PlusAssign)];
    const bool in_floats = operands == Operands::Float;
    if (in_floats && !is_float) value = ToFloat(value, with_place);
    const std::uint32_t words =
        operands == Operands::PointerAndInt ? Words(checked_.types[node.type].of) : 1;
    const Register right = in_floats ? FloatValue(node.b) : Scaled(node.b, words);
    token_ = node.token;
    Emit(OpFor(op, in_floats), value, value, right);
    if (in_floats && !is_float) value = ToInt(value, with_place);
    Store(place, is_float, value);
    return Kept(value, marks, is_float, wanted);
}

// The value of an assignment, moved to where values are expected, below the place's registers.
Generator::Register Generator::Kept(Register value, Marks marks, bool is_float, bool wanted) {
    Release(marks);
    const Register to = is_float ? TakeFloat() : TakeInt();
    if (wanted && to != value) Emit(is_float ? Op::Fmov : Op::Mov, to, value, 0);
    return to;
}

Generator::Register Generator::Step(NodeId id, bool wanted) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    Place place = PlaceOf(node.a);
    if (place.kind == Place::Kind::Element) place = Row(place);
    token_ = node.token;
    const bool is_float = IsFloat(node.type);
    const bool down = node.op == Tok::MinusMinus;
    const std::int32_t step = checked_.types.IsPointer(node.type)
                                  ? static_cast<std::int32_t>(Words(checked_.types[node.type].of))
                                  : 1;
    const Register value = Load(place, node.type, Mark());
    const bool keeps_old = wanted && node.detail == 1;
    const Register amount =
        is_float ? LoadFloat(std::bit_cast<std::uint32_t>(1.0f)) : LoadInt(step);
    const Register stepped = keeps_old ? amount : value;
    Emit(OpFor(down ? Tok::Minus : Tok::Plus, is_float), stepped, value, amount);
    Store(place, is_float, stepped);
    return Kept(value, marks, is_float, wanted);
}

}  // namespace hum
