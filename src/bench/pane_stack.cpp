#include "bench/pane_stack.h"

namespace Kest {
namespace {

Panel PanelAt(int index) {
    return static_cast<Panel>(index);
}

// The next (1) or the previous (-1) panel in focus order, around the end.
Panel Neighbour(Panel panel, int by) {
    return PanelAt((static_cast<int>(panel) + by + kPanels) % kPanels);
}

}  // namespace

PaneStack::PaneStack() {
    Raise(Panel::Ticket);
}

void PaneStack::SetLayout(const BenchLayout& layout) {
    layout_ = layout;
    if (InFront(focused_)) return;
    for (int i = 0; i < kPanels; ++i) {
        if (SharePane(PanelAt(i), focused_) && InFront(PanelAt(i))) {
            focused_ = PanelAt(i);
            return;
        }
    }
    focused_ = Panel::Firmware;
}

bool PaneStack::SharePane(Panel a, Panel b) const {
    return !layout_.Of(a).Empty() && layout_.Of(a) == layout_.Of(b);
}

bool PaneStack::InFront(Panel panel) const {
    if (layout_.Of(panel).Empty()) return false;
    for (int i = 0; i < kPanels; ++i) {
        const Panel other = PanelAt(i);
        if (other == panel || !SharePane(other, panel)) continue;
        // Of tabs that were never raised the first is in front.
        const bool later = other > panel;
        if (Height(other) > Height(panel) || (!later && Height(other) == Height(panel))) {
            return false;
        }
    }
    return true;
}

bool PaneStack::IsTab(Panel panel) const {
    for (int i = 0; i < kPanels; ++i) {
        if (PanelAt(i) != panel && SharePane(PanelAt(i), panel)) return true;
    }
    return false;
}

void PaneStack::Raise(Panel panel) {
    Height(panel) = ++highest_;
    if (SharePane(panel, focused_)) focused_ = panel;
}

void PaneStack::Lower(Panel panel) {
    Height(panel) = -1;
    SetLayout(layout_);
}

void PaneStack::Focus(Panel panel) {
    if (!layout_.Of(panel).Empty()) focused_ = panel;
}

void PaneStack::MoveFocus(int by) {
    do {
        focused_ = Neighbour(focused_, by);
    } while (!InFront(focused_));
}

bool PaneStack::MoveTab(int by) {
    if (!IsTab(focused_)) return false;
    Panel tab = focused_;
    do {
        tab = Neighbour(tab, by);
    } while (!SharePane(tab, focused_) || tab == Panel::Card);
    Raise(tab);
    return true;
}

}  // namespace Kest
