#include "native/system_disk.h"

#include <algorithm>
#include <cstdio>
#include <system_error>

#include "files.h"

namespace zo::platform {
namespace {

namespace fs = std::filesystem;

base::Status Check(const std::error_code& error) {
    if (error) return base::Failure{error.message()};
    return {};
}

}  // namespace

bool SystemDisk::Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool SystemDisk::IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

base::Result<std::vector<fs::path>> SystemDisk::FilesUnder(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;  // of an entry that is gone by now, which is no file
        if (entry->is_regular_file(unknown)) files.push_back(entry->path());
    }
    if (error) return base::Failure{error.message()};
    std::sort(files.begin(), files.end());
    return files;
}

base::Result<std::string> SystemDisk::Read(const fs::path& path) {
    if (IsFolder(path)) return base::Failure{"Is a directory"};
    const File file = OpenFile(path, "rb");
    if (!file) return LastError();
    std::string text;
    char chunk[16384];
    while (const std::size_t got = std::fread(chunk, 1, sizeof chunk, file.get())) {
        text.append(chunk, got);
    }
    if (std::ferror(file.get())) return LastError();
    return text;
}

base::Status SystemDisk::Write(const fs::path& path, std::string_view text) {
    File file = OpenFile(path, "wb");
    if (!file) return LastError();
    // An empty view may have no data at all, which fwrite does not take.
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), file.get()) != text.size()) {
        return LastError();
    }
    if (std::fclose(file.release()) != 0) return LastError();
    return {};
}

base::Status SystemDisk::Copy(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return Check(error);
}

base::Status SystemDisk::Remove(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    return Check(error);
}

base::Status SystemDisk::RemoveFolder(const fs::path& folder) {
    std::error_code error;
    fs::remove_all(folder, error);
    return Check(error);
}

base::Status SystemDisk::MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return Check(error);
}

}  // namespace zo::platform
