#include "capture.h"

#include <cstdio>

#include "base/disk.h"
#include "game_places.h"
#include "scene.h"

namespace Kest {
namespace {

constexpr int kLeastDots = 100;
constexpr int kMostDots = 400;
constexpr float kUsualDots = 96;

float DisplayScale(int dots_per_inch) {
    const bool forced = dots_per_inch >= kLeastDots && dots_per_inch <= kMostDots;
    return forced ? static_cast<float>(dots_per_inch) / kUsualDots : 1;
}

void RunFrames(Shell& shell, VirtualClock& clock, double seconds) {
    for (const double end = clock.Seconds() + seconds; clock.Seconds() < end;) {
        clock.NextFrame();
        shell.Advance();
        if (shell.NeedsDraw()) shell.Draw();
    }
}

}  // namespace

void ShowScene(std::string_view words, double delay_seconds, VirtualClock& clock, Shell& shell) {
    shell.HoldCaret();
    Scene scene(words);
    scene.Build(shell);
    RunFrames(shell, clock, delay_seconds > 0 ? delay_seconds : scene.DelaySeconds());
    scene.OpenOverlays(shell);
    RunFrames(shell, clock, kFrameSeconds);
}

int RunCapture(const LaunchOptions& options, const kp::Content& content,
               zo::platform::System& system) {
    const TemporaryFolder folder(system);
    VirtualClock clock;
    Shell shell({.content = content,
                 .clock = clock,
                 .disk = system.SystemDisk(),
                 .data_folder = folder.Path(),
                 .nine_wide_face = system.HasNineWideFace(),
                 .persistent = false,
                 .closed_override = options.closed,
                 .places = GamePlaces()});
    shell.OverrideSettings([&](Settings& settings) { Override(settings, options); });
    shell.SetWindow(options.size, DisplayScale(options.dots_per_inch));
    ShowScene(options.scene, options.capture_delay, clock, shell);
    const base::Status written =
        system.WritePicture(shell.Draw(), options.size, base::TextPath(options.capture));
    if (written) return 0;
    std::fprintf(stderr, "capture: %s\n", written.Message().c_str());
    return 1;
}

}  // namespace Kest
