#include "smoke.h"

#include "automation.h"
#include "smoke_checks.h"

namespace Kest {
namespace {

constexpr double kMostSeconds = 60;

constexpr void (*kChecks[])(SmokeRun& run) = {
    CheckTickets,    CheckReferences,   CheckFailureMessages, CheckSongs,    CheckBinder,
    CheckCoaching,   CheckFont,         CheckGrids,           CheckWrapping, CheckMigration,
    CheckAutomation, CheckAchievements, CheckUnlocking,       CheckStages,   CheckViKeys,
    CheckWalk,
};

}  // namespace

void SmokeReport::Check(const std::string& subject, bool holds, const std::string& complaint) {
    if (holds) {
        Say(true, subject + ": ok");
    } else {
        Say(false, complaint.empty() ? subject + ": FAILED" : complaint);
    }
}

void SmokeReport::Say(bool holds, const std::string& line) {
    if (!holds) ++failed_;
    say_(line);
}

bool SmokeReport::TimedOut() {
    if (!timed_out_ && clock_.Seconds() - started_ > kMostSeconds) {
        timed_out_ = true;
        Say(false, "timed out");
    }
    return timed_out_;
}

int RunSmoke(const kp::Content& content, zo::platform::System& system,
             const std::function<void(std::string_view line)>& say) {
    const TemporaryFolder folder(system);
    SmokeReport report(system.SystemClock(), say);
    SmokeRun run = {content, system, folder.Path(), report};
    for (const auto check : kChecks) {
        if (report.TimedOut()) break;
        check(run);
    }
    return report.ExitCode();
}

}  // namespace Kest
