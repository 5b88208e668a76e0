#include <doctest/doctest.h>

#include <vector>

#include "bench/bench_layout.h"
#include "bench/lanes.h"
#include "content/ticket_pane.h"

using namespace Kest;
using zo::ui::Rect;

namespace {

// Each pane once, however many tabs it has, and the rows that are no panels.
std::vector<Rect> PlacesOf(const BenchLayout& layout) {
    std::vector<Rect> places;
    const auto add = [&](const Rect& rect) {
        if (!rect.Empty() && std::ranges::count(places, rect) == 0) places.push_back(rect);
    };
    for (const Rect& panel : layout.panels) add(panel);
    add(layout.coach);
    return places;
}

// Disjoint rectangles inside an area of the same number of cells cover it.
bool Tiles(const std::vector<Rect>& places, const Rect& area) {
    int cells = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Rect& place = places[i];
        if (Intersect(place, area) != place) return false;
        cells += place.width * place.height;
        for (std::size_t k = 0; k < i; ++k) {
            if (!Intersect(place, places[k]).Empty()) return false;
        }
    }
    return cells == area.width * area.height;
}

bool HasInner(const Rect& pane, int width, int height) {
    return pane.width - 2 >= width && pane.height - 2 >= height;
}

bool KeepsLeastSizes(const BenchLayout& layout, bool host) {
    const bool wide = layout.size == BenchSize::Wide;
    const int text_width = wide ? 38 : 32;
    const int text_height = wide ? 4 : 9;
    for (const Panel panel : {Panel::Ticket, Panel::Hints, Panel::Spec, Panel::Notes}) {
        if (!HasInner(layout.Of(panel), text_width, text_height)) return false;
    }
    if (host && !HasInner(layout.Of(Panel::Host), text_width, text_height)) return false;
    const int editor_width = layout.size == BenchSize::Narrow ? 44 : 37;
    return HasInner(layout.Of(Panel::Firmware), editor_width, 9) &&
           HasInner(layout.Of(Panel::Card), 25, 6);
}

bool ShowsEveryLane(const BenchLayout& layout, int lanes) {
    const Rect& trace = layout.Of(Panel::Trace);
    const Rect inside = layout.size == BenchSize::Wide ? trace.Inner() : trace;
    return layout.ticks.height == lanes + 1 && Intersect(layout.ticks, inside) == layout.ticks &&
           Intersect(layout.labels, inside) == layout.labels &&
           layout.labels.Right() == layout.ticks.x;
}

}  // namespace

TEST_CASE("the bench's panes tile the body of every grid and keep their least sizes") {
    int wrong = 0;
    BenchShape first_wrong;
    for (BenchShape shape{.columns = 80}; shape.columns <= 300; ++shape.columns) {
        for (shape.rows = 25; shape.rows <= 100; ++shape.rows) {
            for (const int variant : {0, 1, 2, 3, 4, 5, 6, 7}) {
                shape.coached = (variant & 1) != 0;
                shape.host = (variant & 2) != 0;
                shape.card_rows = (variant & 4) != 0 ? 70 : 5;
                for (shape.lanes = 3; shape.lanes <= 8; ++shape.lanes) {
                    const BenchLayout layout = LayOutBench(shape);
                    const Rect body{0, 1, shape.columns, shape.rows - 3};
                    const bool right = Tiles(PlacesOf(layout), body) &&
                                       KeepsLeastSizes(layout, shape.host) &&
                                       ShowsEveryLane(layout, shape.lanes);
                    if (!right && wrong++ == 0) first_wrong = shape;
                }
            }
        }
    }
    CAPTURE(first_wrong.columns);
    CAPTURE(first_wrong.rows);
    CAPTURE(first_wrong.lanes);
    CAPTURE(first_wrong.coached);
    CAPTURE(first_wrong.host);
    CAPTURE(first_wrong.card_rows);
    CHECK(wrong == 0);
}

TEST_CASE("a grid too small for the bench gets the layout of the least one") {
    const BenchLayout least = LayOutBench({.columns = 80, .rows = 25});
    CHECK(LayOutBench({.columns = 40, .rows = 12}).panels == least.panels);
}

TEST_CASE("prose is measured for the pane that the least bench has for it") {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        CAPTURE(loaded->ticket.id);
        const int lanes = static_cast<int>(LanesOf(*loaded).size());
        const Rect pane =
            LayOutBench({.columns = 80, .rows = 25, .lanes = lanes}).Of(Panel::Ticket).Inner();
        CHECK(kp::SmallestTicketPane(*loaded).columns == pane.width - 2);  // a blank on each side
        CHECK(kp::SmallestTicketPane(*loaded).rows == pane.height);
    }
}
