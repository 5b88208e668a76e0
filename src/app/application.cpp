#include "app/application.h"

#include <algorithm>
#include <cstdio>

#include "automation.h"
#include "base/version.h"
#include "capture.h"
#include "command_line.h"
#include "game_content.h"
#include "game_places.h"
#include "shell/shell.h"

namespace Kest {
namespace {

constexpr char kTitle[] = "Vantor Kest";

struct ThemeName {
    std::string_view name;
    int theme;
};
constexpr ThemeName kThemes[] = {{"amber", 1}, {"green", 2}, {"lcd", 3}, {"daylight", 3}};

int ThemeNamed(std::string_view name) {
    for (const ThemeName& row : kThemes) {
        if (row.name == name) return row.theme;
    }
    return 0;
}

Appearance AppearanceOf(const LaunchOptions& options, zo::platform::System& system) {
    return {.look = options.look == "modern" ? zo::ui::Look::Modern : zo::ui::Look::Classic,
            .theme = ThemeNamed(options.theme),
            .large = options.large_text != 0,
            .nine_wide_face = system.HasNineWideFace()};
}

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

int RunWindow(const LaunchOptions& options, const Appearance& appearance,
              const kp::Content& content, zo::platform::System& system) {
    const base::Result<std::unique_ptr<zo::platform::Window>> window =
        system.OpenWindow({.title = kTitle, .size = options.size, .full_screen = false});
    if (!window) {
        std::fprintf(stderr, "%s\n", window.Message().c_str());
        return 1;
    }
    Shell shell({.content = content,
                 .clock = system.SystemClock(),
                 .disk = system.SystemDisk(),
                 .window = window->get(),
                 .data_folder = system.DataFolder(),
                 .closed_override = options.closed,
                 .places = GamePlaces()});
    shell.SetAppearance(appearance);
    shell.SetWindow((*window)->Size(), (*window)->DisplayScale());
    shell.Open(Place::Title);
    RunFrameLoop(shell, **window, system.SystemClock());
    return 0;
}

void PrintFonts(zo::platform::System& system) {
    for (const std::string& family : system.FontFamilies()) {
        std::printf("font family: %s\n", family.c_str());
    }
    std::fflush(stdout);
}

// What is asked for on the command line alone and needs no content; nothing when there is no such
// thing.
std::optional<int> RunWithoutContent(const LaunchOptions& options, zo::platform::System& system) {
    if (options.help) {
        std::fputs(UsageText().c_str(), stdout);
        return 0;
    }
    if (options.version) {
        const std::string_view version = base::Version();
        std::printf("%s %.*s\n", kTitle, static_cast<int>(version.size()), version.data());
        return 0;
    }
    if (options.fonts) {
        PrintFonts(system);
        return 0;
    }
    if (!options.audio_render.empty()) {
        std::fputs("audio: the soundtrack did not load\n", stderr);
        return 1;
    }
    if (options.smoke) {
        std::fputs("smoke: this version has no checks\n", stderr);
        return 1;
    }
    return std::nullopt;
}

}  // namespace

int RunApplication(std::span<const std::string_view> arguments, zo::platform::System& system) {
    const LaunchOptions options = ParseCommandLine(arguments);
    if (!system.HasNineWideFace()) {
        std::fputs("fonts: no Unscii 18; cells are eight font pixels wide\n", stderr);
    }
    if (const std::optional<int> code = RunWithoutContent(options, system)) return *code;
    const kp::Content content = LoadGameContent(system);
    const Appearance appearance = AppearanceOf(options, system);
    return options.capture.empty() ? RunWindow(options, appearance, content, system)
                                   : RunCapture(options, appearance, content, system);
}

}  // namespace Kest
