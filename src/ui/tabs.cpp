#include "ui/tabs.h"

#include <string>

namespace zo::ui {

void DrawTabs(FrameLine& line, Canvas& canvas, Pressables& pressables, std::span<const Tab> tabs,
              int chosen, const std::function<void(int)>& choose) {
    for (int index = 0; index < static_cast<int>(tabs.size()); ++index) {
        const Tab& tab = tabs[static_cast<std::size_t>(index)];
        const Label label(tab.label);
        const bool on = index == chosen;
        const Role role = tab.marked ? Role::CoachMark : on ? Role::TabOn : Role::Tab;
        std::string text(label.before);
        text.append(label.hot).append(label.after);
        if (on) text = "[" + text + "]";
        const std::optional<Rect> area = line.Left(text, role);
        if (!area) return;
        if (!label.hot.empty()) {
            canvas.Text(area->x + (on ? 1 : 0), area->y, label, role, role);
        }
        pressables.Add(*area, tab.hint).act = [choose, index] { choose(index); };
    }
}

}  // namespace zo::ui
