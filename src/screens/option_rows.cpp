#include "option_rows.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/format.h"
#include "ui/check_box.h"
#include "ui/chooser.h"
#include "ui/key_grammar.h"
#include "ui/radio_row.h"
#include "ui/slider.h"

namespace Kest {
namespace {

using zo::ui::Check;
using zo::ui::CheckBox;
using zo::ui::Chooser;
using zo::ui::Point;
using zo::ui::RadioRow;
using zo::ui::Slider;

constexpr int kBehindCheck = 2;  // blanks
constexpr std::string_view kTubesOnly = "Amber and green monitors only";
constexpr std::string_view kNotInTerminal = "Not in a terminal";
constexpr std::string_view kNotPlaying = "Not playing";

void AskToReset(Shell& shell) {
    shell.Ask({.title = "Reset progress",
               .message = "Clears closed tickets, scores, and achievements on this computer. "
                          "Firmware files are kept.",
               .yes = "Reset",
               .answered =
                   [&shell](bool yes) {
                       if (yes) shell.ResetProgress();
                   },
               .suggest_no = true});
}

constexpr OptionRow kRows[] = {
    {"SOUND", "Sound ~e~ffects", OptionKind::Volume, "Clicks, test tones, and alerts.",
     &Settings::effects_on, &Settings::effects_volume},
    {"", "~M~usic", OptionKind::Volume, "The soundtrack.", &Settings::music_on,
     &Settings::music_volume},
    {"", "~L~ine voice", OptionKind::Volume,
     "Two tones for every byte on the line while a test runs.", &Settings::line_on,
     &Settings::line_volume},
    {"", "Ke~y~ clicks", OptionKind::Check, "A click for each key typed in the editor.",
     &Settings::key_clicks},
    {"", "M~u~te when inactive", OptionKind::Check, "No sound while another window is in front.",
     &Settings::mute_unfocused},
    {"", "~N~ow playing", OptionKind::Song, "Enter plays the next song."},

    {.group = "DISPLAY", .label = "", .kind = OptionKind::Choice, .choice = LookChoice},
    {.group = "", .label = "", .kind = OptionKind::Choice, .choice = ThemeChoice},
    {.group = "", .label = "", .kind = OptionKind::Choice, .choice = TextSizeChoice},
    {"", "~C~RT effects", OptionKind::Tube, "Faint scanlines and a dark edge on the tube.",
     &Settings::crt},
    {"", "Moti~o~n", OptionKind::Check, "Caret blink and typing animation.", &Settings::motion},
    {"", "~F~ull screen", OptionKind::Check, "Starts full screen. F11 switches at any time.",
     &Settings::full_screen},
    {.group = "",
     .label = "Te~x~t-mode card",
     .kind = OptionKind::Command,
     .explanation = "Shows every character and color of this display.",
     .command = [](Shell& shell) { shell.Open(Place::TextMode); }},

    {"PLAY", "V~i~ keys", OptionKind::Check,
     "Normal and Insert modes in the editor. F10 opens the menu.", &Settings::vi_keys},
    {"", "Run ~s~peed", OptionKind::Speed},
    {"", "O~p~en all tickets", OptionKind::Check, "Every ticket opens. No achievements while on.",
     &Settings::open_all},
    {"", "Coac~h~ing", OptionKind::Coaching, "A line of help on the first tickets."},
    {.group = "",
     .label = "~R~eset progress...",
     .kind = OptionKind::Command,
     .explanation = "Clears closed tickets, scores, and achievements. Firmware is kept.",
     .command = AskToReset},
};

constexpr auto kSpeedNames = [] {
    std::array<std::string_view, kRunSpeeds.size()> names;
    std::ranges::transform(kRunSpeeds, names.begin(), &RunSpeed::name);
    return names;
}();

bool IsOn(const OptionRow& row, const Settings& settings) {
    return row.kind == OptionKind::Coaching ? settings.Coaches() : settings.*row.on;
}

// Why a row has no use now; empty when it has.
std::string_view WhyNot(const OptionRow& row, const Shell& shell) {
    const bool of_window = row.kind == OptionKind::Tube || row.on == &Settings::full_screen;
    if (of_window && shell.InCells()) return kNotInTerminal;
    return row.kind == OptionKind::Tube && !shell.Settings().HasTube() ? kTubesOnly : "";
}

Chooser SpeedChooser(const Shell& shell) {
    return {.names = kSpeedNames, .chosen = shell.Settings().run_speed};
}

Slider SliderOf(const OptionRow& row, const Settings& settings) {
    return {.percent = static_cast<int>(std::lround(settings.*row.volume * 100)),
            .muted = !IsOn(row, settings)};
}

void SetSpeed(Shell& shell, int speed) {
    ChangeAloud(shell, [speed](Settings& settings) { settings.run_speed = speed; });
}

void SetVolume(const OptionRow& row, Shell& shell, int percent) {
    ChangeAloud(shell, [&](Settings& settings) {
        settings.*row.volume = static_cast<float>(percent) / 100;
    });
}

void SetChoice(const DisplayChoice& choice, Shell& shell, int chosen) {
    ChangeAloud(shell, [&](Settings& settings) { choice.set(settings, chosen); });
}

}  // namespace

std::span<const OptionRow> OptionRows() {
    return kRows;
}

std::string_view LabelOf(const OptionRow& row, const Shell& shell) {
    return row.choice != nullptr ? row.choice(shell).label : row.label;
}

std::string ExplanationOf(const OptionRow& row, const Shell& shell) {
    if (row.choice != nullptr) return std::string(row.choice(shell).explanation);
    if (row.kind != OptionKind::Speed) return std::string(row.explanation);
    const RunSpeed& speed = kRunSpeeds[static_cast<std::size_t>(shell.Settings().run_speed)];
    return base::Format("%d ticks per second on the bench.", speed.ticks_per_second);
}

bool IsAvailable(const OptionRow& row, const Shell& shell) {
    return WhyNot(row, shell).empty();
}

void StepOption(const OptionRow& row, Shell& shell, int by) {
    if (row.kind == OptionKind::Volume) {
        const Slider slider = SliderOf(row, shell.Settings());
        const int to = Stepped(slider, by);
        if (to != slider.percent) SetVolume(row, shell, to);
    } else if (row.kind == OptionKind::Speed) {
        const int to = Stepped(SpeedChooser(shell), by);
        if (to != shell.Settings().run_speed) SetSpeed(shell, to);
    } else if (row.kind == OptionKind::Choice) {
        const DisplayChoice choice = row.choice(shell);
        const int last = static_cast<int>(choice.values.size()) - 1;
        const int to = std::clamp(choice.chosen + by, 0, last);
        if (to != choice.chosen) SetChoice(choice, shell, to);
    }
}

// Both what is in force and what is kept get the same value, which a switch of each might not give.
void SwitchOption(const OptionRow& row, Shell& shell) {
    if (!IsAvailable(row, shell)) return;
    if (row.kind == OptionKind::Coaching) {
        const bool on = !shell.Settings().Coaches();
        ChangeAloud(shell, [on](Settings& settings) { settings.coaching = on; });
    } else if (row.on != nullptr) {
        const bool on = !(shell.Settings().*row.on);
        ChangeAloud(shell, [&](Settings& settings) { settings.*row.on = on; });
    } else {
        DoOption(row, shell);
    }
}

void DoOption(const OptionRow& row, Shell& shell) {
    switch (row.kind) {
        case OptionKind::Choice: {
            const DisplayChoice choice = row.choice(shell);
            SetChoice(choice, shell, (choice.chosen + 1) % static_cast<int>(choice.values.size()));
            break;
        }
        case OptionKind::Speed:
            SetSpeed(shell, (shell.Settings().run_speed + 1) % static_cast<int>(kRunSpeeds.size()));
            break;
        case OptionKind::Command:
            row.command(shell);
            break;
        case OptionKind::Song:
            shell.Sound().PlayNextSong();
            break;
        default:
            SwitchOption(row, shell);
            break;
    }
}

bool ChooseByLetter(const OptionRow& row, Shell& shell, char32_t letter) {
    if (row.choice == nullptr) return false;
    const DisplayChoice choice = row.choice(shell);
    const auto value = std::ranges::find_if(choice.values, [&](std::string_view label) {
        return zo::ui::Label(label).Hotkey() == letter;
    });
    if (value == choice.values.end()) return false;
    SetChoice(choice, shell, static_cast<int>(value - choice.values.begin()));
    return true;
}

void DrawOptionControl(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, Point at,
                       const OptionRow& row, Shell& shell, const zo::ui::Surface& surface) {
    const Settings& settings = shell.Settings();
    if (row.kind == OptionKind::Choice) {
        const DisplayChoice choice = row.choice(shell);
        DrawRadioRow(canvas, pressables, at,
                     {.labels = choice.values,
                      .chosen = choice.chosen,
                      .least_cells = choice.least_cells,
                      .surface = surface},
                     [choice, &shell](int to) { SetChoice(choice, shell, to); });
        return;
    }
    if (row.kind == OptionKind::Speed) {
        Chooser chooser = SpeedChooser(shell);
        chooser.surface = surface;
        DrawChooser(canvas, pressables, at, chooser, [&shell](int to) { SetSpeed(shell, to); });
        return;
    }
    if (row.kind == OptionKind::Song) {
        const std::string_view title = shell.Sound().PlayingTitle();
        canvas.Text(at.x, at.y, title.empty() ? kNotPlaying : title, surface.text);
    }
    if (row.kind == OptionKind::Song || row.kind == OptionKind::Command) return;

    const std::string_view why_not = WhyNot(row, shell);
    const bool available = why_not.empty();
    const CheckBox box = {.check = !available            ? Check::Unavailable
                                   : IsOn(row, settings) ? Check::On
                                                         : Check::Off,
                          .surface = surface};
    at.x = DrawCheckBox(canvas, pressables, at, box, [&row, &shell] { SwitchOption(row, shell); }) +
           kBehindCheck;
    if (!available) canvas.Text(at.x, at.y, why_not, surface.off);
    if (row.kind != OptionKind::Volume) return;
    Slider slider = SliderOf(row, settings);
    slider.surface = surface;
    DrawSlider(canvas, pressables, at, slider,
               [&row, &shell](int percent) { SetVolume(row, shell, percent); });
}

}  // namespace Kest
