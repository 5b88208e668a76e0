#include <cstdio>

#include "campaign_text.h"
#include "commands.h"

namespace lc1 {

Outcome RunList(const Request& request) {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    PrintCampaign(content, request.colour);
    for (const std::string& problem : content.problems) {
        std::fprintf(stderr, "content: %s\n", problem.c_str());
    }
    return content.problems.empty() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
