#include "files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include "native/system_disk.h"

namespace zo::platform {
namespace {

namespace fs = std::filesystem;

class SystemLock final : public base::FileLock {
public:
    explicit SystemLock(int handle) : handle_(handle) {}
    ~SystemLock() override { close(handle_); }
    SystemLock(const SystemLock&) = delete;
    SystemLock& operator=(const SystemLock&) = delete;

private:
    int handle_;
};

}  // namespace

base::Failure LastError() {
    return {std::strerror(errno)};
}

File OpenFile(const fs::path& path, const char* mode) {
    return File(std::fopen(path.c_str(), mode));
}

base::Status SystemDisk::Flush(const fs::path& path) {
    const File file = OpenFile(path, "r+b");
    if (!file || fsync(fileno(file.get())) != 0) return LastError();
    return {};
}

base::Status SystemDisk::FlushFolder(const fs::path& folder) {
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle < 0) return LastError();
    const bool flushed = fsync(handle) == 0;
    const base::Status status = flushed ? base::Status() : base::Status(LastError());
    close(handle);
    return status;
}

base::Status SystemDisk::Rename(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (error) return base::Failure{error.message()};
    return {};
}

base::Result<std::unique_ptr<base::FileLock>> SystemDisk::Lock(const fs::path& path) {
    const int handle = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (handle < 0) return LastError();
    auto lock = std::make_unique<SystemLock>(handle);
    if (flock(handle, LOCK_EX | LOCK_NB) == 0) return {std::move(lock)};
    if (errno == EWOULDBLOCK) return {nullptr};
    return LastError();
}

}  // namespace zo::platform
