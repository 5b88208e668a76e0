#pragma once

#include <optional>
#include <string_view>

#include "cells/input.h"

namespace zo::term {

// The key that stands in for what a keyboard behind a terminal cannot send. Once, it gives the next
// key Ctrl; twice, Alt; three times, it makes F1 to F12 of 1 to 0, - and =. Esc takes it back.
class Prefix {
public:
    static constexpr std::string_view kName = "Ctrl+O";

    // What the key is then; nothing when it was the prefix, or means nothing behind it.
    std::optional<ui::KeyPress> Apply(ui::KeyPress press);

private:
    int times_ = 0;
};

}  // namespace zo::term
