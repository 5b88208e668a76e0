#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vi/keys.h"
#include "vi/motions.h"
#include "vi/objects.h"

namespace zo::ui::vi {

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

const OperatorRow* RowOf(Operator op);

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
