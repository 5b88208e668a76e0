#pragma once

#include <cstdint>
#include <span>
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

// A stretch of the text: up to the place behind its last character, or the lines of both places.
struct Region {
    TextPosition from, to;
    bool lines = false;
    bool no_character = false;   // one was to be in it, but the line has none
    int last_line = 0;           // of what Visual mode has selected
    bool between_lines = false;  // a motion's, from one line's start to another's: yanked as lines
};

class Machine;
struct Command;

// What is neither operator nor motion.
struct ActRow {
    std::u32string_view keys;
    // Whether it found anything to do. It may lower the count to the one that a repetition has.
    bool (*perform)(Machine& machine, Command& command) = nullptr;
    bool changes = false;  // the text, so that `.` repeats it
    bool takes_character = false;
    // In its place for what acts on a selection, and ends Visual mode.
    void (*on_region)(Machine& machine, const Command& command, const Region& region) = nullptr;
    bool erases_first = false;  // and that alone is repeated
};

std::span<const ActRow> ActsInEitherMode();
std::span<const ActRow> NormalActs();
std::span<const ActRow> VisualActs();

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
    bool TakesRegion() const { return op || (act && act->on_region); }
};

enum class Parsed : std::uint8_t { Incomplete, Unknown, NeedsText, Complete };

// Counts above this are taken for it: nobody means a million lines.
inline constexpr int kMostTimes = 9999;

Parsed Parse(std::u32string_view keys, Mode mode, Command& command);

}  // namespace zo::ui::vi
