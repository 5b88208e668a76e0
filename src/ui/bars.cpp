#include "ui/bars.h"

#include <algorithm>

#include "base/utf.h"
#include "base/wrap.h"
#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr int kBetweenKeys = 2;
constexpr int kNameFrom = 100;     // columns from which the top bar names the program
constexpr int kLeastMessage = 30;  // cells that a hint leaves to the message
constexpr int kMostStatusRows = 3;
constexpr std::string_view kSeparator = " │ ";

struct KeyRoles {
    Role cap;
    Role word;
};

KeyRoles RolesOf(const KeyItem& item, bool held) {
    if (item.marked) return {Role::CoachMark, Role::CoachMark};
    if (!item.enabled) return {Role::BarOff, Role::BarOff};
    return {Role::BarKey, held ? Role::Sel : Role::Bar};
}

void DrawKeyItem(Canvas& canvas, const Rect& area, std::string_view cap, const KeyItem& item,
                 bool held) {
    const KeyRoles roles = RolesOf(item, held);
    const int x = canvas.Text(area.x, area.y, cap, roles.cap);
    canvas.Put(x, area.y, U' ', item.marked ? Role::CoachMark : Role::Bar);
    canvas.Text(x + 1, area.y, item.word, roles.word);
    if (item.marked) canvas.Put(area.Right(), area.y, U'◄', Role::CoachMark);
}

}  // namespace

void DrawKeyBar(Canvas& canvas, Pressables& pressables, std::span<const KeyItem> items,
                const std::function<void(const KeyPress&)>& press) {
    const Rect bar = canvas.Area().Row(canvas.Rows() - 1);
    canvas.Fill(bar, U' ', Role::Bar);
    int x = bar.x + 1;
    for (const KeyItem& item : items) {
        const std::string name = item.cap.empty() ? KeyName(item.key) : std::string(item.cap);
        const Rect area = {x, bar.y, Cells(name) + 1 + Cells(item.word), 1};
        if (area.Right() > bar.Right() - 1) return;
        const bool pressable = item.enabled && item.key.key != Key::None;
        DrawKeyItem(canvas, area, name, item, pressable && pressables.Held(area));
        Pressable& entry = pressables.Add(area, item.hint);
        if (pressable) entry.act = [&item, &press] { press(item.key); };
        x = area.Right() + kBetweenKeys;
    }
}

// What gives way, in this order: the program's name, the detail, the place, the end of the context.
void DrawTopBar(Canvas& canvas, Pressables& pressables, const TopBar& bar) {
    const Rect row = canvas.Area().Row(0);
    canvas.Fill(row, U' ', Role::Bar);
    int x = row.x + 1;
    if (row.width >= kNameFrom) {
        x = canvas.Text(x, row.y, "VANTOR KEST", Role::Bar);
        x = canvas.Text(x, row.y, kSeparator, Role::Bar);
    }
    x = canvas.Text(x, row.y, bar.title, Role::Bar);
    if (!bar.context.empty()) x = canvas.Text(x, row.y, kSeparator, Role::Bar);

    constexpr int kGap = 2;
    const int end = row.Right() - 1;
    const int beside = end - x - Cells(bar.place) - kGap;  // cells for the context
    const bool has_place = Cells(bar.context) <= beside;
    const int room = has_place ? beside : end - x;
    const bool has_detail = has_place && Cells(bar.context) + Cells(bar.detail) <= room;
    const Rect context = {x, row.y, std::min(Cells(bar.context), room), 1};
    if (!canvas.Field(context, bar.context, Role::Bar)) pressables.Add(context, bar.context);
    if (has_detail) canvas.Text(x + Cells(bar.context), row.y, bar.detail, Role::Bar);
    if (has_place) canvas.TextRight(end, row.y, bar.place, Role::Bar);
}

namespace {

// The row's left end; returns the column behind it.
int DrawMode(Canvas& canvas, const Rect& row, std::string_view mode) {
    if (mode.empty()) return row.x + 1;
    canvas.Put(row.x, row.y, U' ', Role::Chip);
    const int x = canvas.Text(row.x + 1, row.y, mode, Role::Chip);
    canvas.Put(x, row.y, U' ', Role::Chip);
    return canvas.Text(x + 1, row.y, "│ ", Role::Status);
}

// An alert's message begins with its sign, which stands on a ground of its own.
void DrawAlertChip(Canvas& canvas, int x, int y) {
    canvas.Tint({x - 1, y, 3, 1}, Role::ChipWarn);
}

void DrawOneRow(Canvas& canvas, const Rect& row, const StatusLine& line, std::string_view message,
                std::string_view right) {
    const Role role = line.alert ? Role::StatusAlert : Role::Status;
    canvas.Fill(row, U' ', role);
    const int x = DrawMode(canvas, row, line.mode);
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
    if (lines.size() > kMostStatusRows) {
        lines.resize(kMostStatusRows);
        lines.back() += " »";
    }
    const Role role = line.alert ? Role::StatusAlert : Role::Status;
    const int count = static_cast<int>(lines.size());
    const int top = row.y + 1 - count;
    canvas.Fill({row.x, top, row.width, count}, U' ', role);
    const int x = DrawMode(canvas, {row.x, top, row.width, 1}, line.mode);
    for (int k = 0; k < count; ++k) {
        canvas.Text(x, top + k, lines[static_cast<std::size_t>(k)], role);
    }
    if (line.alert) DrawAlertChip(canvas, x, top);
}

// The end of a longer text is what is being typed.
void DrawEntry(Canvas& canvas, const Rect& row, const StatusLine& line) {
    DrawOneRow(canvas, row, {.mode = line.mode}, {}, line.right);
    const int x = row.x + (line.mode.empty() ? 1 : Cells(line.mode) + 4);
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
    const int mode = line.mode.empty() ? 0 : Cells(line.mode) + 3;
    const int width = row.width - 2 - mode;
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
