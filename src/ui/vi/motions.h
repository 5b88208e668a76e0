#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "text_search.h"
#include "ui/text_buffer.h"

namespace zo::ui::vi {

// Which text an operator takes between the caret and a motion's target.
enum class Reach : std::uint8_t {
    Exclusive,  // up to the later of the two
    Exactly,    // the same, where a line's end may be all there is
    Inclusive,  // with the character there
    Lines,      // all lines from one to the other
};

// What j and k aim for behind a motion, besides a column.
inline constexpr int kOwnColumn = -1;  // where it ended
inline constexpr int kLineEnd = std::numeric_limits<int>::max();

struct CharacterSearch {
    char16_t character = 0;  // 0 before the first one
    bool forward = true;
    bool till = false;  // stops beside the character
};

// What was searched for last.
struct Searches {
    CharacterSearch character;
    TextSearch text;
    bool text_forward = true;
};

// The lines in sight.
struct View {
    int top = 0;
    int rows = 1;
};

// Who asks: the caret alone, an operator, or the selection that the caret drags along.
enum class Asker : std::uint8_t { Caret, Operator, DeleteOperator, ChangeOperator, Selection };

struct MotionCall {
    const TextBuffer& text;
    TextPosition from;
    int count = 0;  // 0 when none was typed
    char32_t character = 0;
    Asker asker = Asker::Caret;
    int goal = 0;
    View view;
    Searches& searches;

    int Times() const { return count > 0 ? count : 1; }
    bool Operating() const { return asker != Asker::Caret && asker != Asker::Selection; }
    bool Removing() const { return Operating() && asker != Asker::Operator; }
};

struct Target {
    TextPosition at;
    Reach reach = Reach::Exclusive;
    int goal = kOwnColumn;
    bool failed = false;  // it went as far as it could; an operator does nothing
};

// Nothing when there is nowhere to go.
using MotionFunction = std::optional<Target> (*)(const MotionCall& call);

struct Motion {
    std::u32string_view keys;
    MotionFunction go;
    // What the keys are followed by.
    enum class Takes : std::uint8_t { Nothing, Character, Text } takes = Takes::Nothing;
};

std::span<const Motion> Motions();

}  // namespace zo::ui::vi
