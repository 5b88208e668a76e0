#include <algorithm>
#include <array>

#include "parser_state.h"

namespace hum {
namespace {

constexpr std::string_view kTooDeep = "ran out of integer registers";

// How tightly a binary operator binds; 0 for every other token.
constexpr std::array<std::uint8_t, static_cast<std::size_t>(Tok::Count)> kBinding = [] {
    std::array<std::uint8_t, static_cast<std::size_t>(Tok::Count)> binding{};
    constexpr Tok kLevels[][4] = {
        {Tok::OrOr},
        {Tok::AndAnd},
        {Tok::Or},
        {Tok::Xor},
        {Tok::And},
        {Tok::Equal, Tok::NotEqual},
        {Tok::Less, Tok::LessEqual, Tok::Greater, Tok::GreaterEqual},
        {Tok::Shl, Tok::Sar, Tok::Shr},
        {Tok::Plus, Tok::Minus},
        {Tok::Star, Tok::Slash, Tok::Percent},
    };
    std::uint8_t level = 0;
    for (const auto& operators : kLevels) {
        ++level;
        for (const Tok kind : operators) binding[static_cast<std::size_t>(kind)] = level;
    }
    binding[static_cast<std::size_t>(Tok::End)] = 0;
    return binding;
}();

bool IsAssignment(Tok kind) {
    return kind >= Tok::Assign && kind <= Tok::ShrAssign;
}

}  // namespace

NodeId Parser::AddExpression(NodeKind kind, Tok op, std::uint32_t token, NodeId a, NodeId b,
                             NodeId c) {
    int height = 0;
    for (const NodeId child : {b, c}) height = std::max<int>(height, tree_[child].height);
    // Later stages walk down the left of a chain of operators without recursion.
    const bool in_chain = kind == NodeKind::Binary && tree_[a].kind == NodeKind::Binary;
    height = std::max<int>(height, tree_[a].height - (in_chain ? 1 : 0)) + 1;
    if (height > kMaxNesting) return FailAt(token, std::string(kTooDeep));
    const NodeId node = Add(kind, token, a, b, c);
    tree_[node].op = op;
    tree_[node].height = static_cast<std::uint16_t>(height);
    return node;
}

NodeId Parser::Assignment() {
    const NodeId place = Conditional();
    if (place == 0 || !IsAssignment(Kind())) return place;
    const std::uint32_t token = Index();
    const Tok op = Kind();
    ++at_;
    if (depth_ == kMaxNesting) return Fail(std::string(kTooDeep));
    ++depth_;
    const NodeId value = Assignment();
    --depth_;
    return value == 0 ? kFailed : AddExpression(NodeKind::Assign, op, token, place, value);
}

NodeId Parser::Conditional() {
    const NodeId condition = Binary(1);
    if (condition == 0 || Kind() != Tok::Question) return condition;
    const std::uint32_t token = Index();
    ++at_;
    if (depth_ == kMaxNesting) return Fail(std::string(kTooDeep));
    ++depth_;
    const NodeId then = Assignment();
    if (then == 0 || !Expect(Tok::Colon)) return kFailed;
    const NodeId otherwise = Conditional();
    if (otherwise == 0) return kFailed;
    --depth_;
    return AddExpression(NodeKind::Conditional, Tok::Question, token, condition, then, otherwise);
}

NodeId Parser::Binary(int loosest) {
    NodeId left = Unary();
    while (left != 0) {
        const Tok op = Kind();
        const int binding = kBinding[static_cast<std::size_t>(op)];
        if (binding < loosest) return left;
        const std::uint32_t token = Index();
        ++at_;
        const NodeId right = Binary(binding + 1);
        if (right == 0) return kFailed;
        const bool is_logical = op == Tok::AndAnd || op == Tok::OrOr;
        left = AddExpression(is_logical ? NodeKind::Logical : NodeKind::Binary, op, token, left,
                             right);
    }
    return kFailed;
}

NodeId Parser::Unary() {
    if (depth_ == kMaxNesting) return Fail(std::string(kTooDeep));
    ++depth_;
    const NodeId expression = UnaryOperator();
    --depth_;
    return expression;
}

NodeId Parser::UnaryOperator() {
    const std::uint32_t token = Index();
    const Tok op = Kind();
    NodeKind kind = NodeKind::Unary;
    switch (op) {
        case Tok::Minus:
        case Tok::Plus:
        case Tok::Not:
        case Tok::Tilde:
            break;
        case Tok::Star:
            kind = NodeKind::Deref;
            break;
        case Tok::And:
            kind = NodeKind::Address;
            break;
        case Tok::PlusPlus:
        case Tok::MinusMinus:
            kind = NodeKind::Step;
            break;
        case Tok::Sizeof:
            return Sizeof();
        case Tok::LeftParen:
            if (StartsCast()) return Cast();
            return Postfix();
        default:
            return Postfix();
    }
    ++at_;
    const NodeId operand = Unary();
    return operand == 0 ? kFailed : AddExpression(kind, op, token, operand);
}

NodeId Parser::Cast() {
    const std::uint32_t token = Index();
    ++at_;
    const std::uint32_t type = TypeInParentheses();
    if (type == 0) return kFailed;
    const NodeId value = Unary();
    if (value == 0) return kFailed;
    const NodeId cast = AddExpression(NodeKind::Cast, Tok::End, token, value);
    if (cast == 0) return kFailed;
    tree_[cast].a = type;
    tree_[cast].b = value;
    return cast;
}

// A name between parentheses may be a variable's as well as a structure's; with stars before the
// closing one it can only be a type.
bool Parser::StartsCast() const {
    switch (KindAfter(1)) {
        case Tok::IntType:
        case Tok::FloatType:
        case Tok::Void:
        case Tok::Struct:
            return true;
        case Tok::Name:
            break;
        default:
            return false;
    }
    std::uint32_t ahead = 2;
    while (KindAfter(ahead) == Tok::Star) ++ahead;
    return ahead > 2 && KindAfter(ahead) == Tok::RightParen && IsStructName(at_[1]);
}

NodeId Parser::Sizeof() {
    const std::uint32_t token = Index();
    ++at_;
    if (Kind() == Tok::LeftParen) {
        ++at_;
        if (IsTypeStart()) {
            const std::uint32_t type = TypeInParentheses();
            return type == 0 ? kFailed : Add(NodeKind::SizeofType, token, type);
        }
        --at_;
    }
    const NodeId value = Unary();
    return value == 0 ? kFailed : AddExpression(NodeKind::SizeofValue, Tok::Sizeof, token, value);
}

NodeId Parser::Postfix() {
    NodeId left = Primary();
    while (left != 0) {
        const std::uint32_t token = Index();
        const Tok op = Kind();
        switch (op) {
            case Tok::LeftParen:
                left = Call(left);
                break;
            case Tok::LeftBracket: {
                ++at_;
                const NodeId index = Expression();
                if (index == 0 || !Expect(Tok::RightBracket)) return kFailed;
                left = AddExpression(NodeKind::Index, op, token, left, index);
                break;
            }
            case Tok::Dot:
            case Tok::Arrow:
                left = FieldAccess(left);
                break;
            case Tok::PlusPlus:
            case Tok::MinusMinus:
                ++at_;
                left = AddExpression(NodeKind::Step, op, token, left);
                if (left != 0) tree_[left].detail = 1;
                break;
            default:
                return left;
        }
    }
    return kFailed;
}

NodeId Parser::Call(NodeId callee) {
    const std::uint32_t bracket = Index();
    ++at_;
    List arguments;
    int height = 0;
    while (Kind() != Tok::RightParen) {
        if (arguments.count == kMaxArguments) return Fail("too many arguments");
        const NodeId argument = Assignment();
        if (argument == 0) return kFailed;
        height = std::max<int>(height, tree_[argument].height);
        Append(arguments, argument);
        if (!Take(Tok::Comma)) break;
        if (Kind() == Tok::RightParen) return Fail("expected expression");
    }
    if (!Expect(Tok::RightParen)) return kFailed;
    if (height >= kMaxNesting) return FailAt(bracket, std::string(kTooDeep));
    const NodeId call = AddExpression(NodeKind::Call, Tok::LeftParen, bracket, callee);
    if (call == 0) return kFailed;
    tree_[call].b = arguments.first;
    tree_[call].c = arguments.count;
    tree_[call].height = static_cast<std::uint16_t>(std::max<int>(tree_[call].height, height + 1));
    return call;
}

NodeId Parser::FieldAccess(NodeId object) {
    const std::uint32_t token = Index();
    const Tok op = Kind();
    ++at_;
    if (Kind() != Tok::Name) return Fail("expected field name");
    const NodeId field = AddExpression(NodeKind::Field, op, token, object);
    if (field != 0) tree_[field].b = at_->value;
    ++at_;
    return field;
}

NodeId Parser::Primary() {
    const std::uint32_t token = Index();
    switch (Kind()) {
        case Tok::Int:
            return Add(NodeKind::Int, (++at_, token), tokens_.list[token].value);
        case Tok::Float:
            return Add(NodeKind::Float, (++at_, token), tokens_.list[token].value);
        case Tok::True:
        case Tok::False:
            ++at_;
            return Add(NodeKind::Int, token, at_[-1].kind == Tok::True);
        case Tok::This:
            ++at_;
            return Add(NodeKind::This, token);
        case Tok::Clip:
            if (KindAfter(1) != Tok::LeftParen) return Fail("expected expression");
            [[fallthrough]];
        case Tok::Name:
            ++at_;
            return Add(NodeKind::Name, token, tokens_.list[token].value);
        case Tok::LeftParen: {
            ++at_;
            const NodeId inner = Expression();
            return inner != 0 && Expect(Tok::RightParen) ? inner : kFailed;
        }
        case Tok::String:
            return Fail("string literals are not values; use score or a clip hint");
        default:
            return Fail("expected expression");
    }
}

}  // namespace hum
