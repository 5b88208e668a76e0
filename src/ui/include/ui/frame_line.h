#pragma once

#include <optional>
#include <string_view>

#include "ui/canvas.h"

namespace zo::ui {

enum class Edge : std::uint8_t { Top, Bottom };

// Writes titles, chips, tabs and facts into the top or bottom line of a box, from both ends towards
// the middle. What does not fit whole is left out, so that nothing is ever cut.
class FrameLine {
public:
    // `indent`: the cells kept free behind each corner, counted with the corner.
    FrameLine(Canvas& canvas, const Rect& box, Edge edge, int indent = 2);

    // `gap`: the cells of frame line left between this text and the one before it. The result is
    // where the text stands; nothing when there was no room.
    std::optional<Rect> Left(std::string_view text, Role role, int gap = 1);
    // A chip: the title with a blank on each side.
    std::optional<Rect> LeftTitle(std::string_view title, Role role);
    std::optional<Rect> Right(std::string_view text, Role role, int gap = 1);
    int Room() const { return right_ - left_; }

private:
    std::optional<Rect> TakeLeft(int cells, int gap);

    Canvas& canvas_;
    int y_;
    int left_, right_;  // the free cells are [left_, right_)
    bool left_first_ = true, right_first_ = true;
};

}  // namespace zo::ui
