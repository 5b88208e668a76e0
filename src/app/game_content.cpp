#include "game_content.h"

#include <cstdio>

#include "base/disk.h"

namespace Kest {
namespace {

void PrintProblem(const std::string& line) {
    std::fprintf(stderr, "content: %s\n", line.c_str());
}

}  // namespace

kp::Content LoadGameContent(zo::platform::System& system) {
    const std::string folder = system.Environment("VANTORKEST_CONTENT").value_or("");
    const kp::ChosenStore chosen = kp::ChooseStore(system.SystemDisk(), base::TextPath(folder));
    for (const std::string& problem : chosen.problems) PrintProblem(problem);
    kp::Content content = kp::LoadContent(chosen.store);
    for (const std::string& problem : content.problems) PrintProblem(problem);
    return content;
}

}  // namespace Kest
