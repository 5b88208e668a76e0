#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "card/assembler.h"
#include "session/session.h"
#include "ticket/ticket.h"

namespace kp {

struct TestResult {
    Verdict verdict;
    Tick output_ticks = 0;  // the tick after the test's last output
};

// A whole deck's results and the two scores.
struct VerifyResult {
    std::vector<TestResult> tests;  // empty when the firmware does not assemble
    int total = 0;                  // tests of the deck
    int passed = 0;
    int lines = 0;
    Tick ticks = 0;       // the passing tests' output ticks, summed
    std::string message;  // the summary

    bool AllPassed() const { return total > 0 && passed == total; }
};

// A reference's outputs, one a test, and its scores, which are the ticket's par.
struct Reference {
    std::vector<ExpectedOutput> outputs;
    int lines = 0;
    Tick ticks = 0;
};

// Runs the reference over every test in recording mode. The failure is one line without the
// ticket's id, such as "reference line 3: ..." or "test 2 produces no output".
base::Result<Reference> ProveReference(const Ticket& ticket, std::string_view firmware,
                                       Session& session);

// Begins a session on one test, far end included. Fails, with CreatePeer's line, only when the far
// end's settings cannot be read.
base::Status BeginTest(Session& session, const Ticket& ticket, std::size_t test,
                       const Program& program, const ExpectedOutput* expected);

// A verify that is done in slices: every test of the deck in order, also after one has failed. What
// it is made from must outlive it.
class VerifyRun {
public:
    VerifyRun(const Ticket& ticket, const Reference& reference, const Assembly& firmware,
              Session& session);

    // Runs this many ticks more, or a few more than that. False once the whole deck has run.
    bool Run(Tick ticks);
    bool Finished() const { return finished_; }
    // The tests that have run so far; with the summary once the deck has.
    const VerifyResult& Result() const { return result_; }

private:
    void Keep(TestResult result);
    void SumUp();

    const Ticket& ticket_;
    const Reference& reference_;
    Session& session_;
    Program program_;
    bool begun_ = false;  // the session is on the test behind those that have run
    bool finished_ = false;
    VerifyResult result_;
};

// The same in one go.
VerifyResult Verify(const Ticket& ticket, const Reference& reference, const Assembly& firmware,
                    Session& session);

// The summary's pieces: "Line 3: ..." of a firmware with errors, and "Test 2 of 6: ...".
std::string FirstErrorText(const Assembly& firmware);
std::string TestFailureText(std::size_t test, std::size_t total, const Verdict& verdict);

}  // namespace kp
