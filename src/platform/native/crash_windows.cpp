#include <windows.h>

#include <csignal>
#include <cstdio>
#include <exception>

#include "native/program.h"

// A crashed program is not asked for much: the report is written from memory that was set aside, by
// calls of the system alone.
namespace zo::platform {
namespace {

constexpr int kMostFrames = 32;
constexpr DWORD kAborted = 0xE0000001;  // stands for abort(), which is no exception of the system's

struct CrashReport {
    wchar_t folder[MAX_PATH * 4] = {};
    wchar_t path[MAX_PATH * 4] = {};
    char version[64] = {};
};

// The handlers are given no place of their own to find it by.
CrashReport report;

struct NamedCode {
    DWORD code;
    const char* name;
};

constexpr NamedCode kCodes[] = {
    {EXCEPTION_ACCESS_VIOLATION, "memory that is not the program's was touched"},
    {EXCEPTION_STACK_OVERFLOW, "the stack ran out"},
    {EXCEPTION_INT_DIVIDE_BY_ZERO, "a number was divided by zero"},
    {EXCEPTION_ILLEGAL_INSTRUCTION, "the processor does not know an instruction"},
    {EXCEPTION_IN_PAGE_ERROR, "a part of the program could not be read from the disk"},
    {kAborted, "the program gave up"},
};

const char* NameOf(DWORD code) {
    for (const NamedCode& named : kCodes) {
        if (named.code == code) return named.name;
    }
    return "an exception that nobody took";
}

void Put(HANDLE file, const char* text, int length) {
    DWORD written = 0;
    if (length > 0) WriteFile(file, text, static_cast<DWORD>(length), &written, nullptr);
}

// Addresses count from the start of what they lie in, which is elsewhere at every start.
void PutPlace(HANDLE file, const char* what, const void* address) {
    HMODULE module = nullptr;
    if (address == nullptr) return;
    constexpr DWORD kByAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(kByAddress, static_cast<LPCWSTR>(address), &module) == 0) return;
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(module, path, MAX_PATH - 1);
    const wchar_t* name = path + length;
    while (name > path && name[-1] != L'\\') --name;
    const auto offset = reinterpret_cast<ULONG_PTR>(address) - reinterpret_cast<ULONG_PTR>(module);
    char line[96 + MAX_PATH];
    Put(file, line,
        std::snprintf(line, sizeof line, "%s: %ls + %llx\r\n", what, name,
                      static_cast<unsigned long long>(offset)));
}

void PutHead(HANDLE file, DWORD code) {
    SYSTEMTIME now;
    GetSystemTime(&now);
    char text[512];
    Put(file, text,
        std::snprintf(text, sizeof text,
                      "Vantor Kest %s crashed on %04u-%02u-%02u at %02u:%02u:%02u UTC.\r\n"
                      "What was typed up to a moment before is saved in this folder.\r\n\r\n"
                      "What happened: %s (%08lx)\r\n",
                      report.version, now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
                      now.wSecond, NameOf(code), code));
}

void WriteReport(DWORD code, const void* address) {
    CreateDirectoryW(report.folder, nullptr);
    const HANDLE file = CreateFileW(report.path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    PutHead(file, code);
    PutPlace(file, "Where", address);
    void* frames[kMostFrames];
    const int count = CaptureStackBackTrace(0, kMostFrames, frames, nullptr);
    for (int index = 0; index < count; ++index) PutPlace(file, "  called from", frames[index]);
    CloseHandle(file);
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    WriteReport(record.ExceptionCode, record.ExceptionAddress);
    return EXCEPTION_EXECUTE_HANDLER;  // the program ends, with the code of the exception
}

DWORD WINAPI ReportOverflow(void* address) {
    WriteReport(EXCEPTION_STACK_OVERFLOW, address);
    TerminateProcess(GetCurrentProcess(), EXCEPTION_STACK_OVERFLOW);
    return 0;
}

// A stack that has run out has no room for a report: another thread's has.
LONG CALLBACK OnOverflow(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode != EXCEPTION_STACK_OVERFLOW) return EXCEPTION_CONTINUE_SEARCH;
    CreateThread(nullptr, 0, &ReportOverflow, record.ExceptionAddress, 0, nullptr);
    Sleep(INFINITE);
    return EXCEPTION_CONTINUE_SEARCH;
}

void OnAbort(int) {
    WriteReport(kAborted, reinterpret_cast<const void*>(&OnAbort));
    TerminateProcess(GetCurrentProcess(), 3);  // as abort() does
}

bool Copy(std::wstring_view from, wchar_t* to, std::size_t size) {
    if (from.size() >= size) return false;
    from.copy(to, from.size());
    to[from.size()] = L'\0';
    return true;
}

}  // namespace

void ReportCrashes(const std::filesystem::path& folder, std::string_view version) {
    const std::filesystem::path path = folder / "crash-report.txt";
    if (!Copy(folder.native(), report.folder, std::size(report.folder)) ||
        !Copy(path.native(), report.path, std::size(report.path))) {
        return;
    }
    version.copy(report.version, sizeof report.version - 1);
    AddVectoredExceptionHandler(1, &OnOverflow);
    SetUnhandledExceptionFilter(&OnException);
    std::signal(SIGABRT, &OnAbort);
}

}  // namespace zo::platform
