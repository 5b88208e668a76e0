#include "base/disk.h"

namespace base {
namespace fs = std::filesystem;

std::string PathText(const fs::path& path) {
    const std::u8string text = fs::path(path).make_preferred().u8string();
    return {text.begin(), text.end()};
}

fs::path TextPath(std::string_view text) {
    return {std::u8string(text.begin(), text.end())};
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
