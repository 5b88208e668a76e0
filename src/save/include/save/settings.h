#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "base/disk.h"
#include "base/result.h"
#include "json/value.h"

namespace Kest {

// How fast a test runs on the bench.
struct RunSpeed {
    std::string_view name;
    int ticks_per_second;
};
inline constexpr std::array<RunSpeed, 5> kRunSpeeds = {
    {{"Slow", 4}, {"Steady", 10}, {"Brisk", 24}, {"Fast", 60}, {"Rapid", 160}}};
inline constexpr int kDefaultRunSpeed = 2;

// The player's choices, as settings.json keeps them.
struct Settings {
    bool effects_on = true;
    float effects_volume = 0.7F;  // volumes are 0 to 1
    bool music_on = true;
    float music_volume = 0.4F;
    bool line_on = true;
    float line_volume = 0.45F;
    bool key_clicks = true;
    bool mute_unfocused = true;
    std::int32_t theme = 0;  // 0 VGA, 1 amber, 2 green, 3 LCD
    bool crt = false;
    bool motion = true;
    bool full_screen = true;
    std::int32_t run_speed = kDefaultRunSpeed;
    bool large_text = true;
    bool open_all = false;         // every ticket can be opened; no achievements meanwhile
    std::optional<bool> coaching;  // nothing until the player chooses
    bool modern_look = false;
    bool vi_keys = false;

    // What a newer version or a hand put into the file, written back behind the rest.
    std::int32_t file_version = 0;
    json::Value others;

    // Who opens every ticket without a word on coaching needs none.
    bool Coaches() const { return coaching.value_or(!open_all); }
    // Whether the monitor is a tube, the only kind that has CRT effects: amber or green.
    bool HasTube() const { return !modern_look && (theme == 1 || theme == 2); }
};

std::filesystem::path SettingsPath(const std::filesystem::path& data_folder);

// Reads settings.json, else its backup, of this version or an older one. Without either, the look
// is modern for a player who has no progress yet, and the rest has its defaults.
Settings LoadSettings(base::Disk& disk, const std::filesystem::path& data_folder);
base::Status SaveSettings(base::Disk& disk, const std::filesystem::path& data_folder,
                          const Settings& settings);

// What a name in the file or on the command line stands for; an unknown one is the first.
std::int32_t ThemeNamed(std::string_view name);
bool IsModernLook(std::string_view name);

}  // namespace Kest
