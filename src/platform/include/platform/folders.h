#pragma once

#include <filesystem>

namespace zo::platform {

// Where the program keeps what belongs to this user; the folder may be missing. XDG_DATA_HOME and
// HOME are honoured where the system knows them.
std::filesystem::path UserDataFolder();

// Where the system keeps passing files.
std::filesystem::path SystemTemporaryFolder();

}  // namespace zo::platform
