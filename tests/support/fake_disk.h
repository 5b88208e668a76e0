#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/disk.h"

namespace fake {

namespace fs = std::filesystem;

// A disk in memory. A folder is there as long as a file stands beneath it.
class Disk final : public base::Disk {
public:
    std::map<fs::path, std::string> files;
    std::set<fs::path> unreadable;  // files that are there and cannot be read
    std::string full;               // when set, every write fails with this reason
    bool locked = false;            // by another program

    bool Exists(const fs::path& path) override { return files.contains(path) || IsFolder(path); }
    bool IsFolder(const fs::path& path) override { return !Beneath(path).empty(); }
    base::Result<std::vector<fs::path>> FilesUnder(const fs::path& folder) override {
        return Beneath(folder);
    }
    base::Result<std::string> Read(const fs::path& path) override {
        if (unreadable.contains(path)) return base::Failure{"Permission denied"};
        const auto found = files.find(path);
        if (found == files.end()) return base::Failure{"No such file or directory"};
        return found->second;
    }
    base::Status Write(const fs::path& path, std::string_view text) override {
        if (!full.empty()) return base::Failure{full};
        files[path] = text;
        return {};
    }
    base::Status Flush(const fs::path&) override { return {}; }
    base::Status FlushFolder(const fs::path&) override { return {}; }
    base::Status Copy(const fs::path& from, const fs::path& to) override {
        const base::Result<std::string> text = Read(from);
        if (!text) return base::Failure{text.Message()};
        return Write(to, *text);
    }
    base::Status Rename(const fs::path& from, const fs::path& to) override {
        const base::Result<std::string> text = Read(from);
        if (!text) return base::Failure{text.Message()};
        files[to] = *text;
        files.erase(from);
        return {};
    }
    base::Status Remove(const fs::path& path) override {
        files.erase(path);
        return {};
    }
    base::Status RemoveFolder(const fs::path& folder) override {
        for (const fs::path& path : Beneath(folder)) files.erase(path);
        return {};
    }
    base::Status MakeFolders(const fs::path&) override { return {}; }
    base::Result<std::unique_ptr<base::FileLock>> Lock(const fs::path&) override {
        if (locked) return std::unique_ptr<base::FileLock>();
        return std::make_unique<base::FileLock>();
    }

private:
    std::vector<fs::path> Beneath(const fs::path& folder) const {
        std::vector<fs::path> found;
        const std::string start = (folder / "").generic_string();
        for (const auto& [path, text] : files) {
            if (path.generic_string().starts_with(start)) found.push_back(path);
        }
        return found;
    }
};

}  // namespace fake
