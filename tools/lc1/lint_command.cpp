#include "base/disk.h"
#include "commands.h"
#include "content/lint.h"
#include "native/system_disk.h"
#include "text.h"

namespace lc1 {

Outcome RunLint(const Request& request) {
    zo::platform::SystemDisk disk;
    base::Result<kp::ContentStore> store = kp::ContentStore::BuiltIn();
    if (!request.files.empty()) {
        store = kp::ContentStore::FromFolder(disk, base::TextPath(request.files.front()));
        if (!store) return FirstProblem(store.Message());
    }
    std::optional<std::vector<kp::Solutions>> kept;
    if ((request.given & kSolutions) != 0) {
        base::Result<std::vector<kp::Solutions>> read =
            kp::ReadSolutions(disk, base::TextPath(request.solutions));
        if (!read) return Problem{read.Message()};
        kept = std::move(*read);
    }
    const std::vector<std::string> lines = kp::Lint(*store, kept ? &*kept : nullptr);
    for (const std::string& line : lines) PutLine(line);
    return lines.empty() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
