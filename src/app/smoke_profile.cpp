#include "automation.h"
#include "base/format.h"
#include "save/achievements.h"
#include "save/settings.h"
#include "save/unlocking.h"
#include "shell/shell.h"
#include "smoke_checks.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

struct MigrationCase {
    const char* name;
    const char* settings;  // the file's text; null for none
    bool has_progress;
    const char* look;
    const char* text;
};
constexpr MigrationCase kMigrations[] = {
    {"no settings file", nullptr, false, "Modern", "Large"},
    {"progress without settings", nullptr, true, "Classic", "Large"},
    {"a version 2 file", R"({"settings_version": 2, "text_size": "normal", "theme": "green"})",
     false, "Classic", "Normal"},
    {"a version 1 file", R"({"theme": "vga", "text_size": "normal"})", false, "Classic", "Large"},
    {"an unreadable file", "not json", false, "Classic", "Large"},
};

Settings Migrated(const MigrationCase& c, base::Disk& disk, const fs::path& folder) {
    (void)disk.MakeFolders(folder);
    if (c.settings) (void)disk.Write(SettingsPath(folder), c.settings);
    if (c.has_progress) (void)disk.Write(ProgressPath(folder), R"({"version": 1})");
    return LoadSettings(disk, folder);
}

// A campaign of so many required tickets, without anything to solve.
kp::Content PlainCampaign(int tickets) {
    kp::Content content;
    kp::Shift& shift = content.shifts.emplace_back();
    for (int k = 1; k <= tickets; ++k) {
        shift.tickets.emplace_back().ticket.id = base::Format("1-%02d-ticket", k);
    }
    return content;
}

// Progress with the first tickets of such a campaign closed, each with so many hints.
Progress ClosedTickets(int count, int hints) {
    Progress progress;
    for (int k = 1; k <= count; ++k) {
        progress.tickets[base::Format("1-%02d-ticket", k)] = {
            .closed = true, .best_ticks = 1, .best_lines = 1, .hints_revealed = hints};
    }
    return progress;
}

bool EarnsNoHints(int without_hints, int with_hints) {
    Progress progress = ClosedTickets(without_hints, 0);
    progress.tickets.merge(ClosedTickets(without_hints + with_hints, 1).tickets);
    Award(PlainCampaign(without_hints + with_hints), progress);
    return progress.achievements.contains("NO_HINTS");
}

bool Lists(std::string_view id) {
    for (const Achievement& achievement : Achievements()) {
        if (achievement.id == id) return true;
    }
    return false;
}

// How many of a campaign's first tickets are open.
int OpenTickets(int closed, bool open_all) {
    const kp::Content content = PlainCampaign(6);
    const Progress progress = ClosedTickets(closed, 0);
    const Unlocking unlocking{content, progress, open_all};
    int open = 0;
    for (const kp::LoadedTicket* loaded : content.Tickets()) {
        open += unlocking.IsTicketOpen(loaded->ticket.id);
    }
    return open;
}

}  // namespace

void CheckMigration(SmokeRun& run) {
    int number = 0;
    for (const MigrationCase& c : kMigrations) {
        const fs::path folder = run.folder / base::Format("migration-%d", ++number);
        const Settings settings = Migrated(c, run.system.SystemDisk(), folder);
        const std::string look = settings.modern_look ? "Modern" : "Classic";
        const std::string text = settings.large_text ? "Large" : "Normal";
        const std::string line =
            base::Format("migration: %s gives %s, %s text, vi keys %s", c.name, look.c_str(),
                         text.c_str(), settings.vi_keys ? "on" : "off");
        run.report.Check(line, look == c.look && text == c.text && !settings.vi_keys);
    }
}

void CheckAutomation(SmokeRun& run) {
    base::Disk& disk = run.system.SystemDisk();
    const fs::path folder = run.folder / "profile";
    (void)disk.MakeFolders(folder);
    VirtualClock clock;
    Shell shell({.content = run.content,
                 .clock = clock,
                 .disk = disk,
                 .data_folder = folder,
                 .persistent = false,
                 .closed_override = 1});
    const std::size_t closed = shell.Progress().tickets.size();
    shell.SaveProgress();
    shell.ChangeSettings([](Settings& settings) { settings.crt = true; });
    shell.ResetProgress();
    if (shell.Progress().tickets.size() != closed) {
        run.report.Say(false, "Reset progress ran in automation");
    }
    const fs::path temporary = run.system.TemporaryFolder();
    const bool holds = folder.string().starts_with((temporary / "vantor-automation-").string()) &&
                       !shell.HasWindow() && !disk.Exists(ProgressPath(folder)) &&
                       !disk.Exists(SettingsPath(folder));
    run.report.Say(holds, base::Format("automation %s: temp profile, OS input ignored, no reset",
                                       holds ? "ok" : "FAILED"));
}

void CheckAchievements(SmokeRun& run) {
    constexpr std::size_t kAchievements = 20;
    run.report.Check(
        "achievement table",
        Achievements().size() == kAchievements && Lists("NO_HINTS") && !Lists("MAIL_ALL"),
        "the achievement table should list NO_HINTS and not MAIL_ALL");
    run.report.Check("NO_HINTS rule", EarnsNoHints(10, 0) && !EarnsNoHints(9, 1));
}

void CheckUnlocking(SmokeRun& run) {
    run.report.Check("unlocking", OpenTickets(0, false) == 2 && OpenTickets(1, false) == 3 &&
                                      OpenTickets(6, false) == 6 && OpenTickets(0, true) == 6);
}

}  // namespace Kest
