#include "ui/status_line.h"

#include <algorithm>

#include "base/utf.h"
#include "base/wrap.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr int kLeastMessage = 30;  // cells that a hint leaves to the message
constexpr int kMostRows = 3;

// Where the message begins.
int MessageColumn(std::string_view mode) {
    return mode.empty() ? 1 : Cells(mode) + 4;
}

void DrawMode(Canvas& canvas, int y, std::string_view mode) {
    if (mode.empty()) return;
    canvas.Fill({0, y, Cells(mode) + 2, 1}, U' ', Role::Chip);
    canvas.Text(1, y, mode, Role::Chip);
    canvas.Text(MessageColumn(mode) - 2, y, "│ ", Role::Status);
}

// An alert's message begins with its sign, which stands on a ground of its own.
void DrawAlertChip(Canvas& canvas, int x, int y) {
    canvas.Tint({x - 1, y, 3, 1}, Role::ChipWarn);
}

void DrawOneRow(Canvas& canvas, const Rect& row, const StatusLine& line, std::string_view message,
                std::string_view right) {
    const Role role = line.alert ? Role::StatusAlert : Role::Status;
    canvas.Fill(row, U' ', role);
    DrawMode(canvas, row.y, line.mode);
    const int x = MessageColumn(line.mode);
    int end = row.Right() - 1;
    if (!right.empty()) {
        const int least = std::min(Cells(message), kLeastMessage);
        const int cells = std::min(Cells(right), end - x - least - 2);
        const Rect field = {end - cells, row.y, cells, 1};
        canvas.Fill({field.x - 1, row.y, row.Right() - field.x + 1, 1}, U' ', Role::StatusHint);
        canvas.Field(field, right, Role::StatusHint);
        end = field.x - 2;
    }
    canvas.Field({x, row.y, std::min(Cells(message), end - x), 1}, message, role);
    if (line.alert) DrawAlertChip(canvas, x, row.y);
}

// A message that does not fit its row takes the rows above it too.
void DrawTall(Canvas& canvas, const Rect& row, const StatusLine& line, std::string_view message,
              int width) {
    std::vector<std::string> lines = base::WrapEven(message, width);
    if (lines.size() > kMostRows) {
        lines.resize(kMostRows);
        lines.back() += " »";
    }
    const Role role = line.alert ? Role::StatusAlert : Role::Status;
    const int count = static_cast<int>(lines.size());
    const int top = row.y + 1 - count;
    canvas.Fill({row.x, top, row.width, count}, U' ', role);
    DrawMode(canvas, top, line.mode);
    const int x = MessageColumn(line.mode);
    for (int k = 0; k < count; ++k) {
        canvas.Text(x, top + k, lines[static_cast<std::size_t>(k)], role);
    }
    if (line.alert) DrawAlertChip(canvas, x, top);
}

// The end of a longer text is what is being typed.
void DrawEntry(Canvas& canvas, const Rect& row, const StatusLine& line) {
    DrawOneRow(canvas, row, {.mode = line.mode}, {}, line.right);
    const int x = MessageColumn(line.mode);
    const int room = row.Right() - 2 - x;
    std::string_view shown = line.entry;
    while (Cells(shown) > room) {
        std::size_t one = 0;
        base::NextCodePoint(shown, one);
        shown.remove_prefix(one);
    }
    canvas.Fill({x, row.y, std::min(Cells(shown) + 2, row.Right() - x), 1}, U' ', Role::Status);
    const int end = canvas.Text(x, row.y, shown, Role::Status);
    if (shown.size() < line.entry.size()) canvas.Put(x, row.y, U'«', Role::Status);
    canvas.SetCaret(end, row.y, CaretShape::Block);
}

}  // namespace

void DrawStatusLine(Canvas& canvas, const StatusLine& line) {
    const Rect row = canvas.Area().Row(canvas.Rows() - 2);
    if (!line.entry.empty()) return DrawEntry(canvas, row, line);
    const std::string marked = line.alert ? "! " + std::string(line.message) : std::string();
    const std::string_view message = line.alert ? std::string_view(marked) : line.message;
    const int width = row.width - 1 - MessageColumn(line.mode);
    const int cells = Cells(message);
    if (!line.hint.empty()) {
        DrawOneRow(canvas, row, line, message, line.hint);
    } else if (cells + 2 + Cells(line.right) <= width) {
        DrawOneRow(canvas, row, line, message, line.right);
    } else if (cells <= width) {
        DrawOneRow(canvas, row, line, message, {});
    } else {
        DrawTall(canvas, row, line, message, width);
    }
}

}  // namespace zo::ui
