#include "bench/bench_layout.h"

#include <algorithm>

namespace Kest {
namespace {

using zo::ui::Rect;

constexpr int kLeastColumns = 80;
constexpr int kLeastRows = 25;
constexpr int kLeastSharedHeight = 12;  // below it SPEC and HOST do not stand one above the other
constexpr int kLeastCardRows = 6;
constexpr int kLaneLabel = 9;  // cells that a lane's name takes

// The grid as the formulas take it, and the body's heights.
struct Measures {
    int columns, rows, body, trace, panes;
};

Measures Measure(const BenchShape& shape, BenchSize size) {
    Measures m{};
    m.columns = std::max(shape.columns, kLeastColumns);
    m.rows = std::max(shape.rows, kLeastRows);
    m.body = m.rows - 3 - (shape.coached ? 1 : 0);
    m.trace = shape.lanes + (size == BenchSize::Wide ? 3 : 1);
    m.panes = m.body - 1 - m.trace;
    return m;
}

int WideCardWidth(int columns) {
    return std::clamp(columns * 28 / 100, 40, 56);
}
int MediumCardWidth(int columns) {
    return columns < 132 ? 27 : WideCardWidth(columns);
}
int NarrowSideWidth(int columns) {
    return std::clamp(columns * 42 / 100, 34, 42);
}

Rect& Place(BenchLayout& layout, Panel panel) {
    return layout.panels[static_cast<std::size_t>(panel)];
}

// SPEC and HOST share what CARD leaves of its column.
void PlaceStreams(BenchLayout& layout, const Rect& rest, bool host) {
    Rect& spec = Place(layout, Panel::Spec);
    spec = rest;
    if (!host) return;
    if (rest.height >= kLeastSharedHeight) spec.height = (rest.height + 1) / 2;
    Place(layout, Panel::Host) =
        rest.height < kLeastSharedHeight
            ? rest
            : Rect{rest.x, rest.y + spec.height, rest.width, rest.height - spec.height};
}

void LayOutWide(const BenchShape& shape, const Measures& m, BenchLayout& layout) {
    const int left = std::clamp(m.columns * 30 / 100, 44, 64);
    const int right = WideCardWidth(m.columns);
    const int middle = m.columns - left - right;
    const int hints = std::clamp(m.panes / 4, 6, 12);
    const int card = std::min(std::max(shape.card_rows, kLeastCardRows) + 2, m.panes - 8);
    Place(layout, Panel::Ticket) = {0, 1, left, m.panes - hints};
    Place(layout, Panel::Hints) = {0, 1 + m.panes - hints, left, hints};
    Place(layout, Panel::Firmware) = {left, 1, middle, m.panes};
    Place(layout, Panel::Card) = {left + middle, 1, right, card};
    PlaceStreams(layout, {left + middle, 1 + card, right, m.panes - card}, shape.host);
    Place(layout, Panel::Trace) = {0, 2 + m.panes, m.columns - right, m.trace};
    Place(layout, Panel::Notes) = {m.columns - right, 2 + m.panes, right, m.trace};
    layout.labels = {2, 3 + m.panes, kLaneLabel, shape.lanes + 1};
    layout.ticks = {2 + kLaneLabel, 3 + m.panes, m.columns - right - 13, shape.lanes + 1};
}

void LayOutTabs(const BenchShape& shape, const Measures& m, BenchLayout& layout) {
    const bool narrow = layout.size == BenchSize::Narrow;
    const int card = narrow ? 0 : MediumCardWidth(m.columns);
    const int side = narrow ? NarrowSideWidth(m.columns) : std::clamp(m.columns * 34 / 100, 34, 56);
    const int editor = m.columns - side - card;
    const Rect pane{editor, 1, side, m.panes};
    for (const Panel tab : {Panel::Ticket, Panel::Hints, Panel::Spec, Panel::Notes}) {
        Place(layout, tab) = pane;
    }
    if (shape.host) Place(layout, Panel::Host) = pane;
    Place(layout, Panel::Firmware) = {0, 1, editor, m.panes};
    Place(layout, Panel::Card) = narrow ? pane : Rect{editor + side, 1, card, m.panes};
    Place(layout, Panel::Trace) = {0, 2 + m.panes, m.columns, m.trace};
    layout.labels = {0, 2 + m.panes, kLaneLabel, m.trace};
    layout.ticks = {kLaneLabel, 2 + m.panes, m.columns - kLaneLabel, m.trace};
}

}  // namespace

BenchSize SizeOfBench(int columns, int rows) {
    if (columns < 100) return BenchSize::Narrow;
    return columns >= 140 && rows >= 36 ? BenchSize::Wide : BenchSize::Medium;
}

int CardPaneWidth(int columns, int rows) {
    columns = std::max(columns, kLeastColumns);
    switch (SizeOfBench(columns, rows)) {
        case BenchSize::Wide:
            return WideCardWidth(columns);
        case BenchSize::Medium:
            return MediumCardWidth(columns);
        case BenchSize::Narrow:
            break;
    }
    return NarrowSideWidth(columns);
}

BenchLayout LayOutBench(const BenchShape& shape) {
    BenchLayout layout;
    layout.size = SizeOfBench(shape.columns, shape.rows);
    const Measures m = Measure(shape, layout.size);
    if (layout.size == BenchSize::Wide) {
        LayOutWide(shape, m, layout);
    } else {
        LayOutTabs(shape, m, layout);
    }
    Place(layout, Panel::Strip) = {0, 1 + m.panes, m.columns, 1};
    if (shape.coached) layout.coach = {0, m.rows - 3, m.columns, 1};
    return layout;
}

}  // namespace Kest
