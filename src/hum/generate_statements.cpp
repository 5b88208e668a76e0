#include "generator_state.h"
#include "hum/builtins.h"

namespace hum {
namespace {

// Up to so many words are cleared one by one.
constexpr std::uint32_t kFewWords = 4;

std::int32_t Number(std::string_view builtin) {
    return static_cast<std::int32_t>(BuiltinNumber(builtin));
}

constexpr std::string_view kSpans[] = {"span", "span_beats", "span_bars", "span_ms", "span_sec"};

}  // namespace

void Generator::Block(NodeId block) {
    for (NodeId statement = tree_[block].a; statement != 0; statement = tree_[statement].next) {
        Statement(statement);
    }
}

void Generator::Statement(NodeId id) {
    if (fault_) return;
    token_ = tree_[id].token;
    const Marks marks = Mark();
    StatementOf(id);
    Release(marks);
}

void Generator::StatementOf(NodeId id) {
    const Node& node = tree_[id];
    switch (node.kind) {
        case NodeKind::Block:
            return Block(id);
        case NodeKind::Expression:
            return Discard(node.a);
        case NodeKind::If:
            return If(id);
        case NodeKind::While:
            return While(id);
        case NodeKind::For:
            return For(id);
        case NodeKind::Break:
        case NodeKind::Continue:
            return Leave(id);
        case NodeKind::Return:
            return Return(id);
        case NodeKind::Yield:
        case NodeKind::Wait:
            return Pause(id);
        case NodeKind::Sustain:
            return Sustain(id);
        case NodeKind::Local:
            return Locals(id, node.detail);
        default:
            return;
    }
}

void Generator::If(NodeId id) {
    Jumps end;
    for (; id != 0 && tree_[id].kind == NodeKind::If; id = tree_[id].c) {
        const Node& node = tree_[id];
        Jumps otherwise;
        Branch(node.a, false, otherwise);
        Statement(node.b);
        token_ = node.token;
        if (node.c != 0) Jump(end, Op::Jmp, 0);
        Land(otherwise);
    }
    if (id != 0) Statement(id);
    Land(end);
}

void Generator::While(NodeId id) {
    const Node& node = tree_[id];
    const std::int32_t top = Here();
    loops_.emplace_back();
    Branch(node.a, false, loops_.back().leave);
    Statement(node.b);
    token_ = node.token;
    LandAt(loops_.back().again, top);
    Emit(Op::Jmp, 0, 0, 0, top);
    Land(loops_.back().leave);
    loops_.pop_back();
}

void Generator::For(NodeId id) {
    const Node& node = tree_[id];
    const Node& body = tree_[node.c];
    if (node.a != 0) Statement(node.a);
    const std::int32_t top = Here();
    loops_.emplace_back();
    if (node.b != 0) Branch(node.b, false, loops_.back().leave);
    Statement(body.b);
    Land(loops_.back().again);
    token_ = node.token;
    if (body.a != 0) Discard(body.a);
    Emit(Op::Jmp, 0, 0, 0, top);
    Land(loops_.back().leave);
    loops_.pop_back();
}

void Generator::Leave(NodeId id) {
    Loop& loop = loops_.back();
    const bool breaks = tree_[id].kind == NodeKind::Break;
    if (breaks && loop.is_sustain) ClearCarry();
    Jump(breaks ? loop.leave : loop.again, Op::Jmp, 0);
}

void Generator::Return(NodeId id) {
    const NodeId value = tree_[id].a;
    Register result = 0;
    if (in_function_ && result_ != kVoid) {
        result = value != 0         ? ValueAs(value, result_)
                 : IsFloat(result_) ? LoadFloat(0)
                                    : LoadInt(0);
    }
    for (const Loop& loop : loops_) {
        if (!loop.is_sustain) continue;
        ClearCarry();
        break;
    }
    if (!in_function_) return Halt();
    Emit(Op::Ret, 0, result, 0, result_ == kVoid ? 0 : IsFloat(result_) ? 2 : 1);
}

void Generator::Halt() {
    Emit(Op::Halt, 0, 0, 0);
}

void Generator::Pause(NodeId id) {
    const Node& node = tree_[id];
    if (node.kind == NodeKind::Yield) {
        const Register samples = node.a == 0 ? LoadInt(0) : IntValue(node.a);
        token_ = node.token;
        Emit(Op::Wait, 0, samples, 0, 0);
        return;
    }
    const Register first = static_cast<Register>(ints_);
    Span(static_cast<TimeUnit>(node.detail), node.a);
    token_ = node.token;
    Emit(Op::Wait, 0, first, 0, 1);
}

// The samples that a length takes, in the first free int register.
void Generator::Span(TimeUnit unit, NodeId length) {
    const std::uint32_t token = token_;
    const Marks marks = Mark();
    const Register value = FloatValue(length);
    token_ = token;
    Release(marks);
    const Register samples = TakeInt();
    Emit(Op::Svc, samples, samples, value, Number(kSpans[static_cast<std::size_t>(unit)]));
}

void Generator::SwapCarry(Register with) {
    Emit(Op::Svc, with, 0, with, Number("carry"));
}

void Generator::ClearCarry() {
    const Marks marks = Mark();
    SwapCarry(LoadFloat(0));
    Release(marks);
}

void Generator::Sustain(NodeId id) {
    const Node& node = tree_[id];
    const Place left = FramePlace(node.c);
    const Place carry = FramePlace(node.c + 1);
    const Marks marks = Mark();
    const Register samples = static_cast<Register>(ints_);
    Span(static_cast<TimeUnit>(node.detail), node.a);
    Store(left, false, samples);
    Release(marks);
    const Register kept = LoadFloat(0);
    SwapCarry(kept);
    Store(carry, true, kept);
    Release(marks);

    const std::int32_t top = Here();
    loops_.push_back({{}, {}, true});
    Jumps done;
    const Register count = Load(left, kInt, marks);
    Jump(done, Op::Jz, count);
    const Register one = LoadInt(1);
    Emit(Op::Sub, count, count, one);
    Store(left, false, count);
    Release(marks);
    Statement(node.b);
    token_ = node.token;
    Land(loops_.back().again);
    Emit(Op::Wait, 0, LoadInt(0), 0, 0);
    Release(marks);
    Emit(Op::Jmp, 0, 0, 0, top);
    Land(done);
    SwapCarry(Load(carry, kFloat, marks));
    Land(loops_.back().leave);
    loops_.pop_back();
}

void Generator::Locals(NodeId id, std::uint16_t flags) {
    if ((flags & kStatic) != 0) return;
    for (NodeId part = tree_[id].a; part != 0; part = tree_[part].next) {
        const Symbol& symbol = checked_.symbols[tree_[part].type];
        token_ = tree_[part].token;
        const Marks marks = Mark();
        LocalStart(NamedPlace(symbol), symbol.type, tree_[part].b);
        Release(marks);
    }
}

void Generator::LocalStart(const Place& place, TypeId type, NodeId value) {
    if (checked_.types.IsAggregate(type)) {
        Clear(place, Words(type));
        if (value != 0) Fill(place, type, value);
    } else if (value != 0) {
        const std::uint32_t token = token_;
        const Register start = ValueAs(value, type);
        token_ = token;
        Store(place, IsFloat(type), start);
    } else {
        const bool is_float = IsFloat(type);
        Store(place, is_float, is_float ? LoadFloat(0) : LoadInt(0));
    }
}

void Generator::Clear(const Place& place, std::uint32_t words) {
    const Marks marks = Mark();
    if (words <= kFewWords) {
        const Register zero = LoadInt(0);
        for (std::uint32_t i = 0; i < words; ++i) Store(Shifted(place, i), false, zero);
    } else {
        const Register address = AddressIn(place, marks);
        LoadInt(static_cast<std::int32_t>(words));
        Emit(Op::Svc, 0, address, 0, Number("clear"));
    }
    Release(marks);
}

// Puts what stands in the braces over cleared memory.
void Generator::Fill(const Place& place, TypeId type, NodeId braces) {
    const Type& of = checked_.types[type];
    std::uint32_t order = 0;
    for (NodeId part = tree_[braces].a; part != 0; part = tree_[part].next, ++order) {
        TypeId part_type = of.of;
        std::uint32_t offset = order * Words(of.of);
        if (of.kind == TypeKind::Struct) {
            part_type = checked_.structs[of.count].fields[order].type;
            offset = checked_.structs[of.count].fields[order].offset;
        }
        const Place at = Shifted(place, offset);
        if (checked_.types.IsAggregate(part_type)) {
            Fill(at, part_type, part);
            continue;
        }
        const Marks marks = Mark();
        Store(at, IsFloat(part_type), ValueAs(part, part_type));
        Release(marks);
    }
}

// Jumps when the condition is as wanted, and goes on otherwise.
void Generator::Branch(NodeId id, bool when, Jumps& jumps) {
    const Node& node = tree_[id];
    const Marks marks = Mark();
    if (node.kind == NodeKind::Int || node.kind == NodeKind::Float) {
        const std::uint32_t sign = node.kind == NodeKind::Float ? 0x7fffffff : 0xffffffff;
        if (((node.a & sign) != 0) == when) Jump(jumps, Op::Jmp, 0);
    } else if (node.kind == NodeKind::Unary && node.op == Tok::Not) {
        Branch(node.a, !when, jumps);
    } else if (node.kind == NodeKind::Logical) {
        // The left side alone decides when it is false for && or true for ||.
        const bool decides = node.op == Tok::OrOr;
        Jumps past;
        Branch(node.a, decides, decides == when ? jumps : past);
        Branch(node.b, when, jumps);
        Land(past);
    } else {
        const Register value = Truth(id);
        token_ = node.token;
        Jump(jumps, when ? Op::Jnz : Op::Jz, value);
    }
    Release(marks);
}

}  // namespace hum
