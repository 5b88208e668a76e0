#include <algorithm>
#include <set>

#include "base/format.h"
#include "content/lint.h"

namespace kp {
namespace {

// What one ticket's kept firmware shows.
class SolutionsLint {
public:
    SolutionsLint(const LoadedTicket& loaded, Session& session)
        : loaded_(loaded), tests_(loaded.ticket.tests), session_(session) {}

    void Plain(const KeptFirmware& plain) {
        const int lines = Pass(plain);
        const int rom = loaded_.ticket.machine.rom;
        if (rom * 10 >= lines * 13) return;
        Say(base::Format("ROM %d is under 1.3 times the %d lines of ", rom, lines) + plain.name);
    }

    // Returns the firmware's lines.
    int Pass(const KeptFirmware& firmware) {
        const VerifyResult result = Run(firmware);
        if (!result.AllPassed()) Say(firmware.name + " fails: " + result.message);
        return result.lines;
    }

    void Fail(const KeptFirmware& firmware) {
        const std::optional<Claim> claim = ReadClaim(firmware.text);
        if (!claim) {
            return Say(firmware.name + " does not begin with \"; fails <test>: <sentence>\"");
        }
        const VerifyResult result = Run(firmware);
        if (result.tests.empty()) return Say(firmware.name + " does not run: " + result.message);
        const auto failed = std::ranges::find_if(
            result.tests, [](const TestResult& test) { return !test.verdict.passed; });
        if (failed == result.tests.end()) return Say(firmware.name + " passes every test");
        const auto test = static_cast<std::size_t>(failed - result.tests.begin());
        caught_by_.insert(test);
        Compare(*claim, tests_[test].name, firmware.name, failed->verdict.message);
    }

    // A test that comes with a rule of the text must be what catches the firmware that breaks it.
    // The first test shows the task, seeded copies look for what nobody thought of, and a test that
    // sends the card nothing is the first one over again.
    void Needed() {
        for (std::size_t k = 1; k < tests_.size(); ++k) {
            const Test& test = tests_[k];
            if (test.copy > 0 || !test.HasBytes() || caught_by_.contains(k)) continue;
            Say("no wrong program fails first in \"" + test.name + '"');
        }
    }

    void Say(std::string line) { lines_.push_back(std::move(line)); }
    std::vector<std::string> TakeLines() { return std::move(lines_); }

private:
    VerifyResult Run(const KeptFirmware& firmware) {
        return Verify(loaded_.ticket, loaded_.reference,
                      Assemble(firmware.text, loaded_.ticket.machine), session_);
    }

    void Compare(const Claim& claim, const std::string& test, const std::string& name,
                 const std::string& sentence) {
        if (test != claim.test) {
            Say(name + " fails first in \"" + test + "\", not in \"" + claim.test + '"');
        } else if (sentence.find(claim.sentence) == std::string::npos) {
            Say(name + " fails with another sentence: " + sentence);
        }
    }

    const LoadedTicket& loaded_;
    const std::vector<Test>& tests_;
    Session& session_;
    std::set<std::size_t> caught_by_;  // the tests that a wrong program fails first
    std::vector<std::string> lines_;
};

const Solutions* SolutionsOf(const std::string& id, const std::vector<Solutions>& kept) {
    const auto found = std::ranges::find(kept, id, &Solutions::ticket);
    return found == kept.end() ? nullptr : &*found;
}

// Whether one of the loader's lines says why the ticket is not there.
bool HasProblem(const Content& content, const std::string& id) {
    return std::ranges::any_of(content.problems, [&](const std::string& line) {
        return line.find(id) != std::string::npos;
    });
}

std::vector<std::string> LintKept(const LoadedTicket& loaded, const Solutions& kept,
                                  Session& session) {
    SolutionsLint lint(loaded, session);
    if (kept.plain) {
        lint.Plain(*kept.plain);
    } else {
        lint.Say("plain.lc1 is missing");
    }
    for (const KeptFirmware& firmware : kept.pass) lint.Pass(firmware);
    if (!kept.attempts.empty()) lint.Pass(kept.attempts.back());
    for (const KeptFirmware& firmware : kept.fail) lint.Fail(firmware);
    if (kept.fail.empty()) {
        lint.Say("no wrong program is kept");
    } else {
        lint.Needed();
    }
    return lint.TakeLines();
}

}  // namespace

std::vector<std::string> LintSolutions(const Content& content, const std::vector<Solutions>& kept) {
    Session session;
    std::vector<std::string> lines;
    for (const LoadedTicket* loaded : content.Tickets()) {
        const std::string& id = loaded->ticket.id;
        const Solutions* solutions = SolutionsOf(id, kept);
        for (const std::string& line :
             LintKept(*loaded, solutions != nullptr ? *solutions : Solutions(), session)) {
            lines.push_back(id + ": " + line);
        }
    }
    for (const Solutions& solutions : kept) {
        if (content.FindTicket(solutions.ticket) || HasProblem(content, solutions.ticket)) continue;
        lines.push_back(solutions.ticket + ": firmware is kept for a ticket that is not there");
    }
    return lines;
}

}  // namespace kp
