#include "app/application.h"

#include <algorithm>
#include <cstdio>

#include "animation.h"
#include "automation.h"
#include "base/disk.h"
#include "base/version.h"
#include "capture.h"
#include "command_line.h"
#include "game_content.h"
#include "game_places.h"
#include "music/audio_diagnostic.h"
#include "music/hum_song.h"
#include "music/sound_engine.h"
#include "shell/shell.h"
#include "smoke.h"

namespace Kest {
namespace {

constexpr char kTitle[] = "Vantor Kest";
constexpr char kAlreadyRunning[] =
    "Vantor Kest is already open with these files; go on there, or close it first.";

// One pass is one frame: what is due is drawn, then events are waited for until the next frame is
// due. A frame follows the one before it no sooner than the frame rate allows.
void RunFrameLoop(Shell& shell, zo::platform::Window& window, zo::platform::Clock& clock) {
    double drawn = clock.Seconds();
    while (!shell.Done()) {
        shell.Advance();
        if (shell.NeedsDraw()) {
            window.Show(shell.Draw());
            drawn = clock.Seconds();
        }
        double wait = shell.SecondsToNextFrame();
        if (wait >= 0) wait = std::max(wait, drawn + kFrameSeconds - clock.Seconds());
        std::optional<zo::ui::InputEvent> event = window.NextEvent(wait);
        while (event) {
            shell.Handle(*event);
            if (!shell.TakesInput()) break;
            event = window.NextEvent(0);
        }
    }
}

void Complain(std::string_view sentence) {
    std::fprintf(stderr, "save: %.*s\n", static_cast<int>(sentence.size()), sentence.data());
}

// Lines that the window has no place for go to the error stream, each at once.
std::function<void(std::string_view)> SpeechOf(zo::platform::Window& window) {
    return [&window](std::string_view line) {
        if (!window.Say(line)) {
            std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
        }
    };
}

// Two copies at once would write over each other's files, so the second one leaves.
void TurnAway(Shell& shell) {
    Complain(kAlreadyRunning);
    shell.Notice(kTitle, kAlreadyRunning, [&shell] { shell.Quit(); });
}

// Plays until the window closes.
int Play(const LaunchOptions& options, const kp::Content& content, zo::platform::System& system,
         zo::platform::Window& window) {
    base::Disk& disk = system.SystemDisk();
    const std::filesystem::path data_folder = system.DataFolder();
    // A folder that cannot be made is found out by the first save, which says so.
    (void)disk.MakeFolders(data_folder);
    const auto lock = disk.Lock(data_folder / "lock");
    // Where the system has no locks the game is played without one.
    const bool alone = !lock || *lock != nullptr;
    if (alone) system.ReportCrashes(data_folder);
    SoundEngine sounds(static_cast<std::uint32_t>(system.SystemClock().CalendarSeconds()));
    Shell shell({.content = content,
                 .clock = system.SystemClock(),
                 .disk = disk,
                 .window = &window,
                 .data_folder = data_folder,
                 .nine_wide_face = system.HasNineWideFace(),
                 .persistent = alone,
                 .closed_override = options.closed,
                 .places = GamePlaces(),
                 .sounds = &sounds,
                 .complain = Complain});
    if (options.speak) shell.SpeakTo(SpeechOf(window));
    shell.OverrideSettings([&](Settings& settings) { Override(settings, options); });
    shell.SetWindow(window.Size(), window.DisplayScale());
    if (alone) {
        shell.Open(Place::Splash);
    } else {
        TurnAway(shell);
    }
    sounds.Start(LoadSongs);
    const auto output = system.PlayAudio(sounds);
    if (output) sounds.OnWanted([&output] { output->Resume(); });
    RunFrameLoop(shell, window, system.SystemClock());
    sounds.OnWanted({});
    return alone ? 0 : 1;
}

int RunWindow(const LaunchOptions& options, const kp::Content& content,
              zo::platform::System& system) {
    // Read ahead of the shell, so that the window comes up in its size.
    const bool full_screen =
        !options.windowed && LoadSettings(system.SystemDisk(), system.DataFolder()).full_screen;
    const base::Result<std::unique_ptr<zo::platform::Window>> window =
        system.OpenWindow({.title = kTitle,
                           .size = options.size,
                           .full_screen = full_screen,
                           .in_terminal = options.terminal,
                           .speaks = options.speak});
    if (window) return Play(options, content, system, **window);
    std::fprintf(stderr, "%s\n", window.Message().c_str());
    return 1;
}

void PrintFonts(zo::platform::System& system) {
    for (const std::string& family : system.FontFamilies()) {
        std::printf("font family: %s\n", family.c_str());
    }
    std::fflush(stdout);
}

void PrintVersion() {
    const std::string_view version = base::Version();
    std::printf("%s %.*s\n", kTitle, static_cast<int>(version.size()), version.data());
}

int RenderSoundtrack(const std::string& file, zo::platform::System& system) {
    const base::Result<int> songs =
        RenderAudioDiagnostic(system.SystemDisk(), base::TextPath(file));
    if (!songs) {
        std::fprintf(stderr, "audio: %s\n", songs.Message().c_str());
        return 1;
    }
    std::printf("audio: wrote %s, %d songs\n", file.c_str(), *songs);
    return 0;
}

void PrintSmokeLine(std::string_view line) {
    std::fprintf(stderr, "smoke: %.*s\n", static_cast<int>(line.size()), line.data());
}

// Both may be asked for at once; either failure is the run's.
int RunAutomatic(const LaunchOptions& options, const kp::Content& content,
                 zo::platform::System& system) {
    int code = 0;
    if (options.smoke) code = RunSmoke(content, system, PrintSmokeLine);
    if (!options.gif.empty()) code = std::max(code, RunAnimation(options, content, system));
    if (!options.capture.empty()) code = std::max(code, RunCapture(options, content, system));
    return code;
}

}  // namespace

int RunApplication(std::span<const std::string_view> arguments, zo::platform::System& system) {
    const LaunchOptions options = ParseCommandLine(arguments);
    if (options.help) {
        std::fputs(UsageText().c_str(), stdout);
        return 0;
    }
    if (options.version) {
        PrintVersion();
        return 0;
    }
    if (!system.HasNineWideFace()) {
        std::fputs("fonts: no Unscii 18; cells are eight font pixels wide\n", stderr);
    }
    if (options.audio_render) return RenderSoundtrack(*options.audio_render, system);
    if (options.fonts) {
        PrintFonts(system);
        return 0;
    }
    const kp::Content content = LoadGameContent(system);
    return options.IsAutomatic() ? RunAutomatic(options, content, system)
                                 : RunWindow(options, content, system);
}

}  // namespace Kest
