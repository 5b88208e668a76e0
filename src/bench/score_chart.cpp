#include "score_chart.h"

#include <algorithm>

#include "small_text.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kNumberCells = 6;  // left of the frame
constexpr char32_t kEarlier = U'•';
constexpr char32_t kFront = U'■';
constexpr char32_t kThisRun = U'♦';

// A range of numbers over a range of cells.
struct Scale {
    int least, most;
    int cells;

    int At(int number) const {
        if (most == least) return cells / 2;
        const int steps = cells - 3;  // with a cell free at each end
        return 1 + (2 * (number - least) * steps + (most - least)) / (2 * (most - least));
    }
};

template <class Number>
Scale ScaleOf(const ScoreChart& chart, int cells, Number number) {
    Scale scale{number(chart.par), number(chart.par), cells};
    for (const Scores& verify : chart.verifies) {
        scale.least = std::min(scale.least, number(verify));
        scale.most = std::max(scale.most, number(verify));
    }
    return scale;
}

bool IsFront(const ScoreChart& chart, const Scores& one) {
    return std::ranges::none_of(chart.verifies, [&](const Scores& other) {
        return other != one && other.lines <= one.lines && other.ticks <= one.ticks;
    });
}

void DrawLegend(Canvas& canvas, int x, int y) {
    constexpr struct {
        char32_t sign;
        std::string_view name;
        Role role;
    } kLegend[] = {{kThisRun, "this run", Role::DialogHot},
                   {kFront, "front", Role::Dialog},
                   {kEarlier, "earlier", Role::DialogDim},
                   {U'┼', "par", Role::DialogDim}};
    for (const auto& entry : kLegend) {
        canvas.Put(x, y, entry.sign, entry.role);
        x = canvas.Text(x + 2, y, entry.name, Role::DialogDim) + 2;
    }
}

}  // namespace

void DrawScoreChart(Canvas& canvas, const Rect& area, const ScoreChart& chart) {
    const Rect box = {area.x + kNumberCells, area.y, area.width - kNumberCells, area.height - 2};
    const Rect inner = box.Inner();
    const Scale ticks = ScaleOf(chart, inner.width, [](const Scores& s) { return s.ticks; });
    const Scale lines = ScaleOf(chart, inner.height, [](const Scores& s) { return s.lines; });
    const auto x = [&](const Scores& s) { return inner.x + ticks.At(s.ticks); };
    const auto y = [&](const Scores& s) { return inner.Bottom() - 1 - lines.At(s.lines); };

    canvas.Box(box, zo::ui::Lines::Single, Role::DialogFrame);
    for (int column = 0; column < inner.width; ++column) {
        canvas.Put(inner.x + column, y(chart.par), U'─', Role::DialogDim);
    }
    for (int row = 0; row < inner.height; ++row) {
        canvas.Put(x(chart.par), inner.y + row, U'│', Role::DialogDim);
    }
    canvas.Put(x(chart.par), y(chart.par), U'┼', Role::DialogDim);
    for (const Scores& verify : chart.verifies) {
        if (IsFront(chart, verify)) continue;
        canvas.Put(x(verify), y(verify), kEarlier, Role::DialogDim);
    }
    for (const Scores& verify : chart.verifies) {
        if (IsFront(chart, verify)) canvas.Put(x(verify), y(verify), kFront, Role::Dialog);
    }
    if (!chart.verifies.empty()) {
        const Scores& last = chart.verifies.back();
        canvas.Put(x(last), y(last), kThisRun, Role::DialogHot);
    }

    canvas.Text(area.x, box.y, "Lines", Role::DialogDim);
    if (lines.most != lines.least) {
        canvas.TextRight(box.x - 1, y({lines.most, 0}), SmallText("%d", lines.most), Role::Dialog);
    }
    canvas.TextRight(box.x - 1, y({lines.least, 0}), SmallText("%d", lines.least), Role::Dialog);
    const int under = box.Bottom();
    canvas.Text(area.x, under, "Ticks", Role::DialogDim);
    canvas.Text(inner.x + 1, under, SmallText("%d", ticks.least), Role::Dialog);
    if (ticks.most != ticks.least) {
        canvas.TextRight(inner.Right() - 1, under, SmallText("%d", ticks.most), Role::Dialog);
    }
    DrawLegend(canvas, inner.x, under + 1);
}

}  // namespace Kest
