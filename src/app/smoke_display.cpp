#include <algorithm>
#include <string>

#include "base/format.h"
#include "base/utf.h"
#include "base/wrap.h"
#include "cells/grid_size.h"
#include "smoke_checks.h"

namespace Kest {
namespace {

using zo::ui::Grid;
using zo::ui::GridRequest;
using zo::ui::PixelSize;

// From 1280 by 800 up.
constexpr PixelSize kWindows[] = {{1280, 800},  {1366, 800},  {1440, 900},  {1600, 1000},
                                  {1920, 1080}, {2560, 1440}, {3440, 1440}, {3840, 2160}};
constexpr PixelSize kSmallWindow = {600, 380};
constexpr float kReduced = 0.8F;

std::string NameOf(PixelSize size) {
    return base::Format("%dx%d", size.width, size.height);
}

bool Holds(const Grid& grid, int columns, int rows) {
    return grid.columns >= columns && grid.rows >= rows;
}

bool IsWholeFontPixels(const Grid& grid) {
    const int glyph = grid.nine_wide ? 9 : 8;
    return grid.font_pixel >= 1 && grid.cell_width == glyph * grid.font_pixel;
}

bool IsOneLarger(const Grid& large, const Grid& normal) {
    return large.large && IsWholeFontPixels(large) && large.font_pixel == normal.font_pixel + 1 &&
           Holds(large, 80, 25);
}

// No line is too long, no word is lost, and no narrower wrap would do with as many lines.
bool IsEven(const std::string& text, int width) {
    const std::vector<std::string> lines = base::WrapEven(text, width);
    if (lines.size() != base::WrapPlain(text, width).size()) return false;
    std::size_t widest = 0;
    std::string joined;
    for (const std::string& line : lines) {
        widest = std::max(widest, base::CodePoints(line));
        joined += line;
    }
    if (widest > static_cast<std::size_t>(width)) return false;
    std::string words = text;
    std::erase(joined, ' ');
    std::erase(words, ' ');
    const bool narrower =
        widest > 1 && base::WrapPlain(text, static_cast<int>(widest) - 1).size() <= lines.size();
    return joined == words && !narrower;
}

}  // namespace

void CheckFont(SmokeRun& run) {
    run.report.Check("font Unscii 18", run.system.HasNineWideFace());
    const std::vector<std::string> families = run.system.FontFamilies();
    run.report.Check("font JetBrains Mono", std::ranges::count(families, "JetBrains Mono") > 0);
}

void CheckGrids(SmokeRun& run) {
    const bool nine_wide_face = run.system.HasNineWideFace();
    for (const PixelSize window : kWindows) {
        const std::string name = NameOf(window);
        GridRequest request = {.window = window, .nine_wide_face = nine_wide_face};
        const Grid normal = SizeGrid(request);
        run.report.Check("grid " + name, IsWholeFontPixels(normal) && Holds(normal, 160, 50),
                         "grid " + name + ": whole font pixels from 1280 by 800");
        request.want_large = true;
        run.report.Check("large grid " + name, IsOneLarger(SizeGrid(request), normal),
                         "large grid " + name + ": one font pixel larger, at least 80 by 25");
        request.classic_scale = kReduced;
        const Grid reduced_large = SizeGrid(request);
        request.want_large = false;
        const int reduced = (normal.cell_width * 8 + 5) / 10;
        run.report.Check("classic scale " + name,
                         SizeGrid(request).cell_width == reduced && Holds(reduced_large, 80, 25),
                         "classic scale " + name + ": cells at 0.8, Large at least 80 by 25");
    }
    GridRequest request = {.window = kSmallWindow, .nine_wide_face = nine_wide_face};
    const Grid normal = SizeGrid(request);
    request.want_large = true;
    run.report.Check("large grid at " + NameOf(kSmallWindow), SizeGrid(request) == normal,
                     "large grid at " + NameOf(kSmallWindow) + " is not the normal grid");
}

// The texts of the tickets stand for messages: they have every length.
void CheckWrapping(SmokeRun& run) {
    int layouts = 0, evened = 0;
    bool holds = true;
    for (const kp::LoadedTicket* loaded : run.content.Tickets()) {
        if (run.report.TimedOut()) return;
        for (const int width : {34, 40, 50, 78}) {
            const std::string& text = loaded->ticket.brief;
            ++layouts;
            evened += base::WrapEven(text, width) != base::WrapPlain(text, width);
            holds = holds && IsEven(text, width);
        }
    }
    run.report.Say(holds, base::Format("message wrap %s: %d layouts, %d with breaks evened",
                                       holds ? "ok" : "FAILED", layouts, evened));
}

}  // namespace Kest
