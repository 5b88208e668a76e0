#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zo::platform {

// A variable of the environment; nothing when it is not set.
std::optional<std::string> EnvironmentVariable(const char* name);

// Where the program keeps what belongs to this user; the folder may be missing. XDG_DATA_HOME and
// HOME are honoured where the system knows them.
std::filesystem::path UserDataFolder();

// Where the system keeps passing files.
std::filesystem::path SystemTemporaryFolder();

}  // namespace zo::platform
