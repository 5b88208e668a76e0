#include "platform/folders.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <optional>

#include "native/program.h"

namespace fs = std::filesystem;

namespace {

// Sets a variable, or takes it away, for as long as it lives.
class Setting {
public:
    Setting(const char* name, const char* value)
        : name_(name), before_(zo::platform::EnvironmentVariable(name)) {
        Set(value);
    }
    ~Setting() { Set(before_ ? before_->c_str() : nullptr); }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

private:
    void Set(const char* value) { value ? setenv(name_, value, 1) : unsetenv(name_); }

    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace

TEST_CASE("the player's folder is where the environment says") {
    const fs::path root = fs::temp_directory_path() / "vantor-kest-folders-test";
    const struct {
        std::string home, data;
        const char* folder;
    } cases[] = {
        {root / "home", root / "data", "data/vantor-kest"},
        {root / "home", "", "home/.local/share/vantor-kest"},
        {root / "home", "not/absolute", "home/.local/share/vantor-kest"},
    };
    for (const auto& c : cases) {
        const Setting home("HOME", c.home.c_str());
        const Setting data("XDG_DATA_HOME", c.data.c_str());
        CHECK(zo::platform::UserDataFolder() == root / c.folder);
    }
    {
        const Setting home("HOME", (root / "other").c_str());
        const Setting data("XDG_DATA_HOME", nullptr);
        CHECK(zo::platform::UserDataFolder() == root / "other/.local/share/vantor-kest");
    }
}
