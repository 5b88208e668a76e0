#pragma once

#include <optional>
#include <string>
#include <vector>

#include "parser.h"

namespace hum {

// A recursive descent over the tokens. Every function returns 0 or false once a fault is set.
class Parser {
public:
    Parser(const Tokens& tokens, Tree& tree);

    bool Program();
    std::optional<Fault> TakeFault() { return std::move(fault_); }

private:
    static constexpr NodeId kFailed = 0;

    // Tokens: parser.cpp.
    Tok Kind() const { return at_->kind; }
    Tok KindAfter(std::uint32_t tokens) const;
    std::uint32_t Index() const { return static_cast<std::uint32_t>(at_ - tokens_.list.data()); }
    bool Take(Tok kind);
    bool Expect(Tok kind);
    NodeId FailAt(std::uint32_t token, std::string message);
    NodeId Fail(std::string message) { return FailAt(Index(), std::move(message)); }
    bool IsStructName(const Token& token) const;
    bool IsTypeStart() const;
    NodeId Add(NodeKind kind, std::uint32_t token, std::uint32_t a = 0, std::uint32_t b = 0,
               std::uint32_t c = 0);
    // A list of nodes under way.
    struct List {
        NodeId first = 0, last = 0;
        std::uint32_t count = 0;
    };
    void Append(List& list, NodeId node);

    // parse_top_level.cpp
    bool TopLevelForm();
    bool StructForm();
    bool StructFields(TopLevel& form);
    bool ScoreForm();
    bool ClipForm();
    bool ClipModes(TopLevel& form);
    bool ParamForm();
    bool ModuleForm();
    bool BodyForm(TopKind kind);
    bool GlobalOrFunction();
    bool Globals(std::uint16_t flags, std::uint32_t type);
    bool FunctionForm(std::uint32_t type);
    bool Parameters(TopLevel& form);
    NodeId Parameter();
    bool StartsFunction() const;

    // Declarations inside and outside of blocks: parse_declarations.cpp.
    std::uint32_t BaseType(std::string_view missing);
    bool Stars(std::uint16_t& stars);
    NodeId Declarator(std::uint32_t type, std::string_view missing_name);
    // What stands behind a declarator's name.
    bool SizesAndMode(NodeId declarator);
    bool Size(List& sizes);
    bool InitialValue(NodeId declarator);
    NodeId Initializer();
    NodeId Braces();
    bool Qualifiers(std::uint16_t& flags, bool top_level);
    std::uint32_t TypeInParentheses();

    // parse_statements.cpp
    NodeId Block();
    NodeId Statement();
    NodeId StatementOf(Tok kind);
    NodeId Local();
    NodeId If();
    NodeId While();
    NodeId For();
    NodeId Jump(NodeKind kind);
    NodeId Return();
    NodeId Yield();
    NodeId WaitWord();
    NodeId WaitOrSustain(NodeKind kind, TimeUnit unit);
    NodeId LoopBody(std::uint32_t keyword);
    NodeId ExpressionStatement();

    // parse_expressions.cpp
    NodeId Expression() { return Assignment(); }
    NodeId Assignment();
    NodeId Conditional();
    NodeId Binary(int loosest);
    NodeId Unary();
    NodeId UnaryOperator();
    NodeId Cast();
    NodeId Sizeof();
    NodeId Postfix();
    NodeId Call(NodeId callee);
    NodeId FieldAccess(NodeId object);
    NodeId Primary();
    NodeId AddExpression(NodeKind kind, Tok op, std::uint32_t token, NodeId a, NodeId b = 0,
                         NodeId c = 0);
    bool StartsCast() const;

    const Tokens& tokens_;
    Tree& tree_;
    const Token* at_;
    std::vector<bool> struct_names_;
    int depth_ = 0;
    int loops_ = 0;
    std::optional<Fault> fault_;
};

}  // namespace hum
