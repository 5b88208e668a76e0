#include "cells/input.h"

#include <doctest/doctest.h>

using zo::ui::Key;
using zo::ui::KeyPress;

TEST_CASE("keys are named as the key bar writes them") {
    const struct {
        KeyPress key;
        const char* name;
    } cases[] = {
        {{Key::F5}, "F5"},
        {{Key::F12}, "F12"},
        {{Key::PageUp}, "PgUp"},
        {{Key::Escape}, "Esc"},
        {{Key::Character, U's', {.control = true}}, "Ctrl+S"},
        {{Key::Character, U'x', {.alt = true}}, "Alt+X"},
        {{Key::Character, U' ', {.control = true}}, "Ctrl+Space"},
        {{Key::Character, U'ä', {}}, "ä"},
        {{Key::Tab, 0, {.shift = true, .control = true}}, "Ctrl+Shift+Tab"},
    };
    for (const auto& c : cases) CHECK(zo::ui::KeyName(c.key) == c.name);
}
