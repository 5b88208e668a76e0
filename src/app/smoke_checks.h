#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "content/content.h"
#include "outside/outside.h"

namespace Kest {

// Says how each check went, counts what failed, and keeps an eye on the time.
class SmokeReport {
public:
    SmokeReport(zo::platform::Clock& clock, const std::function<void(std::string_view line)>& say)
        : clock_(clock), say_(say), started_(clock.Seconds()) {}

    // "<subject>: ok" or "<subject>: FAILED", or the complaint in place of the latter.
    void Check(const std::string& subject, bool holds, const std::string& complaint = {});
    // A line as it is.
    void Say(bool holds, const std::string& line);
    // Says so, once, when the run has taken too long.
    bool TimedOut();
    int ExitCode() const { return failed_ == 0 ? 0 : 1; }

private:
    zo::platform::Clock& clock_;
    const std::function<void(std::string_view line)>& say_;
    double started_;
    int failed_ = 0;
    bool timed_out_ = false;
};

struct SmokeRun {
    const kp::Content& content;
    zo::platform::System& system;
    const std::filesystem::path& folder;  // the run's own
    SmokeReport& report;
};

// The checks, a group each (smoke_content.cpp, smoke_display.cpp, smoke_profile.cpp and
// smoke_walk.cpp).
void CheckTickets(SmokeRun& run);
void CheckReferences(SmokeRun& run);
void CheckFailureMessages(SmokeRun& run);
void CheckBinder(SmokeRun& run);
void CheckCoaching(SmokeRun& run);
void CheckSongs(SmokeRun& run);
void CheckFont(SmokeRun& run);
void CheckGrids(SmokeRun& run);
void CheckWrapping(SmokeRun& run);
void CheckMigration(SmokeRun& run);
void CheckAutomation(SmokeRun& run);
void CheckAchievements(SmokeRun& run);
void CheckUnlocking(SmokeRun& run);
void CheckStages(SmokeRun& run);
void CheckViKeys(SmokeRun& run);
void CheckWalk(SmokeRun& run);

}  // namespace Kest
