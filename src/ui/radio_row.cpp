#include "ui/radio_row.h"

#include <algorithm>

#include "ui/key_grammar.h"

namespace zo::ui {
namespace {

constexpr int kSignCells = 4;  // "(•) "
constexpr int kBetween = 2;

int Stepped(const RadioRow& row, int by) {
    return std::clamp(row.chosen + by, 0, static_cast<int>(row.labels.size()) - 1);
}

void DrawChoice(Canvas& canvas, const Rect& area, const Label& label, bool chosen, bool hovered,
                const Surface& surface) {
    const Role ends = hovered ? surface.hot : surface.text;
    canvas.Put(area.x, area.y, U'(', ends);
    canvas.Put(area.x + 1, area.y, chosen ? U'•' : U' ', surface.text);
    canvas.Put(area.x + 2, area.y, U')', ends);
    canvas.Text(area.x + kSignCells, area.y, label, surface.text, surface.hot);
}

}  // namespace

int DrawRadioRow(Canvas& canvas, Pressables& pressables, Point at, const RadioRow& row,
                 const std::function<void(int)>& choose) {
    const int from = at.x;
    int end = at.x;
    for (int index = 0; index < static_cast<int>(row.labels.size()); ++index) {
        const Label label(row.labels[static_cast<std::size_t>(index)]);
        const Rect area = {at.x, at.y, kSignCells + label.Cells(), 1};
        DrawChoice(canvas, area, label, index == row.chosen, pressables.Hovered(area), row.surface);
        pressables.Add(area, row.hint).act = [choose, index] { choose(index); };
        end = area.Right();
        at.x += std::max(area.width + kBetween, row.least_cells);
    }
    pressables.Add({from, at.y, end - from, 1}).wheel = [choose, row](int steps, const Modifiers&) {
        choose(Stepped(row, -steps));
    };
    return end;
}

std::optional<int> RadioKey(const RadioRow& row, const KeyPress& key) {
    if (const int step = StepOf(key); step != 0) return Stepped(row, step);
    return RadioLetter(row, key);
}

std::optional<int> RadioLetter(const RadioRow& row, const KeyPress& key) {
    const char32_t letter = LetterOf(key);
    if (letter == 0) return std::nullopt;
    for (int index = 0; index < static_cast<int>(row.labels.size()); ++index) {
        if (Label(row.labels[static_cast<std::size_t>(index)]).Hotkey() == letter) return index;
    }
    return std::nullopt;
}

}  // namespace zo::ui
