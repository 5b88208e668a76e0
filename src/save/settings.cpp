#include "save/settings.h"

#include <algorithm>
#include <span>
#include <string>
#include <variant>

#include "json_file.h"
#include "save/progress.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVersionKey = "settings_version";
constexpr std::int32_t kFileVersion = 3;

// What a value is called in the file. The first row answers for every unknown name, and a value is
// written by its first name.
struct ValueName {
    std::string_view name;
    std::int32_t value;
};
constexpr ValueName kThemes[] = {
    {"vga", 0}, {"amber", 1}, {"green", 2}, {"lcd", 3}, {"daylight", 3}};
constexpr ValueName kTextSizes[] = {{"normal", 0}, {"large", 1}};
constexpr ValueName kLooks[] = {{"classic", 0}, {"modern", 1}};

std::int32_t ValueNamed(std::span<const ValueName> names, std::string_view name) {
    const auto row = std::ranges::find(names, name, &ValueName::name);
    return row == names.end() ? names.front().value : row->value;
}

std::string_view NameOf(std::span<const ValueName> names, std::int32_t value) {
    const auto row = std::ranges::find(names, value, &ValueName::value);
    return row == names.end() ? names.front().name : row->name;
}

using Field = std::variant<bool Settings::*, float Settings::*, std::int32_t Settings::*,
                           std::optional<bool> Settings::*>;

struct Setting {
    const char* key;
    Field field;
    std::span<const ValueName> names = {};  // where the file holds a name
    std::int32_t greatest = 1;              // the least is 0
    std::int32_t since = 1;                 // files of earlier versions do not decide it
};
const Setting kSettings[] = {
    // in the order of the file; the defaults are the record's
    {"effects_on", &Settings::effects_on},
    {"effects_volume", &Settings::effects_volume},
    {"music_on", &Settings::music_on},
    {"music_volume", &Settings::music_volume},
    {"line_on", &Settings::line_on},
    {"line_volume", &Settings::line_volume},
    {"key_clicks", &Settings::key_clicks},
    {"mute_unfocused", &Settings::mute_unfocused},
    {"theme", &Settings::theme, kThemes},
    {"crt", &Settings::crt},
    {"motion", &Settings::motion},
    {"fullscreen", &Settings::full_screen},
    {"run_speed", &Settings::run_speed, {}, std::int32_t{kRunSpeeds.size()} - 1},
    {"text_size", &Settings::large_text, kTextSizes, 1, 2},
    {"open_all", &Settings::open_all},
    {"coaching", &Settings::coaching},
    {"look", &Settings::modern_look, kLooks, 1, 3},
    {"vi_keys", &Settings::vi_keys},
};

// A value of the wrong type leaves what is kept as it was.
void ReadInto(bool& kept, const Setting& setting, const json::Value& value) {
    if (setting.names.empty()) {
        if (value.kind == json::Kind::Boolean) kept = value.boolean;
    } else if (value.IsString()) {
        kept = ValueNamed(setting.names, value.string) != 0;
    }
}

void ReadInto(std::optional<bool>& kept, const Setting&, const json::Value& value) {
    if (value.kind == json::Kind::Boolean) kept = value.boolean;
}

void ReadInto(std::int32_t& kept, const Setting& setting, const json::Value& value) {
    if (setting.names.empty()) {
        if (value.IsNumber()) kept = std::clamp(json::ToInt(value.number), 0, setting.greatest);
    } else if (value.IsString()) {
        kept = ValueNamed(setting.names, value.string);
    }
}

void ReadInto(float& kept, const Setting& setting, const json::Value& value) {
    const double greatest = setting.greatest;
    if (value.IsNumber()) kept = static_cast<float>(std::clamp(value.number, 0.0, greatest));
}

template <class Whole>
json::Value Written(Whole kept, const Setting& setting) {
    if (setting.names.empty()) return json::Value(kept);
    return json::Value(std::string(NameOf(setting.names, kept)));
}

// Null for a choice that the player has not made.
json::Value Written(std::optional<bool> kept, const Setting&) {
    return kept ? json::Value(*kept) : json::Value();
}

json::Value Written(float kept, const Setting&) {
    return json::Value(double{kept});
}

json::Value ToJson(const Settings& settings) {
    json::Value file(json::Kind::Object);
    json::Set(file, kVersionKey, json::Value(std::max(settings.file_version, kFileVersion)));
    for (const Setting& setting : kSettings) {
        json::Value value = std::visit(
            [&](auto field) { return Written(settings.*field, setting); }, setting.field);
        if (value.kind != json::Kind::Null) json::Set(file, setting.key, std::move(value));
    }
    AppendMembers(file, settings.others);
    return file;
}

Settings FromJson(const json::Value& file) {
    Settings settings;
    settings.file_version = json::IntOr(file, kVersionKey, 1);
    for (const Setting& setting : kSettings) {
        if (settings.file_version < setting.since) continue;
        const json::Value& value = json::Member(file, setting.key);
        std::visit([&](auto field) { ReadInto(settings.*field, setting, value); }, setting.field);
    }
    Settings all;
    all.coaching = true;
    settings.others = MembersBeyond(file, ToJson(all));
    return settings;
}

bool IsNewPlayer(base::Disk& disk, const fs::path& data_folder) {
    for (const fs::path& path : {SettingsPath(data_folder), ProgressPath(data_folder)}) {
        if (disk.Exists(path) || disk.Exists(base::Suffixed(path, ".bak"))) return false;
    }
    return true;
}

}  // namespace

fs::path SettingsPath(const fs::path& data_folder) {
    return data_folder / "settings.json";
}

Settings LoadSettings(base::Disk& disk, const fs::path& data_folder) {
    if (const auto file = ReadObject(disk, SettingsPath(data_folder))) return FromJson(*file);
    Settings settings;
    settings.modern_look = IsNewPlayer(disk, data_folder);
    return settings;
}

base::Status SaveSettings(base::Disk& disk, const fs::path& data_folder, const Settings& settings) {
    return WriteObject(disk, SettingsPath(data_folder), ToJson(settings));
}

std::int32_t ThemeNamed(std::string_view name) {
    return ValueNamed(kThemes, name);
}

bool IsModernLook(std::string_view name) {
    return ValueNamed(kLooks, name) == 1;
}

}  // namespace Kest
