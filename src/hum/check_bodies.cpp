#include "checker.h"
#include "checker_state.h"

namespace hum {

// In the order of the text; a base is checked before the modules that continue it.
bool Checker::Bodies() {
    base_scopes_.resize(checked_.modules.size());
    for (std::uint32_t i = 0; i < tree_.top.size(); ++i) {
        const TopLevel& form = tree_.top[i];
        bool good = true;
        constants_seen_ = i;
        switch (form.kind) {
            case TopKind::Function:
                if (form.body != 0) good = FunctionBody(checked_.symbols[top_symbol_[i]].value);
                break;
            case TopKind::Module:
                good = ModuleBody(checked_.symbols[top_symbol_[i]].value);
                break;
            case TopKind::Master:
                good = PlainBody(checked_.master, BodyKind::Master);
                break;
            case TopKind::Main:
                good = PlainBody(checked_.main, BodyKind::Main);
                break;
            default:
                break;
        }
        if (!good) return false;
    }
    checked_.data_end = next_address_;
    return true;
}

bool Checker::FunctionBody(std::uint32_t number) {
    Function& function = checked_.functions[number];
    context_ = {BodyKind::Function, &function.body, kNoModule, number};
    OpenScope();
    // Ints and pointers lie first in the frame, in order, then the floats.
    std::uint32_t ints = 0;
    std::uint32_t floats = function.ints;
    function.body.frame_words = function.ints + function.floats;
    context_.parameters_end = function.body.frame_words;
    std::size_t order = 0;
    for (NodeId parameter = function.first_parameter; parameter != 0;
         parameter = tree_[parameter].next) {
        const TypeId type = function.parameters[order++];
        const std::uint32_t token = tree_[parameter].token;
        std::uint32_t& offset = type == kFloat ? floats : ints;
        const std::uint32_t symbol = AddSymbol(SymbolKind::Local, type, offset++, token);
        ++context_.locals;
        if (!Declare(NameAt(token), symbol)) return false;
    }
    if (!Statements(function.body.block)) return false;
    CloseScope();
    return true;
}

bool Checker::ModuleBody(std::uint32_t number) {
    Module& module = checked_.modules[number];
    if (module.checked) return true;
    module.checked = true;
    if (module.parent != kNoModule && !ModuleBody(module.parent)) return false;
    context_ = {BodyKind::Module, &module.body, number};
    OpenScope();
    if (module.parent != kNoModule) {
        const Body& base = checked_.modules[module.parent].body;
        module.body.frame_words = base.frame_words;
        module.body.start_words = base.start_words;
        context_.locals = base_scopes_[module.parent].locals;
        for (const auto& [name, symbol] : base_scopes_[module.parent].bindings) {
            checked_.symbols[symbol].scope = scope_numbers_.back();
            if (!Declare(name, symbol)) return false;
        }
    }
    if (!Statements(module.body.block)) return false;
    if (module.abstract) {
        BaseScope& kept = base_scopes_[number];
        kept.locals = context_.locals;
        for (std::size_t i = scopes_.back(); i < hidden_.size(); ++i) {
            kept.bindings.emplace_back(hidden_[i].name, binding_[hidden_[i].name]);
        }
    }
    CloseScope();
    return true;
}

bool Checker::PlainBody(Body& body, BodyKind kind) {
    context_ = {kind, &body};
    OpenScope();
    if (!Statements(body.block)) return false;
    CloseScope();
    return true;
}

bool Checker::Statements(NodeId block) {
    for (NodeId statement = tree_[block].a; statement != 0; statement = tree_[statement].next) {
        if (!Statement(statement)) return false;
    }
    return true;
}

bool Checker::Statement(NodeId id) {
    const Node& node = tree_[id];
    switch (node.kind) {
        case NodeKind::Block: {
            OpenScope();
            if (!Statements(id)) return false;
            CloseScope();
            return true;
        }
        case NodeKind::Expression:
            return Expression(node.a) != kNoType;
        case NodeKind::If:
            return If(id);
        case NodeKind::While:
            return Condition(node.a) && LoopBody(node.b);
        case NodeKind::For:
            return For(id);
        case NodeKind::Break:
        case NodeKind::Continue:
            if (context_.loops > 0) return true;
            return Fail(node.token,
                        "'" + NameText(NameAt(node.token)) + "' is only valid inside a loop");
        case NodeKind::Return:
            return Return(id);
        case NodeKind::Yield:
        case NodeKind::Wait:
        case NodeKind::Sustain:
            return Pause(id);
        case NodeKind::Local:
            return Local(id);
        default:
            return true;
    }
}

bool Checker::Scoped(NodeId statement) {
    OpenScope();
    if (!Statement(statement)) return false;
    CloseScope();
    return true;
}

bool Checker::If(NodeId id) {
    for (; tree_[id].kind == NodeKind::If; id = tree_[id].c) {
        if (!Condition(tree_[id].a) || !Scoped(tree_[id].b)) return false;
        if (tree_[id].c == 0) return true;
    }
    return Scoped(id);
}

bool Checker::Condition(NodeId expression) {
    return Value(expression) != kNoType;
}

bool Checker::LoopBody(NodeId statement) {
    ++context_.loops;
    if (!Scoped(statement)) return false;
    --context_.loops;
    return true;
}

bool Checker::For(NodeId id) {
    const Node& node = tree_[id];
    const Node& body = tree_[node.c];
    OpenScope();
    if (node.a != 0 && !Statement(node.a)) return false;
    if (node.b != 0 && !Condition(node.b)) return false;
    if (body.a != 0 && Expression(body.a) == kNoType) return false;
    if (!LoopBody(body.b)) return false;
    CloseScope();
    return true;
}

bool Checker::Return(NodeId id) {
    const Node& node = tree_[id];
    const TypeId result =
        context_.kind == BodyKind::Function ? checked_.functions[context_.function].result : kVoid;
    if (node.a == 0) return true;
    if (result == kVoid) {
        std::string name = NameText(NameAt(context_.body->token));
        if (context_.kind == BodyKind::Module) name = "a module";
        return Fail(node.token, name + " does not return a value; write 'return;'");
    }
    const TypeId type = Value(node.a);
    if (type == kNoType) return false;
    return ConvertsTo(result, node.a, type) || Incompatible(node.token);
}

bool Checker::Pause(NodeId id) {
    const std::uint32_t token = tree_[id].token;
    if (context_.kind == BodyKind::Master || context_.kind == BodyKind::Main) {
        return Fail(token, "master cannot yield, wait, or sustain");
    }
    if (tree_[id].a != 0 && !Number(tree_[id].a)) return false;
    if (tree_[id].kind != NodeKind::Sustain) return true;
    // The samples left and the carry to come.
    std::uint32_t offset = 0;
    if (!AllotFrame(2, token, offset)) return false;
    tree_[id].c = offset;
    return LoopBody(tree_[id].b);
}

bool Checker::Local(NodeId id) {
    const std::uint16_t flags = tree_[id].detail;
    for (NodeId part = tree_[id].a; part != 0; part = tree_[part].next) {
        if (!LocalVariable(part, flags)) return false;
    }
    return true;
}

bool Checker::LocalVariable(NodeId id, std::uint16_t flags) {
    const TypeId type = DeclaredType(id);
    if (type == kNoType) return false;
    const std::uint32_t token = tree_[id].token;
    if (context_.locals++ == kMaxLocals) return Fail(token, "too many locals");
    const std::uint32_t words = checked_.types[type].words;
    const bool is_static = (flags & kStatic) != 0;
    // A function's static is one variable for all its calls; a module's frame is its own anyway.
    const bool in_frame = !is_static || context_.kind != BodyKind::Function;
    std::uint32_t place = 0;
    if (in_frame ? !AllotFrame(words, token, place) : !Reserve(words, token, place)) return false;
    const std::uint32_t symbol =
        AddSymbol(in_frame ? SymbolKind::Local : SymbolKind::Global, type, place, token);
    checked_.symbols[symbol].read_only = (flags & kConst) != 0;
    tree_[id].type = symbol;
    if (!Declare(NameAt(token), symbol)) return false;
    const NodeId value = tree_[id].b;
    if (value == 0) return true;
    if (!is_static) return InitialValue(type, value, FirstToken(value));
    return StartValue(type, value, place,
                      in_frame ? context_.body->start_words : checked_.start_words);
}

bool Checker::AllotFrame(std::uint32_t words, std::uint32_t token, std::uint32_t& offset) {
    offset = context_.body->frame_words;
    if (words > kMaxFrame - offset) return Fail(token, "module frame is too large");
    context_.body->frame_words += words;
    return true;
}

bool Checker::InitialValue(TypeId type, NodeId value, std::uint32_t token) {
    if (checked_.types.IsAggregate(type)) {
        return EachEntry(type, value, [&](TypeId part, NodeId entry, std::uint32_t) {
            return InitialValue(part, entry, FirstToken(entry));
        });
    }
    if (tree_[value].kind == NodeKind::Braces) {
        return Fail(tree_[value].token, "expected expression");
    }
    const TypeId value_type = Value(value);
    if (value_type == kNoType) return false;
    return ConvertsTo(type, value, value_type) || Incompatible(token);
}

bool Checker::TooMany(TypeId type, NodeId extra) {
    const Type& of = checked_.types[type];
    if (of.kind == TypeKind::Array) {
        return Fail(FirstToken(extra),
                    "too many initializers: the array holds " + std::to_string(of.count));
    }
    const StructType& structure = checked_.structs[of.count];
    return Fail(FirstToken(extra), "too many initializers: '" + NameText(structure.name) +
                                       "' has " + std::to_string(structure.fields.size()) +
                                       " fields");
}

}  // namespace hum
