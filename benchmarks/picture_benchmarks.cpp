#include <string>

#include "allocations.h"
#include "base/format.h"
#include "bench/bench.h"
#include "benchmarks.h"
#include "content/content.h"
#include "gpu/picture.h"
#include "gpu/renderer.h"
#include "shell/shell.h"
#include "support/fake_system.h"

namespace bench {
namespace {

using zo::ui::Frame;
using zo::ui::Look;
using zo::ui::PixelSize;

// A window as a player may have it.
struct Display {
    const char* name;
    Look look;
    PixelSize size;
    float scale;
    bool large;
    bool crt;
};
constexpr Display kDisplays[] = {
    {"classic 1280x800", Look::Classic, {1280, 800}, 1, false, false},
    {"classic 1280x800, CRT", Look::Classic, {1280, 800}, 1, false, true},
    {"classic 1440x900", Look::Classic, {1440, 900}, 1, false, false},
    {"classic 3840x2160", Look::Classic, {3840, 2160}, 2, false, false},
    {"classic 3840x2160, CRT", Look::Classic, {3840, 2160}, 2, false, true},
    {"modern 1440x900", Look::Modern, {1440, 900}, 1, true, false},
    {"modern 3840x2160", Look::Modern, {3840, 2160}, 2, false, false},
};
constexpr int kGreen = 2;

// The bench with a ticket on it, as a window would be shown it.
class Scene {
public:
    Scene(const kp::Content& content, const Display& display)
        : shell_({.content = content,
                  .clock = system_.clock,
                  .disk = system_.disk,
                  .persistent = false,
                  .closed_override = 40,
                  .places = Bench()}) {
        shell_.OverrideSettings([&](Kest::Settings& settings) {
            settings.modern_look = display.look == Look::Modern;
            settings.large_text = display.large;
            settings.crt = display.crt;
            if (display.crt) settings.theme = kGreen;
        });
        shell_.SetWindow(display.size, display.scale);
        shell_.Open(Kest::Place::Bench, content.shifts[3].tickets.front().ticket.id);
        shell_.Advance();
    }

    const Frame& Draw() {
        shell_.RequestRedraw();
        return shell_.Draw();
    }

private:
    static Kest::Places Bench() {
        Kest::Places places;
        places[static_cast<std::size_t>(Kest::Place::Bench)] = Kest::MakeBench;
        return places;
    }

    fake::System system_;
    Kest::Shell shell_;
};

// As many cells as a line of text changes.
void ChangeCells(Frame& frame) {
    constexpr int kChanged = 80;
    for (int x = 0; x < kChanged; ++x) frame.At(x, frame.grid.rows / 2).glyph ^= 1;
}

void TimeDisplay(Report& report, const kp::Content& content, const Display& display) {
    Scene scene(content, display);
    Frame frame = scene.Draw();
    const std::string title =
        base::Format("%s, %dx%d: ", display.name, frame.grid.columns, frame.grid.rows);
    const auto renderer = zo::gpu::MakeRenderer();
    zo::platform::PixelBuffer buffer{.size = display.size, .pixels = {}};
    const auto change = [&] {
        ChangeCells(frame);
        renderer->Paint(frame, buffer);
        return 1.0;
    };
    report.Time(title + "drawn, painted whole", [&] {
        const Frame& drawn = scene.Draw();
        Keep(&drawn);
        frame.margin.r ^= 1;  // has everything painted anew
        renderer->Paint(frame, buffer);
        return 1.0;
    });
    report.Time(title + "drawn", [&] {
        const Frame& drawn = scene.Draw();
        Keep(&drawn);
        return 1.0;
    });
    change();  // draws the glyphs
    report.Time(title + "80 cells changed", change);
    report.Time(title + "unchanged", [&] {
        renderer->Paint(frame, buffer);
        return 1.0;
    });
    report.Sample(title + "allocations of a frame", "", 3, [&] {
        const std::size_t before = Allocations();
        change();
        return static_cast<double>(Allocations() - before);
    });
}

// From nothing to the first picture: the renderer made, the font opened, the glyphs drawn.
void TimeFirst(Report& report, const kp::Content& content, const Display& display) {
    Scene scene(content, display);
    const Frame& frame = scene.Draw();
    report.Time(base::Format("%s: first picture", display.name), [&] {
        zo::platform::PixelBuffer buffer{.size = display.size, .pixels = {}};
        zo::gpu::MakeRenderer()->Paint(frame, buffer);
        return 1.0;
    });
}

}  // namespace

void RunPictures(Report& report) {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    for (const Display& display : kDisplays) TimeDisplay(report, content, display);
    for (const Display& display : kDisplays) TimeFirst(report, content, display);
    Scene scene(content, kDisplays[0]);
    zo::platform::PixelBuffer picture{.size = kDisplays[0].size, .pixels = {}};
    zo::gpu::MakeRenderer()->Paint(scene.Draw(), picture);
    report.Time("picture: PNG of 1280x800", [&] {
        const std::string png = zo::gpu::EncodePng(picture);
        Keep(&png);
        return 1.0;
    });
}

}  // namespace bench
