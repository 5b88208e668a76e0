#pragma once

#include <array>

#include "bench/bench_layout.h"

namespace Kest {

// Which panels of the bench are in sight, and which one has focus. Panels that share a pane are
// tabs: the one raised last is in front. The firmware has focus first.
class PaneStack {
public:
    PaneStack();

    void SetLayout(const BenchLayout& layout);

    bool InFront(Panel panel) const;
    // Whether the panel stands behind or before others in one pane.
    bool IsTab(Panel panel) const;
    // Brings a tab to the front; focus stays with its pane.
    void Raise(Panel panel);
    // Puts a tab behind all others of its pane.
    void Lower(Panel panel);

    Panel Focused() const { return focused_; }
    bool HasFocus(Panel panel) const { return focused_ == panel; }
    void Focus(Panel panel);
    // To the next (1) or the previous (-1) panel in sight.
    void MoveFocus(int by);
    // To the next or previous tab of the focused pane; false when it has no others.
    bool MoveTab(int by);

private:
    bool SharePane(Panel a, Panel b) const;
    int& Height(Panel panel) { return heights_[static_cast<std::size_t>(panel)]; }
    int Height(Panel panel) const { return heights_[static_cast<std::size_t>(panel)]; }

    BenchLayout layout_;
    std::array<int, kPanels> heights_{};  // in its pile; the highest is in front
    int highest_ = 0;
    Panel focused_ = Panel::Firmware;
};

}  // namespace Kest
