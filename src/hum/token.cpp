#include "token.h"

namespace hum {
namespace {

constexpr std::string_view kTexts[] = {
    "",       "",         "",      "",        "",       "",      "abstract", "break",  "clip",
    "const",  "continue", "else",  "false",   "float",  "for",   "if",       "int",    "main",
    "master", "module",   "param", "persist", "return", "score", "shared",   "sizeof", "static",
    "struct", "sustain",  "this",  "true",    "void",   "wait",  "while",    "yield",  "+",
    "-",      "*",        "/",     "%",       "++",     "--",    "=",        "+=",     "-=",
    "*=",     "/=",       "%=",    "&=",      "|=",     "^=",    "<<=",      ">>=",    ">>>=",
    "==",     "!=",       "<",     "<=",      ">",      ">=",    "&&",       "||",     "!",
    "&",      "|",        "^",     "~",       "<<",     ">>",    ">>>",      "?",      ":",
    "->",     ".",        ",",     ";",       "(",      ")",     "[",        "]",      "{",
    "}",
};
static_assert(std::size(kTexts) == static_cast<std::size_t>(Tok::Count));

constexpr std::string_view kKnown[] = {
    "wait_bar",     "wait_beats",  "wait_note", "sustain_bar", "sustain_beats", "sustain_ms",
    "sustain_note", "sustain_sec", "wrap",      "once",        "clamp",         "loop",
    "nearest",      "linear",      "cubic",     "len",         "Note",          "MidiMsg",
    "Midi",         "Input",       "Sound",
};
static_assert(std::size(kKnown) == static_cast<std::size_t>(Known::Count) - kKeywords);

}  // namespace

std::string_view TokenText(Tok kind) {
    return kTexts[static_cast<std::size_t>(kind)];
}

void InternKeywords(Names& names) {
    constexpr auto kFirst = static_cast<std::size_t>(Tok::Abstract);
    for (std::size_t i = 0; i < kKeywords; ++i) names.Intern(kTexts[kFirst + i]);
    for (const std::string_view name : kKnown) names.Intern(name);
}

}  // namespace hum
