#include "display_choices.h"

#include <algorithm>

namespace Kest {
namespace {

constexpr int kTwoCells = 14;

constexpr std::string_view kLooks[] = {"Classic", "Modern"};
constexpr std::string_view kLookTexts[] = {"VGA text mode, as the tool shipped in 1996.",
                                           "Flat colors, thin lines, a modern font."};
constexpr std::string_view kMonitors[] = {"~V~GA", "~A~mber", "~G~reen", "LC~D~"};
constexpr std::string_view kThemes[] = {"~D~ark", "~A~mber", "~B~lueprints"};
constexpr int kLastTheme = static_cast<int>(std::size(kThemes)) - 1;
constexpr std::string_view kSizes[] = {"Normal", "Large"};
constexpr std::string_view kNormalText = "The most text the window holds.";
constexpr std::string_view kLargeText = "Larger characters, fewer columns and rows.";
constexpr std::string_view kNoLarger = "No larger size fits this window; Large draws as Normal.";

void SetTheme(Settings& settings, int chosen) {
    settings.theme = chosen;
}

}  // namespace

void ChangeAloud(Shell& shell, const SettingsChange& change) {
    shell.ChangeSettings(change);
    shell.Sound().Play(Effect::Toggle);
}

DisplayChoice LookChoice(const Shell& shell) {
    const int chosen = shell.Settings().modern_look ? 1 : 0;
    return {"Loo~k~",  kLooks,
            chosen,    kLookTexts[chosen],
            kTwoCells, [](Settings& settings, int look) { settings.modern_look = look == 1; }};
}

// The modern look has one theme less and draws the last for the monitor's last.
DisplayChoice ThemeChoice(const Shell& shell) {
    const int theme = shell.Settings().theme;
    if (!shell.Settings().modern_look) {
        return {"Monitor", kMonitors,
                theme,     "VGA color, an amber or a green tube, or a laptop LCD.",
                0,         SetTheme};
    }
    return {"Theme", kThemes, std::min(theme, kLastTheme), "Dark, amber, or blueprint colors.",
            0,       SetTheme};
}

DisplayChoice TextSizeChoice(const Shell& shell) {
    const bool large = shell.Settings().large_text;
    const std::string_view large_text = shell.Grid().large_available ? kLargeText : kNoLarger;
    return {"~T~ext size", kSizes,
            large ? 1 : 0, large ? large_text : kNormalText,
            kTwoCells,     [](Settings& settings, int size) { settings.large_text = size == 1; }};
}

}  // namespace Kest
