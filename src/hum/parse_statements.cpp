#include <array>

#include "parser_state.h"

namespace hum {
namespace {

struct WaitForm {
    NodeKind kind;
    TimeUnit unit;
};

constexpr WaitForm kWaitWords[] = {
    // in the order of Known
    {NodeKind::Wait, TimeUnit::Bars},             // wait_bar
    {NodeKind::Wait, TimeUnit::Beats},            // wait_beats
    {NodeKind::Wait, TimeUnit::Beats},            // wait_note
    {NodeKind::Sustain, TimeUnit::Bars},          // sustain_bar
    {NodeKind::Sustain, TimeUnit::Beats},         // sustain_beats
    {NodeKind::Sustain, TimeUnit::Milliseconds},  // sustain_ms
    {NodeKind::Sustain, TimeUnit::Beats},         // sustain_note
    {NodeKind::Sustain, TimeUnit::Seconds},       // sustain_sec
};

}  // namespace

NodeId Parser::Block() {
    const std::uint32_t brace = Index();
    if (!Expect(Tok::LeftBrace)) return kFailed;
    List statements;
    while (!Take(Tok::RightBrace)) {
        if (Kind() == Tok::End) return Expect(Tok::RightBrace);
        if (statements.count == kMaxEntries) return Fail("block too large");
        const NodeId statement = Statement();
        if (statement == 0) return kFailed;
        Append(statements, statement);
    }
    return Add(NodeKind::Block, brace, statements.first, statements.count);
}

NodeId Parser::Statement() {
    if (depth_ == kMaxNesting) return Fail("block too large");
    ++depth_;
    const NodeId statement = StatementOf(Kind());
    --depth_;
    return statement;
}

NodeId Parser::StatementOf(Tok kind) {
    switch (kind) {
        case Tok::LeftBrace:
            return Block();
        case Tok::Semicolon:
            ++at_;
            return Add(NodeKind::Empty, Index() - 1);
        case Tok::If:
            return If();
        case Tok::While:
            return While();
        case Tok::For:
            return For();
        case Tok::Break:
            return Jump(NodeKind::Break);
        case Tok::Continue:
            return Jump(NodeKind::Continue);
        case Tok::Return:
            return Return();
        case Tok::Yield:
            return Yield();
        case Tok::Wait:
            return WaitOrSustain(NodeKind::Wait, TimeUnit::Samples);
        case Tok::Sustain:
            return WaitOrSustain(NodeKind::Sustain, TimeUnit::Samples);
        case Tok::Static:
        case Tok::Const:
        case Tok::IntType:
        case Tok::FloatType:
        case Tok::Void:
        case Tok::Struct:
            return Local();
        case Tok::Name:
            break;
        default:
            return ExpressionStatement();
    }
    const Tok next = KindAfter(1);
    if (IsStructName(*at_) && (next == Tok::Name || next == Tok::Star)) return Local();
    if (IsWaitWord(at_->value) && next == Tok::LeftParen) return WaitWord();
    return ExpressionStatement();
}

NodeId Parser::ExpressionStatement() {
    const std::uint32_t first = Index();
    const NodeId expression = Expression();
    if (expression == 0 || !Expect(Tok::Semicolon)) return kFailed;
    return Add(NodeKind::Expression, first, expression);
}

NodeId Parser::Local() {
    const std::uint32_t first = Index();
    std::uint16_t flags = 0;
    if (!Qualifiers(flags, false)) return kFailed;
    const std::uint32_t type = BaseType("expected declaration");
    if (type == 0) return kFailed;
    List declarators;
    do {
        const NodeId declarator = Declarator(type, "expected identifier");
        if (declarator == 0 || !SizesAndMode(declarator) || !InitialValue(declarator)) {
            return kFailed;
        }
        Append(declarators, declarator);
    } while (Take(Tok::Comma));
    if (!Expect(Tok::Semicolon)) return kFailed;
    const NodeId local = Add(NodeKind::Local, first, declarators.first);
    tree_[local].detail = flags;
    return local;
}

// A chain of else-ifs is followed here and not by recursion, however long it is.
NodeId Parser::If() {
    NodeId first = 0;
    NodeId last = 0;
    for (;;) {
        const std::uint32_t keyword = Index();
        ++at_;
        if (!Expect(Tok::LeftParen)) return kFailed;
        const NodeId condition = Expression();
        if (condition == 0 || !Expect(Tok::RightParen)) return kFailed;
        const NodeId then = Statement();
        if (then == 0) return kFailed;
        const NodeId branch = Add(NodeKind::If, keyword, condition, then);
        (last == 0 ? first : tree_[last].c) = branch;
        last = branch;
        if (!Take(Tok::Else)) return first;
        if (Kind() == Tok::If) continue;
        const NodeId otherwise = Statement();
        tree_[last].c = otherwise;
        return otherwise == 0 ? kFailed : first;
    }
}

NodeId Parser::LoopBody(std::uint32_t keyword) {
    if (loops_ == kMaxLoops) return FailAt(keyword, "loops are nested too deeply");
    ++loops_;
    const NodeId body = Statement();
    --loops_;
    return body;
}

NodeId Parser::While() {
    const std::uint32_t keyword = Index();
    ++at_;
    if (!Expect(Tok::LeftParen)) return kFailed;
    const NodeId condition = Expression();
    if (condition == 0 || !Expect(Tok::RightParen)) return kFailed;
    const NodeId body = LoopBody(keyword);
    return body == 0 ? kFailed : Add(NodeKind::While, keyword, condition, body);
}

NodeId Parser::For() {
    const std::uint32_t keyword = Index();
    ++at_;
    if (!Expect(Tok::LeftParen)) return kFailed;
    NodeId start = 0;
    if (!Take(Tok::Semicolon)) {
        const bool is_local = Kind() == Tok::Static || Kind() == Tok::Const ||
                              (IsTypeStart() && (Kind() != Tok::Name || KindAfter(1) == Tok::Name ||
                                                 KindAfter(1) == Tok::Star));
        start = is_local ? Local() : ExpressionStatement();
        if (start == 0) return kFailed;
    }
    NodeId condition = 0;
    if (!Take(Tok::Semicolon)) {
        condition = Expression();
        if (condition == 0 || !Expect(Tok::Semicolon)) return kFailed;
    }
    NodeId step = 0;
    if (!Take(Tok::RightParen)) {
        step = Expression();
        if (step == 0 || !Expect(Tok::RightParen)) return kFailed;
    }
    const NodeId repeated = LoopBody(keyword);
    if (repeated == 0) return kFailed;
    const NodeId body = Add(NodeKind::ForBody, keyword, step, repeated);
    return Add(NodeKind::For, keyword, start, condition, body);
}

NodeId Parser::Jump(NodeKind kind) {
    const std::uint32_t keyword = Index();
    ++at_;
    return Expect(Tok::Semicolon) ? Add(kind, keyword) : kFailed;
}

NodeId Parser::Return() {
    const std::uint32_t keyword = Index();
    ++at_;
    if (Take(Tok::Semicolon)) return Add(NodeKind::Return, keyword);
    const NodeId value = Expression();
    if (value == 0 || !Expect(Tok::Semicolon)) return kFailed;
    return Add(NodeKind::Return, keyword, value);
}

NodeId Parser::Yield() {
    const std::uint32_t keyword = Index();
    ++at_;
    if (!Expect(Tok::LeftParen)) return kFailed;
    NodeId samples = 0;
    if (!Take(Tok::RightParen)) {
        samples = Expression();
        if (samples == 0 || !Expect(Tok::RightParen)) return kFailed;
    }
    return Expect(Tok::Semicolon) ? Add(NodeKind::Yield, keyword, samples) : kFailed;
}

NodeId Parser::WaitWord() {
    const WaitForm form = kWaitWords[at_->value - static_cast<std::uint32_t>(Known::WaitBar)];
    return WaitOrSustain(form.kind, form.unit);
}

NodeId Parser::WaitOrSustain(NodeKind kind, TimeUnit unit) {
    const std::uint32_t keyword = Index();
    ++at_;
    if (!Expect(Tok::LeftParen)) return kFailed;
    const NodeId length = Expression();
    if (length == 0 || !Expect(Tok::RightParen)) return kFailed;
    NodeId body = 0;
    if (kind == NodeKind::Sustain) {
        body = LoopBody(keyword);
        if (body == 0) return kFailed;
    } else if (!Expect(Tok::Semicolon)) {
        return kFailed;
    }
    const NodeId statement = Add(kind, keyword, length, body);
    tree_[statement].detail = static_cast<std::uint16_t>(unit);
    return statement;
}

}  // namespace hum
