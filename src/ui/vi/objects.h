#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "ui/text_buffer.h"
#include "vi/motions.h"

namespace zo::ui::vi {

struct ObjectCall {
    const TextBuffer& text;
    TextPosition caret;
    TextPosition start;  // of what Visual mode has selected; the caret where nothing is
    bool selecting = false;
    bool by_lines = false;  // Visual line mode
    int count = 1;

    // There is a selection to extend.
    bool Extends() const { return caret != start; }
};

// From a start to where the caret goes; Visual mode may have them the other way round.
struct Extent {
    TextPosition start;
    TextPosition caret;
    Reach reach = Reach::Inclusive;
    bool failed = false;  // the caret went as far as it could; an operator does nothing
};

struct TextObject {
    std::u32string_view keys;
    std::optional<Extent> (*find)(const ObjectCall& call);
};

std::span<const TextObject> TextObjects();

}  // namespace zo::ui::vi
