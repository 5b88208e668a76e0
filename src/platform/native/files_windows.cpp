#include "files.h"

#include <windows.h>

#include <io.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include "native/system_disk.h"

namespace zo::platform {
namespace {

namespace fs = std::filesystem;

base::Failure SystemError(DWORD error) {
    return {std::system_category().message(static_cast<int>(error))};
}

class SystemLock final : public base::FileLock {
public:
    explicit SystemLock(HANDLE handle) : handle_(handle) {}
    ~SystemLock() override { CloseHandle(handle_); }
    SystemLock(const SystemLock&) = delete;
    SystemLock& operator=(const SystemLock&) = delete;

private:
    HANDLE handle_;
};

}  // namespace

base::Failure LastError() {
    return {std::strerror(errno)};
}

File OpenFile(const fs::path& path, const char* mode) {
    const std::wstring wide_mode(mode, mode + std::strlen(mode));
    return File(_wfopen(path.c_str(), wide_mode.c_str()));
}

base::Status SystemDisk::Flush(const fs::path& path) {
    const File file = OpenFile(path, "r+b");
    if (!file || _commit(_fileno(file.get())) != 0) return LastError();
    return {};
}

// Windows writes a folder's entries with the file.
base::Status SystemDisk::FlushFolder(const fs::path&) {
    return {};
}

base::Status SystemDisk::Rename(const fs::path& from, const fs::path& to) {
    constexpr DWORD kAtOnce = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (MoveFileExW(from.c_str(), to.c_str(), kAtOnce) == 0) return SystemError(GetLastError());
    return {};
}

// Open without sharing, so that it cannot be opened again.
base::Result<std::unique_ptr<base::FileLock>> SystemDisk::Lock(const fs::path& path) {
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE) return {std::make_unique<SystemLock>(handle)};
    const DWORD error = GetLastError();
    if (error == ERROR_SHARING_VIOLATION) return {nullptr};
    return SystemError(error);
}

}  // namespace zo::platform
