#include "platform/folders.h"

#include <SDL.h>

#include <memory>

#include "base/disk.h"
#include "native/program.h"

namespace zo::platform {
namespace fs = std::filesystem;

#ifdef _WIN32
fs::path UserDataFolder() {
    const std::unique_ptr<char, decltype(&SDL_free)> path(SDL_GetPrefPath("", "Vantor Kest"),
                                                          SDL_free);
    return path ? base::TextPath(path.get()) : fs::path("Vantor Kest");
}
#else
// A relative path in XDG_DATA_HOME is to be taken as if it were not set.
fs::path UserDataFolder() {
    constexpr const char* kName = "vantor-kest";
    const fs::path data = EnvironmentVariable("XDG_DATA_HOME").value_or("");
    if (data.is_absolute()) return data / kName;
    const fs::path home = EnvironmentVariable("HOME").value_or("");
    return (home.is_absolute() ? home : fs::path("/")) / ".local" / "share" / kName;
}
#endif

fs::path SystemTemporaryFolder() {
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    return error ? fs::path(".") : folder;
}

}  // namespace zo::platform
