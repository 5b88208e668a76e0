#include "ui/frame_line.h"

#include "ui/text_cells.h"

namespace zo::ui {
FrameLine::FrameLine(Canvas& canvas, const Rect& box, Edge edge, int indent)
    : canvas_(canvas),
      y_(edge == Edge::Top ? box.y : box.Bottom() - 1),
      left_(box.x + indent),
      right_(box.Right() - indent) {}

std::optional<Rect> FrameLine::TakeLeft(int cells, int gap) {
    const int from = left_ + (left_first_ ? 0 : gap);
    if (from + cells > right_) return std::nullopt;
    left_first_ = false;
    left_ = from + cells;
    return Rect{from, y_, cells, 1};
}

std::optional<Rect> FrameLine::LeftTitle(std::string_view title, Role role) {
    const std::optional<Rect> at = TakeLeft(Cells(title) + 2, 1);
    if (!at) return at;
    canvas_.Fill(*at, U' ', role);
    canvas_.Text(at->x + 1, y_, title, role);
    return at;
}

std::optional<Rect> FrameLine::Left(std::string_view text, Role role, int gap) {
    const std::optional<Rect> at = TakeLeft(Cells(text), gap);
    if (at) canvas_.Text(at->x, y_, text, role);
    return at;
}

std::optional<Rect> FrameLine::Right(std::string_view text, Role role, int gap) {
    const int cells = Cells(text);
    const int from = right_ - (right_first_ ? 0 : gap) - cells;
    if (from < left_) return std::nullopt;
    right_first_ = false;
    right_ = from;
    canvas_.Text(from, y_, text, role);
    return Rect{from, y_, cells, 1};
}

}  // namespace zo::ui
