#include <algorithm>
#include <string_view>

#include "base/format.h"
#include "bench/coach_keys.h"
#include "content/lint.h"
#include "music/hum_song.h"
#include "music/song_texts.h"
#include "music/sound_engine.h"
#include "session/explain.h"
#include "smoke_checks.h"

namespace Kest {
namespace {

constexpr std::size_t kTickets = 42;  // of the whole campaign
constexpr std::size_t kPages = 58;    // of the binder
constexpr std::size_t kCoached = 7;   // tickets with a coach
constexpr int kSongs = 8;

// Firmware that passes no ticket: every reference sends or delivers something, and ends or waits.
constexpr std::string_view kSilent = "       halt\n";
constexpr std::string_view kEndless = "again: jmp again\n";

bool IsReason(const kp::Content& content, const std::string& problem) {
    return std::ranges::any_of(content.left_out, [&](const kp::LeftOut& ticket) {
        return problem == ticket.reason || problem == ticket.id + ": " + ticket.reason;
    });
}

// Whole sentences, no part of which was left empty.
bool IsWhole(std::string_view text) {
    return text.size() > 1 && text.front() >= 'A' && text.front() <= 'Z' && text.back() == '.' &&
           text.find("  ") == std::string_view::npos;
}

// What the player would read of this firmware on this ticket's first test; empty when that is fine.
std::string ComplaintAbout(const kp::LoadedTicket& loaded, std::string_view firmware,
                           kp::Session& session) {
    const kp::Assembly assembly = kp::Assemble(firmware, loaded.ticket.machine);
    const kp::VerifyResult result = kp::Verify(loaded.ticket, loaded.reference, assembly, session);
    if (result.tests.empty() || result.AllPassed()) return "it passes: " + result.message;
    const kp::Verdict& verdict = result.tests.front().verdict;
    if (verdict.passed) return "its first test passes";
    if (!IsWhole(verdict.message)) return verdict.message;
    if (verdict.kind != kp::FailureKind::TickLimit) return {};
    const kp::Program program = kp::Load(assembly, loaded.ticket.machine);
    const std::string explained = kp::ExplainTickLimit(loaded.ticket, 0, assembly, program,
                                                       loaded.reference.outputs.front(), session);
    return IsWhole(explained) ? std::string() : "the tick limit is not explained: " + explained;
}

// Each problem is a line of its own, as it stands.
void CheckLines(SmokeRun& run, const std::string& subject, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) run.report.Say(false, line);
    if (lines.empty()) run.report.Check(subject, true);
}

}  // namespace

void CheckTickets(SmokeRun& run) {
    const std::size_t embedded = run.content.Tickets().size();
    run.report.Check(base::Format("%zu tickets embedded", embedded), embedded == kTickets,
                     base::Format("%zu tickets embedded, expected %zu", embedded, kTickets));
    for (const std::string& problem : run.content.problems) {
        if (!IsReason(run.content, problem)) run.report.Say(false, "content: " + problem);
    }
}

void CheckReferences(SmokeRun& run) {
    for (const kp::LeftOut& ticket : run.content.left_out) {
        run.report.Say(false, ticket.id + " reference: FAILED, " + ticket.reason);
    }
    kp::Session session;
    for (const kp::LoadedTicket* loaded : run.content.Tickets()) {
        if (run.report.TimedOut()) return;
        const kp::Assembly assembly = kp::Assemble(loaded->reference_text, loaded->ticket.machine);
        const kp::VerifyResult result =
            kp::Verify(loaded->ticket, loaded->reference, assembly, session);
        const std::string subject = loaded->ticket.id + " reference";
        run.report.Check(subject, result.AllPassed(), subject + ": FAILED, " + result.message);
    }
}

void CheckFailureMessages(SmokeRun& run) {
    kp::Session session;
    for (const kp::LoadedTicket* loaded : run.content.Tickets()) {
        if (run.report.TimedOut()) return;
        std::string complaint = ComplaintAbout(*loaded, kSilent, session);
        if (complaint.empty()) complaint = ComplaintAbout(*loaded, kEndless, session);
        const std::string subject = loaded->ticket.id + " failure messages";
        run.report.Check(subject, complaint.empty(), subject + ": FAILED, " + complaint);
    }
}

void CheckBinder(SmokeRun& run) {
    const std::size_t pages = run.content.pages.size();
    run.report.Check(base::Format("%zu binder pages", pages), pages == kPages,
                     base::Format("%zu binder pages, expected %zu", pages, kPages));
    std::vector<std::string> lines = kp::LintBinderWhole(run.content);
    for (std::string& line : kp::LintBinder(run.content)) lines.push_back(std::move(line));
    CheckLines(run, "binder pages that tickets name, and links", lines);
}

void CheckCoaching(SmokeRun& run) {
    const std::size_t coached = run.content.coach.size();
    run.report.Check(base::Format("%zu coached tickets", coached), coached == kCoached,
                     base::Format("%zu coached tickets, expected %zu", coached, kCoached));
    std::vector<std::string> lines = kp::LintCoach(run.content);
    for (std::string& line : LintCoachKeys(run.content)) lines.push_back(std::move(line));
    CheckLines(run, "coaching lines", lines);
}

// The songs are only made ready, not played, so that they need no instruments.
void CheckSongs(SmokeRun& run) {
    const auto instruments = std::make_shared<const hum::Instruments>();
    int embedded = 0;
    for (const SongName& name : SongNames()) {
        const base::Result<Song> song = MakeSong(name.key, SongSource(name.key), instruments);
        if (song)
            ++embedded;
        else
            run.report.Say(false, "song " + song.Message());
    }
    run.report.Check(base::Format("%d songs embedded", embedded), embedded == kSongs,
                     base::Format("%d songs embedded, expected %d", embedded, kSongs));
}

}  // namespace Kest
