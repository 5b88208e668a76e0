#include "native/program.h"

#include <unistd.h>

#include <cstdlib>

namespace zo::platform {

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

std::optional<std::string> EnvironmentVariable(const char* name) {
    const char* const value = std::getenv(name);
    if (value == nullptr) return std::nullopt;
    return value;
}

bool OutputIsTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

void JoinConsole() {}

void ReportCrashes(const std::filesystem::path&, std::string_view) {}

}  // namespace zo::platform
