#include "parser_state.h"

namespace hum {
namespace {

constexpr std::uint16_t kMaxStars = 255;

}  // namespace

// The index of the type read.
std::uint32_t Parser::BaseType(std::string_view missing) {
    if (!IsTypeStart()) return Fail(std::string(missing));
    TypeName type;
    type.base = Kind();
    type.token = Index();
    if (Kind() == Tok::Struct) {
        ++at_;
        if (!IsStructName(*at_)) return Fail("expected struct name");
    }
    if (Kind() == Tok::Name) {
        type.base = Tok::Struct;
        type.name = at_->value;
    }
    ++at_;
    tree_.types.push_back(type);
    return static_cast<std::uint32_t>(tree_.types.size() - 1);
}

bool Parser::Stars(std::uint16_t& stars) {
    for (; Kind() == Tok::Star; ++at_) {
        if (stars == kMaxStars) return Fail("expected identifier");
        ++stars;
    }
    return true;
}

NodeId Parser::Declarator(std::uint32_t type, std::string_view missing_name) {
    std::uint16_t stars = 0;
    if (!Stars(stars)) return kFailed;
    if (Kind() != Tok::Name) return Fail(std::string(missing_name));
    const NodeId declarator = Add(NodeKind::Declarator, Index(), 0, 0, type);
    tree_[declarator].detail = stars;
    ++at_;
    return declarator;
}

bool Parser::SizesAndMode(NodeId declarator) {
    List sizes;
    while (Kind() == Tok::LeftBracket) {
        if (!Size(sizes)) return false;
    }
    tree_[declarator].a = sizes.first;
    if (sizes.count == 0 || Kind() != Tok::Name) return true;
    if (!IsKnown(at_->value, Known::Wrap)) return Fail("unknown wrap or filter mode");
    tree_[declarator].detail |= kWrapBit;
    ++at_;
    return true;
}

bool Parser::Size(List& sizes) {
    if (sizes.count == kMaxDimensions) return Fail("too many array dimensions");
    ++at_;
    if (Kind() == Tok::RightBracket) return Fail("array size must be a positive integer constant");
    const NodeId size = Conditional();
    if (size == 0) return false;
    Append(sizes, size);
    return Expect(Tok::RightBracket);
}

bool Parser::InitialValue(NodeId declarator) {
    if (!Take(Tok::Assign)) return true;
    const NodeId value = Initializer();
    tree_[declarator].b = value;
    return value != 0;
}

NodeId Parser::Initializer() {
    return Kind() == Tok::LeftBrace ? Braces() : Assignment();
}

NodeId Parser::Braces() {
    if (depth_ == kMaxNesting) return Fail("initializer too large");
    ++depth_;
    const std::uint32_t brace = Index();
    ++at_;
    List entries;
    while (Kind() != Tok::RightBrace) {
        if (entries.count == kMaxEntries) return Fail("initializer too large");
        const NodeId entry = Initializer();
        if (entry == 0) return kFailed;
        Append(entries, entry);
        if (!Take(Tok::Comma)) break;
    }
    --depth_;
    return Expect(Tok::RightBrace) ? Add(NodeKind::Braces, brace, entries.first, entries.count)
                                   : kFailed;
}

bool Parser::Qualifiers(std::uint16_t& flags, bool top_level) {
    bool after_static = false;
    for (;; ++at_) {
        switch (Kind()) {
            case Tok::Static:
                flags |= kStatic;
                break;
            case Tok::Const:
                flags |= kConst;
                break;
            case Tok::Shared:
            case Tok::Persist:
                if (top_level) {
                    flags |= Kind() == Tok::Shared ? kShared : kPersist;
                    break;
                }
                [[fallthrough]];
            default:
                if (IsTypeStart() || flags == 0) return true;
                return Fail(after_static ? "expected type after static" : "expected declaration");
        }
        after_static = after_static || Kind() == Tok::Static;
    }
}

// The type between parentheses of which the first has been taken.
std::uint32_t Parser::TypeInParentheses() {
    const std::uint32_t type = BaseType("expected expression");
    if (type == 0) return kFailed;
    std::uint16_t stars = 0;
    if (!Stars(stars)) return kFailed;
    tree_.types[type].stars = stars;
    List sizes;
    while (Kind() == Tok::LeftBracket) {
        if (!Size(sizes)) return kFailed;
    }
    tree_.types[type].sizes = sizes.first;
    return Expect(Tok::RightParen) ? type : kFailed;
}

}  // namespace hum
