#include "ui/bars.h"

#include <algorithm>

#include "ui/text_cells.h"

namespace zo::ui {
namespace {

constexpr int kBetweenKeys = 2;
constexpr int kNameFrom = 100;  // columns from which the top bar names the program
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

}  // namespace zo::ui
