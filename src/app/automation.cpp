#include "automation.h"

#include <cmath>
#include <set>

#include "base/format.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

std::string FolderName(double seconds) {
    return base::Format("vantor-automation-%lld", std::llround(seconds * 1e9));
}

// Files first, then the folders that held them, the deepest ones first.
void RemoveFolder(base::Disk& disk, const fs::path& folder) {
    std::set<fs::path, std::greater<>> folders = {folder};
    if (const base::Result<std::vector<fs::path>> files = disk.FilesUnder(folder)) {
        for (const fs::path& file : *files) {
            (void)disk.Remove(file);
            for (fs::path above = file.parent_path(); above > folder; above = above.parent_path()) {
                folders.insert(above);
            }
        }
    }
    for (const fs::path& empty : folders) (void)disk.Remove(empty);
}

}  // namespace

TemporaryFolder::TemporaryFolder(zo::platform::System& system)
    : disk_(system.SystemDisk()),
      path_(system.TemporaryFolder() / FolderName(system.SystemClock().Seconds())) {
    (void)disk_.MakeFolders(path_);
}

TemporaryFolder::~TemporaryFolder() {
    RemoveFolder(disk_, path_);
}

}  // namespace Kest
