#include <bit>
#include <cmath>

#include "checker_state.h"
#include "hum/arithmetic.h"

namespace hum {
namespace {

float AsFloat(std::uint32_t bits) {
    return std::bit_cast<float>(bits);
}

std::uint32_t Bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

std::int32_t OfInts(Tok op, std::int32_t a, std::int32_t b) {
    switch (op) {
        case Tok::Plus:
            return Add(a, b);
        case Tok::Minus:
            return Subtract(a, b);
        case Tok::Star:
            return Multiply(a, b);
        case Tok::Slash:
            return Divide(a, b);
        case Tok::Percent:
            return Remainder(a, b);
        case Tok::And:
            return a & b;
        case Tok::Or:
            return a | b;
        case Tok::Xor:
            return a ^ b;
        case Tok::Shl:
            return ShiftLeft(a, b);
        case Tok::Sar:
            return ShiftRight(a, b);
        default:
            return ShiftRightZeros(a, b);
    }
}

float OfFloats(Tok op, float a, float b) {
    switch (op) {
        case Tok::Plus:
            return a + b;
        case Tok::Minus:
            return a - b;
        case Tok::Star:
            return a * b;
        case Tok::Slash:
            return a / b;
        default:
            return std::fmod(a, b);
    }
}

template <class T>
bool Compares(Tok op, T a, T b) {
    switch (op) {
        case Tok::Equal:
            return a == b;
        case Tok::NotEqual:
            return a != b;
        case Tok::Less:
            return a < b;
        case Tok::LessEqual:
            return a <= b;
        case Tok::Greater:
            return a > b;
        default:
            return a >= b;
    }
}

}  // namespace

bool Checker::IsConstant(NodeId id) const {
    return tree_[id].kind == NodeKind::Int || tree_[id].kind == NodeKind::Float;
}

bool Checker::IsTrue(NodeId id) const {
    const Node& node = tree_[id];
    return node.kind == NodeKind::Int ? node.a != 0 : AsFloat(node.a) != 0;
}

TypeId Checker::MakeInt(NodeId id, std::uint32_t value) {
    Node& node = tree_[id];
    node.kind = NodeKind::Int;
    node.a = value;
    return node.type = kInt;
}

TypeId Checker::MakeFloat(NodeId id, std::uint32_t bits) {
    Node& node = tree_[id];
    node.kind = NodeKind::Float;
    node.a = bits;
    return node.type = kFloat;
}

TypeId Checker::ConvertConstant(NodeId id, TypeId type) {
    const Node& node = tree_[id];
    if (type == kFloat && node.kind == NodeKind::Int) {
        return MakeFloat(id, Bits(static_cast<float>(static_cast<std::int32_t>(node.a))));
    }
    if (type == kInt && node.kind == NodeKind::Float) {
        return MakeInt(id, static_cast<std::uint32_t>(ToInt(AsFloat(node.a))));
    }
    return type;
}

TypeId Checker::FoldUnary(NodeId id) {
    const Node& node = tree_[id];
    const std::uint32_t word = tree_[node.a].a;
    const bool is_int = tree_[node.a].kind == NodeKind::Int;
    switch (node.op) {
        case Tok::Not:
            return MakeInt(id, IsTrue(node.a) ? 0 : 1);
        case Tok::Tilde:
            return MakeInt(id, ~word);
        case Tok::Minus:
            return is_int ? MakeInt(id, 0 - word) : MakeFloat(id, Bits(-AsFloat(word)));
        default:
            return is_int ? MakeInt(id, word) : MakeFloat(id, word);
    }
}

TypeId Checker::FoldBinary(NodeId id) {
    const Node& node = tree_[id];
    const bool compares = node.op >= Tok::Equal && node.op <= Tok::GreaterEqual;
    if (static_cast<Operands>(node.detail) == Operands::Int) {
        const auto a = static_cast<std::int32_t>(tree_[node.a].a);
        const auto b = static_cast<std::int32_t>(tree_[node.b].a);
        if (compares) return MakeInt(id, Compares(node.op, a, b));
        return MakeInt(id, static_cast<std::uint32_t>(OfInts(node.op, a, b)));
    }
    ConvertConstant(node.a, kFloat);
    ConvertConstant(node.b, kFloat);
    const float a = AsFloat(tree_[node.a].a);
    const float b = AsFloat(tree_[node.b].a);
    if (compares) return MakeInt(id, Compares(node.op, a, b));
    return MakeFloat(id, Bits(OfFloats(node.op, a, b)));
}

// The language's own constants stand above everything.
bool Checker::IsAbove(const Symbol& symbol) const {
    return constants_seen_ >= tree_.top.size() || symbol.token < tree_.top[constants_seen_].token ||
           symbol.token == 0;
}

// A const that is declared above but stands in line to be worked out, because a structure further
// down is used up here.
bool Checker::PendingConstant(std::uint32_t symbol) {
    for (std::uint32_t top = 0; top < constants_seen_; ++top) {
        if (top_symbol_[top] != symbol) continue;
        if (!IsScalarConst(tree_, tree_.top[top])) return false;
        const std::string_view message = std::exchange(constant_message_, {});
        if (!EvaluateConst(top)) return false;
        constant_message_ = message;
        return true;
    }
    return false;
}

}  // namespace hum
