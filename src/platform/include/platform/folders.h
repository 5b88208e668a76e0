#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "base/disk.h"

namespace zo::platform {

// A variable of the environment; nothing when it is not set.
std::optional<std::string> EnvironmentVariable(const char* name);

// Where the program keeps what belongs to this user: made when it is missing. XDG_DATA_HOME and
// HOME are honoured where the system knows them.
std::filesystem::path UserDataFolder(base::Disk& disk);

// Where the system keeps passing files.
std::filesystem::path SystemTemporaryFolder();

}  // namespace zo::platform
