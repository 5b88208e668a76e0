#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "token.h"

namespace hum {

using NodeId = std::uint32_t;  // an index into Tree::nodes; 0 is no node
using TypeId = std::uint32_t;  // an index into Types

// What a node's children a, b and c are. Lists hang together by `next`.
enum class NodeKind : std::uint8_t {
    None,
    // Expressions. Parentheses leave no node.
    Int,          // a: the value
    Float,        // a: the bits
    Name,         // a: the name; checked: b the symbol
    This,         //
    Unary,        // op - + ! ~, a
    Step,         // op ++ or --, a; detail: 1 when it stands behind
    Binary,       // op, a, b; checked: detail an Operands
    Logical,      // op && or ||, a, b
    Conditional,  // a ? b : c
    Assign,       // op, a = b; checked: detail an Operands
    Call,         // a( list b ), c arguments; checked: a the symbol, detail a Callee
    Index,        // a[b]
    Field,        // a.name or a->name, b the name; checked: c the offset
    Deref,        // *a
    Address,      // &a
    Cast,         // (type a) b
    SizeofType,   // a: the type
    SizeofValue,  // a
    Braces,       // { list a }, b entries
    // Statements.
    Block,       // list a
    Expression,  // a
    If,          // if (a) b else c
    While,       // while (a) b
    For,         // for (a; b; c is a ForBody)
    ForBody,     // a: the step; b: what is repeated
    Break,
    Continue,
    Return,      // a or none
    Yield,       // a or none
    Wait,        // detail a TimeUnit, a
    Sustain,     // detail a TimeUnit, a, statement b; checked: c the first of its two hidden words
    Local,       // detail DeclarationFlags, list a of Declarator
    Declarator,  // detail the stars and kWrapBit, list a of sizes (None: left out), initial value
                 // b, base type c in Tree::types; checked: type the symbol
    Empty,
};

struct Node {
    NodeKind kind = NodeKind::None;
    Tok op = Tok::End;
    std::uint16_t detail = 0;
    // Of the operator, bracket, name or keyword: where a fault of this node is reported.
    std::uint32_t token = 0;
    TypeId type = 0;  // of a checked expression
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
    NodeId next = 0;
    std::uint16_t height = 1;  // of an expression; a chain of Binary to the left counts once
};

enum class TimeUnit : std::uint8_t { Samples, Beats, Bars, Milliseconds, Seconds };

// Of a Declarator's detail: its arrays are rings.
inline constexpr std::uint16_t kWrapBit = 0x8000;

enum DeclarationFlags : std::uint16_t { kStatic = 1, kConst = 2, kShared = 4, kPersist = 8 };

// A type as it is written: the base; outside of declarations also its stars and sizes.
struct TypeName {
    Tok base = Tok::IntType;  // IntType, FloatType, Void or Struct
    std::uint16_t stars = 0;
    std::uint32_t name = 0;  // of a structure
    std::uint32_t token = 0;
    NodeId sizes = 0;
};

enum class TopKind : std::uint8_t {
    Struct,    // `count` fields, list `first` of Declarator
    Score,     // `count` strings from token `first`
    Clip,      // a hint: the string at token `first`, count 1; else Braces `body`; else neither
    Param,     // initial value `body`
    Module,    // output structure at token `type`, base module at token `parent` or 0, `body`
    Master,    // `body`
    Main,      // `body`
    Function,  // result `type`, `count` parameters, list `first` of Declarator, `body` or none
    Global,    // one Declarator `first`
};

// One top-level form; of globals, one for each name.
struct TopLevel {
    TopKind kind = TopKind::Global;
    std::uint8_t flags = 0;   // DeclarationFlags; of a module: 1 when abstract
    std::uint8_t wrap = 0;    // of a clip: once, clamp, loop
    std::uint8_t filter = 1;  // of a clip: nearest, linear, cubic
    std::uint32_t token = 0;  // the name's
    std::uint32_t type = 0;   // an index into Tree::types
    std::uint32_t parent = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    NodeId body = 0;
};

struct Tree {
    std::vector<Node> nodes;
    std::vector<TypeName> types;
    std::vector<TopLevel> top;

    Node& operator[](NodeId id) { return nodes[id]; }
    const Node& operator[](NodeId id) const { return nodes[id]; }
};

}  // namespace hum
