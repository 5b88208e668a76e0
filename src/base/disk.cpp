#include "base/disk.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <windows.h>

#include <io.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace base {
namespace {

namespace fs = std::filesystem;

Failure LastError() {
    return {std::strerror(errno)};
}

Status Check(const std::error_code& error) {
    if (error) return Failure{error.message()};
    return {};
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const fs::path& path, const char* mode) {
#ifdef _WIN32
    const std::wstring wide_mode(mode, mode + std::strlen(mode));
    return File(_wfopen(path.c_str(), wide_mode.c_str()));
#else
    return File(std::fopen(path.c_str(), mode));
#endif
}

#ifdef _WIN32
class SystemLock final : public FileLock {
public:
    explicit SystemLock(HANDLE handle) : handle_(handle) {}
    ~SystemLock() override { CloseHandle(handle_); }
    SystemLock(const SystemLock&) = delete;
    SystemLock& operator=(const SystemLock&) = delete;

private:
    HANDLE handle_;
};
#else
class SystemLock final : public FileLock {
public:
    explicit SystemLock(int handle) : handle_(handle) {}
    ~SystemLock() override { close(handle_); }
    SystemLock(const SystemLock&) = delete;
    SystemLock& operator=(const SystemLock&) = delete;

private:
    int handle_;
};
#endif

}  // namespace

bool SystemDisk::Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool SystemDisk::IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

Result<std::vector<fs::path>> SystemDisk::FilesUnder(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;  // of an entry that is gone by now, which is no file
        if (entry->is_regular_file(unknown)) files.push_back(entry->path());
    }
    if (error) return Failure{error.message()};
    std::sort(files.begin(), files.end());
    return files;
}

Result<std::string> SystemDisk::Read(const fs::path& path) {
    if (IsFolder(path)) return Failure{"Is a directory"};
    const File file = Open(path, "rb");
    if (!file) return LastError();
    std::string text;
    char chunk[16384];
    while (const std::size_t got = std::fread(chunk, 1, sizeof chunk, file.get())) {
        text.append(chunk, got);
    }
    if (std::ferror(file.get())) return LastError();
    return text;
}

Status SystemDisk::Write(const fs::path& path, std::string_view text) {
    File file = Open(path, "wb");
    if (!file) return LastError();
    // An empty view may have no data at all, which fwrite does not take.
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        return LastError();
    }
    if (std::fclose(file.release()) != 0) return LastError();
    return {};
}

Status SystemDisk::Flush(const fs::path& path) {
    const File file = Open(path, "r+b");
    if (!file) return LastError();
#ifdef _WIN32
    if (_commit(_fileno(file.get())) != 0) return LastError();
#else
    if (fsync(fileno(file.get())) != 0) return LastError();
#endif
    return {};
}

Status SystemDisk::FlushFolder(const fs::path& folder) {
#ifdef _WIN32
    (void)folder;  // Windows writes folder entries with the file.
    return {};
#else
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle < 0) return LastError();
    const bool flushed = fsync(handle) == 0;
    const Status status = flushed ? Status() : Status(LastError());
    close(handle);
    return status;
#endif
}

Status SystemDisk::Copy(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return Check(error);
}

Status SystemDisk::Rename(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return Check(error);
}

Status SystemDisk::Remove(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    return Check(error);
}

Status SystemDisk::RemoveFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    return Check(error);
}

Status SystemDisk::MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return Check(error);
}

Result<std::unique_ptr<FileLock>> SystemDisk::Lock(const fs::path& path) {
#ifdef _WIN32
    // Open without sharing, so that it cannot be opened again.
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle != INVALID_HANDLE_VALUE) return {std::make_unique<SystemLock>(handle)};
    const DWORD error = GetLastError();
    if (error == ERROR_SHARING_VIOLATION) return {nullptr};
    return Failure{std::system_category().message(static_cast<int>(error))};
#else
    const int handle = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (handle < 0) return LastError();
    auto lock = std::make_unique<SystemLock>(handle);
    if (flock(handle, LOCK_EX | LOCK_NB) == 0) return {std::move(lock)};
    if (errno == EWOULDBLOCK) return {nullptr};
    return LastError();
#endif
}

std::string PathText(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string NameBelow(const fs::path& folder, const fs::path& path) {
    const std::u8string name = path.lexically_relative(folder).generic_u8string();
    return {name.begin(), name.end()};
}

fs::path Suffixed(const fs::path& path, std::string_view suffix) {
    fs::path longer = path;
    longer += suffix;
    return longer;
}

Status WriteAtomically(Disk& disk, const fs::path& path, std::string_view text) {
    const auto fail = [&](const char* what, const Status& reason) {
        return Failure{std::string(what) + PathText(path) + " (" + reason.Message() + ")"};
    };
    const fs::path temporary = Suffixed(path, ".tmp");
    if (const Status written = disk.Write(temporary, text); !written) {
        return fail("cannot write ", written);
    }
    if (const Status flushed = disk.Flush(temporary); !flushed) {
        return fail("cannot finish writing ", flushed);
    }
    bool has_backup = false;
    if (disk.Exists(path)) {
        const fs::path backup = Suffixed(path, ".bak");
        // A backup that cannot be made is no reason to refuse the save: the move below is whole.
        has_backup = disk.Copy(path, backup) && disk.Flush(backup);
    }
    Status moved = disk.Rename(temporary, path);
    if (!moved) {
        // Some file systems refuse to move over an existing file. It may go only when the backup
        // holds its contents.
        if (has_backup) (void)disk.Remove(path);
        moved = disk.Rename(temporary, path);
    }
    if (!moved) return fail("cannot replace ", moved);
    (void)disk.FlushFolder(path.parent_path());
    return {};
}

}  // namespace base
