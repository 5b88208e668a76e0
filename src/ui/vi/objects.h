#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "ui/text_buffer.h"

namespace zo::ui::vi {

struct ObjectCall {
    const TextBuffer& text;
    TextPosition from;  // the first character that is to be in it
    TextPosition to;    // the last one; beyond `from` when something is selected already
    int count = 1;
};

// From the first character to the last, or the lines of both.
struct Extent {
    TextPosition from;
    TextPosition to;
    bool lines = false;
    bool empty = false;  // nothing stands before `from`, and nothing is taken
};

struct TextObject {
    std::u32string_view keys;
    std::optional<Extent> (*find)(const ObjectCall& call);
};

std::span<const TextObject> TextObjects();

}  // namespace zo::ui::vi
