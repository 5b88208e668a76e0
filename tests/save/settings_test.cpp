#include "save/settings.h"

#include <doctest/doctest.h>

#include <string>

#include "support/fake_disk.h"

using Kest::Settings;

namespace {

constexpr const char* kPath = "data/settings.json";

constexpr const char* kDefaults = R"({
  "settings_version": 3,
  "effects_on": true,
  "effects_volume": 0.69999998807907104,
  "music_on": true,
  "music_volume": 0.40000000596046448,
  "line_on": true,
  "line_volume": 0.44999998807907104,
  "key_clicks": true,
  "mute_unfocused": true,
  "theme": "vga",
  "crt": false,
  "motion": true,
  "fullscreen": true,
  "run_speed": 2,
  "text_size": "large",
  "open_all": false,
  "look": "modern",
  "vi_keys": false
}
)";

Settings Load(const std::string& text) {
    fake::Disk disk;
    disk.files[kPath] = text;
    return Kest::LoadSettings(disk, "data");
}

// The file as it is written back after loading.
std::string WrittenBack(const std::string& text) {
    fake::Disk disk;
    REQUIRE(Kest::SaveSettings(disk, "data", Load(text)));
    return disk.files[kPath];
}

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST_CASE("a new player's settings are the defaults, and they read back as they are") {
    fake::Disk disk;
    REQUIRE(Kest::SaveSettings(disk, "data", Kest::LoadSettings(disk, "data")));
    CHECK(disk.files[kPath] == kDefaults);
    CHECK(WrittenBack(kDefaults) == kDefaults);
}

TEST_CASE("older files and missing ones decide look and text size") {
    const struct {
        std::string_view file;  // none when empty
        const char* path;
        bool modern, large;
        std::int32_t theme;
    } cases[] = {
        {"", kPath, true, true, 0},
        {"{}", "data/progress.json", false, true, 0},
        {"{", "data/progress.json.bak", false, true, 0},
        {R"({"settings_version": 2, "text_size": "normal", "theme": "green"})", kPath, false, false,
         2},
        {R"({"settings_version": 2, "look": "modern"})", kPath, false, true, 0},
        {R"({"theme": "amber", "text_size": "normal"})", kPath, false, true, 1},
        {R"({"settings_version": "3", "text_size": "normal"})", kPath, false, true, 0},
        {"not json", kPath, false, true, 0},
        {"[1]", kPath, false, true, 0},
        {R"({"settings_version": 3})", kPath, false, true, 0},
        {R"({"settings_version": 3, "look": "modern", "text_size": "huge"})", kPath, true, false,
         0},
        {R"({"settings_version": 4, "look": "modern"})", kPath, true, true, 0},
        {R"({"settings_version": 3, "look": "modern"})", "data/settings.json.bak", true, true, 0},
        {"not json", "data/settings.json.bak", false, true, 0},
    };
    for (const auto& c : cases) {
        CAPTURE(c.file);
        CAPTURE(std::string(c.path));
        fake::Disk disk;
        if (!c.file.empty()) disk.files[c.path] = c.file;
        const Settings settings = Kest::LoadSettings(disk, "data");
        CHECK(settings.modern_look == c.modern);
        CHECK(settings.large_text == c.large);
        CHECK(settings.theme == c.theme);
    }
}

TEST_CASE("values are held within their limits, and one of the wrong type keeps its default") {
    const struct {
        const char* read;
        const char* written;
    } cases[] = {
        {R"("effects_volume": 3)", R"("effects_volume": 1,)"},
        {R"("effects_volume": -2)", R"("effects_volume": 0,)"},
        {R"("music_volume": 0.25)", R"("music_volume": 0.25,)"},
        {R"("line_volume": "loud")", R"("line_volume": 0.44999998807907104,)"},
        {R"("run_speed": 9)", R"("run_speed": 4,)"},
        {R"("run_speed": -1)", R"("run_speed": 0,)"},
        {R"("run_speed": true)", R"("run_speed": 2,)"},
        {R"("key_clicks": 0)", R"("key_clicks": true,)"},
        {R"("vi_keys": true)", R"("vi_keys": true)"},
        {R"("theme": "daylight")", R"("theme": "lcd",)"},
        {R"("theme": "pink")", R"("theme": "vga",)"},
        {R"("theme": 2)", R"("theme": "vga",)"},
        {R"("text_size": 7)", R"("text_size": "large",)"},
        {R"("look": "Modern")", R"("look": "classic",)"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.read));
        const std::string file = R"({"settings_version": 3, )" + std::string(c.read) + "}";
        CHECK(Holds(WrittenBack(file), c.written));
    }
}

TEST_CASE("coaching is on until every ticket is opened, or as the player has chosen") {
    const struct {
        const char* file;
        bool coaches;
        const char* written;  // empty: not at all
    } cases[] = {
        {R"({"open_all": false})", true, ""},
        {R"({"open_all": true})", false, ""},
        {R"({"open_all": false, "coaching": false})", false, R"("coaching": false,)"},
        {R"({"open_all": true, "coaching": true})", true, R"("coaching": true,)"},
        {R"({"open_all": true, "coaching": "yes"})", false, ""},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.file));
        CHECK(Load(c.file).Coaches() == c.coaches);
        const std::string written = WrittenBack(c.file);
        CHECK(Holds(written, "coaching") == (c.written[0] != '\0'));
        CHECK(Holds(written, c.written));
    }
}

TEST_CASE("a newer file keeps its version and what this version does not know") {
    const std::string written = WrittenBack(
        R"({"later": {"deep": [1]}, "settings_version": 5, "look": "modern", "motto": "kest"})");
    CHECK(written.starts_with("{\n  \"settings_version\": 5,\n  \"effects_on\": true,\n"));
    CHECK(
        written.ends_with("  \"vi_keys\": false,\n  \"later\": {\n    \"deep\": [\n      1\n"
                          "    ]\n  },\n  \"motto\": \"kest\"\n}\n"));
}
