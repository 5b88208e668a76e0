#include "checker.h"

#include "checker_state.h"

namespace hum {

Checker::Checker(const Tokens& tokens, Tree& tree, Checked& checked)
    : tokens_(tokens),
      tree_(tree),
      checked_(checked),
      binding_(tokens.names.Count(), kNoSymbol),
      struct_of_(tokens.names.Count(), 0),
      top_symbol_(tree.top.size(), kNoSymbol) {
    checked_.symbols.emplace_back();
}

bool Checker::Program() {
    DeclareBuiltinStructs();
    DeclareBuiltins();
    return DeclareTopLevel() && ConstantsAndStructs() && Globals() && Bodies() &&
           JudgeOutputArguments();
}

bool Checker::Fail(std::uint32_t token, std::string message) {
    if (!fault_) fault_ = FaultAt(tokens_, SpotOf(tokens_.list[token]), std::move(message));
    return false;
}

std::uint32_t Checker::AddSymbol(SymbolKind kind, TypeId type, std::uint32_t value,
                                 std::uint32_t token) {
    const std::uint32_t scope = scopes_.empty() ? 0 : scope_numbers_.back();
    checked_.symbols.push_back({kind, false, type, value, scope, token});
    return static_cast<std::uint32_t>(checked_.symbols.size() - 1);
}

bool Checker::Declare(std::uint32_t name, std::uint32_t symbol) {
    const Symbol& added = checked_.symbols[symbol];
    const std::uint32_t before = binding_[name];
    const bool taken = before != kNoSymbol && checked_.symbols[before].scope == added.scope;
    if (taken || IsWaitWord(name)) {
        return Fail(added.token, "'" + NameText(name) + "' is already declared");
    }
    if (!scopes_.empty()) hidden_.push_back({name, before});
    binding_[name] = symbol;
    return true;
}

void Checker::OpenScope() {
    scopes_.push_back(hidden_.size());
    scope_numbers_.push_back(++scope_count_);
}

void Checker::CloseScope() {
    for (; hidden_.size() > scopes_.back(); hidden_.pop_back()) {
        binding_[hidden_.back().name] = hidden_.back().symbol;
    }
    scopes_.pop_back();
    scope_numbers_.pop_back();
}

// The leftmost token of an expression, parentheses apart.
std::uint32_t Checker::FirstToken(NodeId expression) const {
    for (;;) {
        const Node& node = tree_[expression];
        switch (node.kind) {
            case NodeKind::Step:
                if (node.detail == 0) return node.token;
                [[fallthrough]];
            case NodeKind::Binary:
            case NodeKind::Logical:
            case NodeKind::Conditional:
            case NodeKind::Assign:
            case NodeKind::Index:
            case NodeKind::Field:
                expression = node.a;
                break;
            case NodeKind::Call:
                return node.token - 1;
            default:
                return node.token;
        }
    }
}

std::optional<Fault> Check(const Tokens& tokens, Tree& tree, Checked& checked) {
    Checker checker(tokens, tree, checked);
    checker.Program();
    return checker.TakeFault();
}

}  // namespace hum
