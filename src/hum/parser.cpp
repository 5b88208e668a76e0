#include "parser.h"

#include "parser_state.h"

namespace hum {

Parser::Parser(const Tokens& tokens, Tree& tree)
    : tokens_(tokens), tree_(tree), at_(tokens.list.data()), struct_names_(tokens.names.Count()) {
    tree_.nodes.reserve(tokens.list.size() + 1);
    tree_.nodes.emplace_back().height = 0;
    tree_.types.emplace_back();
    // A structure may be used above its definition, so the names of all come first.
    for (std::size_t i = 2; i < tokens.list.size(); ++i) {
        if (tokens.list[i].kind == Tok::LeftBrace && tokens.list[i - 1].kind == Tok::Name &&
            tokens.list[i - 2].kind == Tok::Struct) {
            struct_names_[tokens.list[i - 1].value] = true;
        }
    }
}

Tok Parser::KindAfter(std::uint32_t tokens) const {
    const std::size_t index = Index() + tokens;
    return index < tokens_.list.size() ? tokens_.list[index].kind : Tok::End;
}

bool Parser::Take(Tok kind) {
    if (at_->kind != kind) return false;
    ++at_;
    return true;
}

bool Parser::Expect(Tok kind) {
    return Take(kind) || Fail("expected '" + std::string(TokenText(kind)) + "'");
}

NodeId Parser::FailAt(std::uint32_t token, std::string message) {
    if (!fault_) fault_ = FaultAt(tokens_, SpotOf(tokens_.list[token]), std::move(message));
    return kFailed;
}

bool Parser::IsStructName(const Token& token) const {
    return token.kind == Tok::Name && (IsBuiltinStruct(token.value) || struct_names_[token.value]);
}

bool Parser::IsTypeStart() const {
    switch (at_->kind) {
        case Tok::IntType:
        case Tok::FloatType:
        case Tok::Void:
        case Tok::Struct:
            return true;
        default:
            return IsStructName(*at_);
    }
}

NodeId Parser::Add(NodeKind kind, std::uint32_t token, std::uint32_t a, std::uint32_t b,
                   std::uint32_t c) {
    Node& node = tree_.nodes.emplace_back();
    node.kind = kind;
    node.token = token;
    node.a = a;
    node.b = b;
    node.c = c;
    return static_cast<NodeId>(tree_.nodes.size() - 1);
}

void Parser::Append(List& list, NodeId node) {
    (list.last == 0 ? list.first : tree_[list.last].next) = node;
    list.last = node;
    ++list.count;
}

std::optional<Fault> Parse(const Tokens& tokens, Tree& tree) {
    Parser parser(tokens, tree);
    parser.Program();
    return parser.TakeFault();
}

}  // namespace hum
