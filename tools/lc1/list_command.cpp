#include <cstdio>
#include <optional>

#include "base/disk.h"
#include "campaign_text.h"
#include "commands.h"
#include "native/system_disk.h"
#include "text.h"

namespace lc1 {

Outcome RunList(const Request& request) {
    std::optional<std::vector<kp::Solutions>> kept;
    if ((request.given & kSolutions) != 0) {
        zo::platform::SystemDisk disk;
        base::Result<std::vector<kp::Solutions>> read =
            kp::ReadSolutions(disk, base::TextPath(request.solutions));
        if (!read) return Problem{read.Message()};
        kept = std::move(*read);
    }
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    PrintCampaign(content, request.colour, kept ? &*kept : nullptr);
    PutLine();
    PrintTotals(content);
    for (const std::string& problem : content.problems) {
        std::fprintf(stderr, "content: %s\n", problem.c_str());
    }
    return content.problems.empty() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
