#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zo::platform {

// What the program was started with, its own name left out, in UTF-8 whatever the system speaks.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// A variable of the environment, in UTF-8; nothing when it is not set.
std::optional<std::string> EnvironmentVariable(const char* name);

// Whether somebody reads the standard output as it comes, in a terminal that knows colours.
bool OutputIsTerminal();

// Lets a windowed program's lines be read in the console that it was started from, where the system
// would drop them; what is redirected stays so.
void JoinConsole();

// From now on a crash leaves "crash-report.txt" in the folder, beside what was saved: the version,
// what happened, and where, in a few lines. Systems that keep reports of their own are left to it.
void ReportCrashes(const std::filesystem::path& folder, std::string_view version);

}  // namespace zo::platform
