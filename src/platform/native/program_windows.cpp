#include "native/program.h"

#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <memory>

#include "wide.h"

namespace zo::platform {
namespace {

struct FreeLocal {
    void operator()(wchar_t** memory) const { LocalFree(memory); }
};

bool IsOpen(DWORD which) {
    const HANDLE handle = GetStdHandle(which);
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

}  // namespace

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring Widen(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

// The C library's own arguments are in the system's code page, which cannot hold every name.
std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    const std::unique_ptr<wchar_t*, FreeLocal> wide(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::string> arguments;
    for (int index = 1; wide && index < count; ++index) {
        arguments.push_back(Narrow(wide.get()[index]));
    }
    return arguments;
}

std::optional<std::string> EnvironmentVariable(const char* name) {
    const wchar_t* const value = _wgetenv(Widen(name).c_str());
    if (value == nullptr) return std::nullopt;
    return Narrow(value);
}

bool OutputIsTerminal() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(output, &mode) != 0 &&
           SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void JoinConsole() {
    SetConsoleOutputCP(CP_UTF8);  // of a console program; the others have none yet
    const bool has_output = IsOpen(STD_OUTPUT_HANDLE), has_errors = IsOpen(STD_ERROR_HANDLE);
    if ((has_output && has_errors) || AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
    if (!has_output) std::freopen("CONOUT$", "w", stdout);
    if (!has_errors) std::freopen("CONOUT$", "w", stderr);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
}

}  // namespace zo::platform
