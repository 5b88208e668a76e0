#include "animation.h"

#include <algorithm>
#include <cstdio>

#include "automation.h"
#include "base/format.h"
#include "bench/bench.h"
#include "content/store.h"
#include "game_places.h"
#include "save/firmware_files.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Key;

constexpr zo::ui::PixelSize kSize = {640, 400};  // 80 by 25 cells
constexpr int kMostFrames = 240;
constexpr int kHundredths = 8;  // of a frame
constexpr int kFastest = static_cast<int>(kRunSpeeds.size()) - 1;

base::Result<std::string> FirmwareFor(const LaunchOptions& options, const kp::Ticket& ticket,
                                      zo::platform::System& system) {
    base::Disk& disk = system.SystemDisk();
    if (!options.firmware.empty()) {
        auto text = disk.Read(base::TextPath(options.firmware));
        if (text) return text;
        return base::Failure{"cannot read " + options.firmware + ": " + text.Message()};
    }
    const auto kept = LoadFirmware(disk, FirmwarePath(system.DataFolder(), ticket.id, 1));
    if (kept) return *kept;
    return base::Failure{"there is no firmware for " + ticket.id + "; --firmware names a file"};
}

// The bench with the firmware on it, the test chosen and the card in sight.
class Stage {
public:
    Stage(const LaunchOptions& options, const kp::Content& content, zo::platform::System& system)
        : folder_(system),
          shell_({.content = content,
                  .clock = clock_,
                  .disk = system.SystemDisk(),
                  .data_folder = folder_.Path(),
                  .nine_wide_face = system.HasNineWideFace(),
                  .persistent = false,
                  .closed_override = static_cast<int>(content.Tickets().size()),
                  .places = GamePlaces()}) {
        shell_.OverrideSettings([&](Settings& settings) {
            settings.modern_look = false;
            Override(settings, options);
            settings.crt = settings.vi_keys = settings.motion = false;
            settings.run_speed = kFastest;
        });
        shell_.SetWindow(kSize, 1);
        shell_.HoldCaret();
    }

    const Bench& Open(const kp::Ticket& ticket, const std::string& firmware, int test) {
        shell_.Open(Place::Bench, ticket.id);
        Draw();
        shell_.SetClipboardText(firmware);
        Press({.key = Key::Character, .character = U'a', .with = {.control = true}});
        Press({.key = Key::Character, .character = U'v', .with = {.control = true}});
        Press({.key = Key::F2});
        for (int k = 1; k < test; ++k) Press({.key = Key::PageDown, .with = {.control = true}});
        return dynamic_cast<const Bench&>(*shell_.Top());
    }
    void Press(const zo::ui::KeyPress& key) {
        shell_.Handle(key);
        Draw();
    }
    const zo::ui::Frame& Draw() {
        shell_.Advance();
        return shell_.Draw();
    }
    // Lets so many ticks of a run pass.
    const zo::ui::Frame& PassTicks(int ticks) {
        for (; ticks > 0; --ticks) {
            clock_.Pass(1.0 / kRunSpeeds[kFastest].ticks_per_second);
            shell_.Advance();
        }
        return Draw();
    }

private:
    TemporaryFolder folder_;
    VirtualClock clock_;
    Shell shell_;
};

base::Status Animate(const LaunchOptions& options, const kp::Content& content,
                     zo::platform::System& system) {
    const auto id = kp::FindTicketId(kp::ContentStore::BuiltIn(), options.scene);
    const kp::LoadedTicket* loaded = id ? content.FindTicket(*id) : nullptr;
    if (loaded == nullptr) return base::Failure{"--scene names the ticket, such as 1-02"};
    const auto count = static_cast<int>(loaded->ticket.tests.size());
    if (options.test < 1 || options.test > count) {
        return base::Failure{
            base::Format("there is no test %d; the ticket has %d", options.test, count)};
    }
    const auto firmware = FirmwareFor(options, loaded->ticket, system);
    if (!firmware) return base::Failure{firmware.Message()};
    Stage stage(options, content, system);
    const Bench& bench = stage.Open(loaded->ticket, *firmware, options.test);
    const auto ticks = static_cast<int>(bench.Run().CalledFor().ticks);
    std::vector<zo::ui::Frame> frames = {stage.Draw()};
    stage.Press({.key = Key::F5});
    if (bench.Run().Session() == nullptr) return base::Failure{bench.Run().Standing()};
    frames.push_back(stage.Draw());
    const int step = std::max(1, (ticks + kMostFrames - 1) / kMostFrames);
    while (bench.Run().State() == RunState::Running && frames.size() < 2 * kMostFrames) {
        frames.push_back(stage.PassTicks(step));
    }
    return system.WriteAnimation(frames, kHundredths, kSize, base::TextPath(options.gif));
}

}  // namespace

int RunAnimation(const LaunchOptions& options, const kp::Content& content,
                 zo::platform::System& system) {
    const base::Status written = Animate(options, content, system);
    if (written) return 0;
    std::fprintf(stderr, "gif: %s\n", written.Message().c_str());
    return 1;
}

}  // namespace Kest
