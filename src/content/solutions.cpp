#include "content/solutions.h"

#include <map>

namespace kp {
namespace {

namespace fs = std::filesystem;

// Puts the firmware where its name below the ticket's folder says; another name has no place.
void Keep(Solutions& solutions, KeptFirmware firmware) {
    if (firmware.name == "plain.lc1") {
        solutions.plain = std::move(firmware);
    } else if (firmware.name.starts_with("pass/")) {
        solutions.pass.push_back(std::move(firmware));
    } else if (firmware.name.starts_with("fail/")) {
        solutions.fail.push_back(std::move(firmware));
    } else if (firmware.name.starts_with("independent/")) {
        solutions.attempts.push_back(std::move(firmware));
    }
}

}  // namespace

base::Result<std::vector<Solutions>> ReadSolutions(base::Disk& disk, const fs::path& folder) {
    const std::string unread = "cannot read " + base::PathText(folder);
    const base::Result<std::vector<fs::path>> files = disk.FilesUnder(folder);
    if (!disk.IsFolder(folder) || !files) return base::Failure{unread};
    std::map<std::string, Solutions> tickets;
    for (const fs::path& file : *files) {
        const std::string name = base::NameBelow(folder, file);
        const std::size_t slash = name.find('/');
        if (slash == std::string::npos || file.extension() != ".lc1") continue;
        base::Result<std::string> text = disk.Read(file);
        if (!text) return base::Failure{"cannot read " + base::PathText(file)};
        Solutions& solutions = tickets[name.substr(0, slash)];
        Keep(solutions, {name.substr(slash + 1), std::move(*text)});
    }
    std::vector<Solutions> kept;
    for (auto& [ticket, solutions] : tickets) {
        solutions.ticket = ticket;
        kept.push_back(std::move(solutions));
    }
    return kept;
}

std::optional<Claim> ReadClaim(std::string_view firmware) {
    constexpr std::string_view kOpening = "; fails ";
    const std::string_view line = firmware.substr(0, firmware.find('\n'));
    const std::size_t colon = line.find(": ");
    if (!line.starts_with(kOpening) || colon == std::string_view::npos) return std::nullopt;
    Claim claim{std::string(line.substr(kOpening.size(), colon - kOpening.size())),
                std::string(line.substr(colon + 2))};
    if (claim.test.empty() || claim.sentence.empty()) return std::nullopt;
    return claim;
}

}  // namespace kp
