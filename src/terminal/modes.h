#pragma once

#include <string_view>

// What is sent to a terminal beside pictures.
namespace zo::term {

// Its other screen, the title, no wrap at the end of a row, no cursor; the mouse with all its
// moves, in cells of any number; pastes in brackets, news of the focus; and keys that the plain
// codes leave out, asked for in both ways that there are.
inline constexpr std::string_view kEnter =
    "\x1b[?1049h\x1b[22;0t\x1b]2;Vantor Kest\x1b\\\x1b[?7l\x1b[?25l"
    "\x1b[?1000h\x1b[?1002h\x1b[?1003h\x1b[?1006h\x1b[?2004h\x1b[?1004h"
    "\x1b[>4;1m\x1b[>1u";

// The same taken back. It may follow a sequence that was cut off, which is cancelled first.
inline constexpr std::string_view kLeave =
    "\x18\x1b\\\x1b[?2026l\x1b[<u\x1b[>4m\x1b[?1004l\x1b[?2004l"
    "\x1b[?1006l\x1b[?1003l\x1b[?1002l\x1b[?1000l"
    "\x1b[m\x1b[?7h\x1b[0 q\x1b[?25h\x1b[23;0t\x1b[?1049l";

inline constexpr std::string_view kAskStatus = "\x1b[5n";

// Questions to the terminal, each in a row of its own: how wide a line's glyph comes out, and
// whether a letter and that glyph are printed again; then whether it can hold pictures back. Some
// that repeat letters do not repeat what takes several bytes.
inline constexpr int kGlyphRow = 1;
inline constexpr int kRepeatedLetterRow = 2;
inline constexpr int kRepeatedGlyphRow = 3;
inline constexpr int kRepeatedColumns = 4;
inline constexpr int kSynchronisedMode = 2026;
inline constexpr std::string_view kQuestions =
    "\x1b[2;1H\u2500\x1b[6n"
    "\x1b[3;1Hx\x1b[3b\x1b[6n"
    "\x1b[4;1H\u2500\x1b[3b\x1b[6n"
    "\x1b[?2026$p\x1b[5n";

}  // namespace zo::term
