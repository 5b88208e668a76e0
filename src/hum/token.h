#pragma once

#include <cstdint>
#include <string_view>

#include "names.h"

namespace hum {

// The kinds of token in three groups, each in the order of its table in token.cpp. A keyword's name
// has the number of its place among the keywords.
enum class Tok : std::uint8_t {
    End,
    Bad,  // a byte that begins no token; no rule accepts it
    Name,
    Int,
    Float,
    String,
    Abstract,
    Break,
    Clip,
    Const,
    Continue,
    Else,
    False,
    FloatType,
    For,
    If,
    IntType,
    Main,
    Master,
    Module,
    Param,
    Persist,
    Return,
    Score,
    Shared,
    Sizeof,
    Static,
    Struct,
    Sustain,
    This,
    True,
    Void,
    Wait,
    While,
    Yield,
    Plus,
    Minus,
    Star,
    Slash,
    Percent,
    PlusPlus,
    MinusMinus,
    Assign,
    PlusAssign,
    MinusAssign,
    StarAssign,
    SlashAssign,
    PercentAssign,
    AndAssign,
    OrAssign,
    XorAssign,
    ShlAssign,
    SarAssign,
    ShrAssign,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    AndAnd,
    OrOr,
    Not,
    And,
    Or,
    Xor,
    Tilde,
    Shl,
    Sar,
    Shr,
    Question,
    Colon,
    Arrow,
    Dot,
    Comma,
    Semicolon,
    LeftParen,
    RightParen,
    LeftBracket,
    RightBracket,
    LeftBrace,
    RightBrace,
    Count,
};

inline constexpr std::uint32_t kKeywords =
    static_cast<std::uint32_t>(Tok::Yield) - static_cast<std::uint32_t>(Tok::Abstract) + 1;

// A keyword or an operator as it is written.
std::string_view TokenText(Tok kind);

// Gives the keywords their numbers; to be called once, on empty names.
void InternKeywords(Names& names);

// Names that more than one stage must know; they follow the keywords.
enum class Known : std::uint32_t {
    WaitBar = kKeywords,
    WaitBeats,
    WaitNote,
    SustainBar,
    SustainBeats,
    SustainMs,
    SustainNote,
    SustainSec,
    Wrap,
    Once,
    Clamp,
    Loop,
    Nearest,
    Linear,
    Cubic,
    Len,
    Note,
    MidiMsg,
    Midi,
    Input,
    Sound,
    Count,
};

inline bool IsKnown(std::uint32_t name, Known known) {
    return name == static_cast<std::uint32_t>(known);
}
// wait_bar and its like, which are statements and cannot be declared.
inline bool IsWaitWord(std::uint32_t name) {
    return name >= static_cast<std::uint32_t>(Known::WaitBar) &&
           name <= static_cast<std::uint32_t>(Known::SustainSec);
}

inline bool IsBuiltinStruct(std::uint32_t name) {
    return name >= static_cast<std::uint32_t>(Known::Note) &&
           name <= static_cast<std::uint32_t>(Known::Sound);
}

// A token after preprocessing. One that came out of a macro stands where the macro was used.
struct Token {
    Tok kind = Tok::End;
    std::uint16_t source = 0;
    std::uint32_t line = 1;
    std::uint32_t offset = 0;  // in the source's text
    // A name's number, an int's value, a float's bits, a string's place in Tokens::strings.
    std::uint32_t value = 0;
};

}  // namespace hum
