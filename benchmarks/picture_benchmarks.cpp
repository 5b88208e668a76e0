#include <string>

#include "allocations.h"
#include "benchmarks.h"
#include "gpu/picture.h"
#include "gpu/renderer.h"

namespace bench {
namespace {

using zo::ui::Frame;

// A screen as full as the game's: text, frames and blanks by turns.
Frame FullScreen(const zo::ui::GridRequest& request) {
    constexpr std::u32string_view kRow = U"│ next:  mov a, $C1   ; payload │ ░░██   ";
    Frame frame;
    frame.Resize(zo::ui::SizeGrid(request));
    for (std::size_t i = 0; i < frame.cells.size(); ++i) {
        const auto role = i % 7 < 4 ? zo::ui::Role::Panel : zo::ui::Role::CodeNum;
        const zo::ui::Ink colours = zo::ui::Colours(request.look, 0, role);
        frame.cells[i] = {kRow[i % kRow.size()], colours.ink, colours.ground, role};
    }
    return frame;
}

// A margin of another colour has everything painted anew.
void TimeWhole(Report& report, std::string_view name, const zo::ui::GridRequest& request,
               bool crt) {
    Frame frame = FullScreen(request);
    frame.crt = crt;
    const auto renderer = zo::gpu::MakeRenderer();
    zo::platform::PixelBuffer buffer{.size = request.window, .pixels = {}};
    report.Time(name, [&] {
        frame.margin.r ^= 1;
        renderer->Paint(frame, buffer);
        return 1.0;
    });
}

void TimeChanges(Report& report, const zo::ui::GridRequest& request) {
    Frame frame = FullScreen(request);
    const auto renderer = zo::gpu::MakeRenderer();
    zo::platform::PixelBuffer buffer{.size = request.window, .pixels = {}};
    renderer->Paint(frame, buffer);
    report.Time("picture: 160x50 cells that did not change", [&] {
        renderer->Paint(frame, buffer);
        return 1.0;
    });
    const auto change_one = [&] {
        frame.At(80, 25).glyph ^= 1;
        renderer->Paint(frame, buffer);
        return 1.0;
    };
    change_one();  // draws both glyphs
    change_one();
    report.Time("picture: 160x50 cells of which one changed", change_one);
    report.Sample("picture: allocations of a change", "", 1, [&] {
        const std::size_t before = Allocations();
        change_one();
        return static_cast<double>(Allocations() - before);
    });
}

}  // namespace

void RunPictures(Report& report) {
    const zo::ui::GridRequest eight = {.window = {1280, 800}};
    const zo::ui::GridRequest modern = {
        .window = {1440, 900}, .look = zo::ui::Look::Modern, .want_large = true};
    TimeWhole(report, "picture: 160x50 cells whole, 8x16", eight, false);
    TimeWhole(report, "picture: 160x50 cells whole, 8x16, CRT", eight, true);
    TimeWhole(report, "picture: 160x50 cells whole, 9x18", {.window = {1440, 900}}, false);
    TimeWhole(report, "picture: 182x51 cells whole, 7x14", {.window = {1280, 720}}, false);
    TimeWhole(report, "picture: 160x45 cells whole, modern", modern, false);
    TimeChanges(report, eight);
    zo::platform::PixelBuffer picture{.size = eight.window, .pixels = {}};
    zo::gpu::MakeRenderer()->Paint(FullScreen(eight), picture);
    report.Time("picture: PNG of 1280x800", [&] {
        const std::string png = zo::gpu::EncodePng(picture);
        Keep(&png);
        return 1.0;
    });
}

}  // namespace bench
