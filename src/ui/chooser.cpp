#include "ui/chooser.h"

#include <algorithm>

#include "ui/text_cells.h"

namespace zo::ui {

int ChooserCells(const Chooser& chooser) {
    int longest = 0;
    for (const std::string_view name : chooser.names) longest = std::max(longest, Cells(name));
    return longest + 4;
}

int Stepped(const Chooser& chooser, int by) {
    return std::clamp(chooser.chosen + by, 0, static_cast<int>(chooser.names.size()) - 1);
}

int DrawChooser(Canvas& canvas, Pressables& pressables, Point at, const Chooser& chooser,
                const std::function<void(int)>& choose) {
    const Rect area = {at.x, at.y, ChooserCells(chooser), 1};
    const Surface& on = chooser.surface;
    canvas.Text(at.x + 2, at.y, chooser.names[static_cast<std::size_t>(chooser.chosen)], on.text);
    pressables.Add(area, chooser.hint).wheel = [choose, chooser](int steps, const Modifiers&) {
        choose(Stepped(chooser, steps));
    };
    const auto arrow = [&](int x, char32_t glyph, int by) {
        if (Stepped(chooser, by) == chooser.chosen) return;
        const Rect cell = {x, at.y, 1, 1};
        canvas.Put(x, at.y, glyph, pressables.Hovered(cell) ? on.hot : on.text);
        pressables.Add(cell).act = [choose, to = Stepped(chooser, by)] { choose(to); };
    };
    arrow(area.x, U'◄', -1);
    arrow(area.Right() - 1, U'►', 1);
    return area.Right();
}

}  // namespace zo::ui
