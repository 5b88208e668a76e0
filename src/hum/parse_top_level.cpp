#include "parser_state.h"

namespace hum {

bool Parser::Program() {
    while (Kind() != Tok::End) {
        if (!TopLevelForm()) return false;
    }
    return true;
}

bool Parser::TopLevelForm() {
    switch (Kind()) {
        case Tok::Struct:
            return StructForm();
        case Tok::Score:
            return ScoreForm();
        case Tok::Clip:
            return ClipForm();
        case Tok::Param:
            return ParamForm();
        case Tok::Abstract:
        case Tok::Module:
            return ModuleForm();
        case Tok::Master:
            return BodyForm(TopKind::Master);
        case Tok::Main:
            return BodyForm(TopKind::Main);
        case Tok::Static:
        case Tok::Const:
        case Tok::Shared:
        case Tok::Persist:
            return GlobalOrFunction();
        default:
            return IsTypeStart() ? GlobalOrFunction() : Fail("expected declaration");
    }
}

bool Parser::StructForm() {
    if (KindAfter(1) != Tok::Name) {
        ++at_;
        return Fail("expected struct name");
    }
    // A variable or a function of a structure's type may begin with the word, too.
    if (KindAfter(2) != Tok::LeftBrace) return GlobalOrFunction();
    TopLevel form;
    form.kind = TopKind::Struct;
    form.token = Index() + 1;
    at_ += 3;
    if (!StructFields(form)) return false;
    tree_.top.push_back(form);
    return Expect(Tok::Semicolon);
}

bool Parser::StructFields(TopLevel& form) {
    List fields;
    while (!Take(Tok::RightBrace)) {
        if (Kind() == Tok::End) return Expect(Tok::RightBrace);
        const std::uint32_t type = BaseType("expected field type");
        if (type == 0) return false;
        do {
            const NodeId field = Declarator(type, "expected field name");
            if (field == 0 || !SizesAndMode(field)) return false;
            if (tree_.types[type].base == Tok::Void && tree_[field].detail == 0) {
                return FailAt(tree_.types[type].token, "expected field type");
            }
            if (fields.count == kMaxEntries) return FailAt(tree_[field].token, "block too large");
            Append(fields, field);
        } while (Take(Tok::Comma));
        if (!Expect(Tok::Semicolon)) return false;
    }
    form.first = fields.first;
    form.count = fields.count;
    return true;
}

bool Parser::ScoreForm() {
    ++at_;
    if (Kind() != Tok::Name) return Fail("expected score name");
    TopLevel form;
    form.kind = TopKind::Score;
    form.token = Index();
    ++at_;
    Take(Tok::Assign);
    if (Kind() != Tok::String) return Fail("score expects a string literal");
    form.first = Index();
    while (Take(Tok::String)) ++form.count;
    tree_.top.push_back(form);
    return Expect(Tok::Semicolon);
}

bool Parser::ClipForm() {
    ++at_;
    if (Kind() != Tok::Name) return Fail("expected identifier");
    TopLevel form;
    form.kind = TopKind::Clip;
    form.token = Index();
    ++at_;
    if (Take(Tok::Assign)) {
        if (Kind() == Tok::String) {
            form.first = Index();
            form.count = 1;
            ++at_;
        } else {
            if (Kind() != Tok::LeftBrace) return Expect(Tok::LeftBrace);
            form.body = Braces();
            if (form.body == 0) return false;
        }
    }
    if (!ClipModes(form)) return false;
    tree_.top.push_back(form);
    return Expect(Tok::Semicolon);
}

bool Parser::ClipModes(TopLevel& form) {
    constexpr auto kWraps = static_cast<std::uint32_t>(Known::Once);
    constexpr auto kFilters = static_cast<std::uint32_t>(Known::Nearest);
    for (; Kind() == Tok::Name; ++at_) {
        const std::uint32_t word = at_->value;
        if (word >= kWraps && word < kWraps + 3) {
            form.wrap = static_cast<std::uint8_t>(word - kWraps);
        } else if (word >= kFilters && word < kFilters + 3) {
            form.filter = static_cast<std::uint8_t>(word - kFilters);
        } else {
            return Fail("unknown wrap or filter mode");
        }
    }
    return true;
}

bool Parser::ParamForm() {
    ++at_;
    if (!Expect(Tok::FloatType)) return false;
    if (Kind() != Tok::Name) return Fail("expected identifier");
    TopLevel form;
    form.kind = TopKind::Param;
    form.token = Index();
    ++at_;
    if (!Expect(Tok::Assign)) return false;
    form.body = Conditional();
    if (form.body == 0) return false;
    tree_.top.push_back(form);
    return Expect(Tok::Semicolon);
}

bool Parser::ModuleForm() {
    TopLevel form;
    form.kind = TopKind::Module;
    form.flags = Take(Tok::Abstract) ? 1 : 0;
    if (!Expect(Tok::Module)) return false;
    if (Kind() != Tok::Name) return Fail("expected module output type");
    form.type = Index();
    ++at_;
    if (!Expect(Tok::Star)) return false;
    if (Kind() != Tok::Name) return Fail("expected module name");
    form.token = Index();
    ++at_;
    if (Take(Tok::Colon)) {
        if (Kind() != Tok::Name) return Fail("expected parent module name");
        form.parent = Index();
        ++at_;
    }
    form.body = Block();
    tree_.top.push_back(form);
    return form.body != 0;
}

bool Parser::BodyForm(TopKind kind) {
    TopLevel form;
    form.kind = kind;
    form.token = Index();
    ++at_;
    if (kind == TopKind::Master && Kind() != Tok::LeftBrace) return Fail("expected master body");
    form.body = Block();
    tree_.top.push_back(form);
    return form.body != 0;
}

bool Parser::GlobalOrFunction() {
    std::uint16_t flags = 0;
    if (!Qualifiers(flags, true)) return false;
    const std::uint32_t type = BaseType("expected declaration");
    if (type == 0) return false;
    return flags == 0 && StartsFunction() ? FunctionForm(type) : Globals(flags, type);
}

bool Parser::StartsFunction() const {
    std::uint32_t ahead = 0;
    while (KindAfter(ahead) == Tok::Star) ++ahead;
    return KindAfter(ahead) == Tok::Name && KindAfter(ahead + 1) == Tok::LeftParen;
}

bool Parser::Globals(std::uint16_t flags, std::uint32_t type) {
    do {
        const NodeId declarator = Declarator(type, "expected identifier");
        if (declarator == 0 || !SizesAndMode(declarator) || !InitialValue(declarator)) return false;
        TopLevel form;
        form.kind = TopKind::Global;
        form.flags = static_cast<std::uint8_t>(flags);
        form.token = tree_[declarator].token;
        form.type = type;
        form.first = declarator;
        tree_.top.push_back(form);
    } while (Take(Tok::Comma));
    return Expect(Tok::Semicolon);
}

bool Parser::FunctionForm(std::uint32_t type) {
    TopLevel form;
    form.kind = TopKind::Function;
    const NodeId declarator = Declarator(type, "expected identifier");
    if (declarator == 0) return false;
    TypeName result = tree_.types[type];
    result.stars = tree_[declarator].detail;
    tree_.types.push_back(result);
    form.type = static_cast<std::uint32_t>(tree_.types.size() - 1);
    form.token = tree_[declarator].token;
    if (!Expect(Tok::LeftParen) || !Parameters(form)) return false;
    if (!Take(Tok::Semicolon)) {
        form.body = Block();
        if (form.body == 0) return false;
    }
    tree_.top.push_back(form);
    return true;
}

bool Parser::Parameters(TopLevel& form) {
    if (Take(Tok::RightParen)) return true;
    if (Kind() == Tok::Void && KindAfter(1) == Tok::RightParen) {
        at_ += 2;
        return true;
    }
    List parameters;
    do {
        if (parameters.count == kMaxArguments) return Fail("too many arguments");
        const NodeId parameter = Parameter();
        if (parameter == 0) return false;
        Append(parameters, parameter);
    } while (Take(Tok::Comma));
    form.first = parameters.first;
    form.count = parameters.count;
    return Expect(Tok::RightParen);
}

NodeId Parser::Parameter() {
    const std::uint32_t type = BaseType("expected parameter type");
    if (type == 0) return kFailed;
    const NodeId parameter = Declarator(type, "expected identifier");
    if (parameter == 0) return kFailed;
    if (tree_.types[type].base == Tok::Void && tree_[parameter].detail == 0) {
        return FailAt(tree_.types[type].token, "expected parameter type");
    }
    List sizes;
    if (Kind() == Tok::LeftBracket && KindAfter(1) == Tok::RightBracket) {
        at_ += 2;
        Append(sizes, Add(NodeKind::None, Index()));
    }
    while (Kind() == Tok::LeftBracket) {
        if (!Size(sizes)) return kFailed;
    }
    tree_[parameter].a = sizes.first;
    return parameter;
}

}  // namespace hum
