#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vi/motions.h"
#include "vi/objects.h"

namespace zo::ui::vi {

// Keys as the layer sees them: characters, and codes for keys that type none. Control and a letter
// are the letter's control code.
using Key = char32_t;
inline constexpr Key kEscape = 0x1B;
inline constexpr Key kEnter = U'\r';
inline constexpr Key kBackspace = U'\b';
inline constexpr Key kTab = U'\t';
inline constexpr Key kDelete = 0x7F;
inline constexpr Key kFirstUnprintable = 0x110000;  // the keys from here on have no code elsewhere
inline constexpr Key kLeft = kFirstUnprintable;
inline constexpr Key kRight = kLeft + 1;
inline constexpr Key kUp = kLeft + 2;
inline constexpr Key kDown = kLeft + 3;
inline constexpr Key kHome = kLeft + 4;
inline constexpr Key kEnd = kLeft + 5;
constexpr Key Control(char letter) {
    return static_cast<Key>(letter) & 0x1F;
}
constexpr bool IsText(Key key) {
    return key >= U' ' && key != kDelete && key < kFirstUnprintable;
}

enum class Mode : std::uint8_t { Normal, Insert, Visual, VisualLine };
constexpr bool IsVisual(Mode mode) {
    return mode == Mode::Visual || mode == Mode::VisualLine;
}

enum class Operator : std::uint8_t {
    Delete,
    Change,
    Yank,
    Indent,
    Outdent,
    SwapCase,
    LowerCase,
    UpperCase,
};

struct OperatorRow {
    std::u32string_view keys;
    Operator op;
    std::u32string_view again;  // behind the keys it takes whole lines
};

// What is neither operator nor motion.
enum class Act : std::uint8_t {
    Insert,
    Append,
    InsertAtText,
    AppendAtEnd,
    OpenBelow,
    OpenAbove,
    Replace,
    SwapCase,
    Join,
    JoinTight,
    Put,
    PutBefore,
    Repeat,
    Undo,
    Redo,
    Select,
    SelectLines,
    SelectAgain,
    SwapEnds,
    CommandLine,
    HalfPageDown,
    HalfPageUp,
    PageDown,
    PageUp,
    CaretToTop,
    CaretToMiddle,
    CaretToBottom,
};

struct ActRow {
    std::u32string_view keys;
    Act act;
    bool changes = false;  // the text, so that `.` repeats it
    bool takes_character = false;
};

// One command, read from its keys.
struct Command {
    int count = 0;  // 0 when none was typed
    const OperatorRow* op = nullptr;
    const Motion* motion = nullptr;  // alone or behind an operator
    const TextObject* object = nullptr;
    const ActRow* act = nullptr;
    bool lines = false;      // an operator on whole lines
    char32_t character = 0;  // that a motion or an act took
    std::u16string text;     // that a search took

    int Times() const { return count > 0 ? count : 1; }
    bool Changes() const { return op ? op->op != Operator::Yank : act && act->changes; }
};

enum class Parsed : std::uint8_t { Incomplete, Unknown, NeedsText, Complete };

// Counts above this are taken for it: nobody means a million lines.
inline constexpr int kMostTimes = 9999;

Parsed Parse(std::u32string_view keys, Mode mode, Command& command);

}  // namespace zo::ui::vi
