#include "automation.h"

#include <cmath>

#include "base/format.h"

namespace Kest {
namespace {

std::string FolderName(double seconds) {
    return base::Format("vantor-automation-%lld", std::llround(seconds * 1e9));
}

}  // namespace

TemporaryFolder::TemporaryFolder(zo::platform::System& system)
    : disk_(system.SystemDisk()),
      path_(system.TemporaryFolder() / FolderName(system.SystemClock().Seconds())) {
    (void)disk_.MakeFolders(path_);
}

TemporaryFolder::~TemporaryFolder() {
    (void)disk_.RemoveFolder(path_);
}

}  // namespace Kest
