#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"

namespace zo::platform {

// The machine's own file system.
class SystemDisk final : public base::Disk {
public:
    bool Exists(const std::filesystem::path& path) override;
    bool IsFolder(const std::filesystem::path& path) override;
    base::Result<std::vector<std::filesystem::path>> FilesUnder(
        const std::filesystem::path& folder) override;
    base::Result<std::string> Read(const std::filesystem::path& path) override;
    base::Status Write(const std::filesystem::path& path, std::string_view text) override;
    base::Status Flush(const std::filesystem::path& path) override;
    base::Status FlushFolder(const std::filesystem::path& folder) override;
    base::Status Copy(const std::filesystem::path& from, const std::filesystem::path& to) override;
    base::Status Rename(const std::filesystem::path& from,
                        const std::filesystem::path& to) override;
    base::Status Remove(const std::filesystem::path& path) override;
    base::Status RemoveFolder(const std::filesystem::path& folder) override;
    base::Status MakeFolders(const std::filesystem::path& folder) override;
    base::Result<std::unique_ptr<base::FileLock>> Lock(const std::filesystem::path& path) override;
};

}  // namespace zo::platform
