#include "game_content.h"

#include <cstdio>

namespace Kest {
namespace {

void PrintProblems(std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        std::fprintf(stderr, "content: %.*s\n", static_cast<int>(end), lines.data());
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
}

kp::ContentStore OpenStore(zo::platform::System& system) {
    const std::optional<std::string> folder = system.Environment("VANTORKEST_CONTENT");
    if (!folder || folder->empty()) return kp::ContentStore::BuiltIn();
    base::Result<kp::ContentStore> store =
        kp::ContentStore::FromFolder(system.SystemDisk(), *folder);
    if (store) return std::move(*store);
    PrintProblems(store.Message());
    return kp::ContentStore::BuiltIn();
}

}  // namespace

kp::Content LoadGameContent(zo::platform::System& system) {
    kp::Content content = kp::LoadContent(OpenStore(system));
    for (const std::string& problem : content.problems) PrintProblems(problem);
    return content;
}

}  // namespace Kest
