#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "cells/frame.h"

namespace zo::term {

// The rows beneath the game in which lines are said: the last ones, each broken at the width.
class SpeechRows {
public:
    static constexpr int kMost = 3;

    void Say(std::string_view line);
    // Draws into so many rows from `top` on.
    void Draw(ui::Frame& frame, int top, int rows) const;

private:
    std::deque<std::string> lines_;
};

}  // namespace zo::term
