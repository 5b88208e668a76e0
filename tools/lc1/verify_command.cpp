#include <algorithm>

#include "base/format.h"
#include "commands.h"
#include "json_line.h"
#include "subject.h"
#include "text.h"
#include "verdict.h"

namespace lc1 {
namespace {

void WriteJson(const kp::Ticket& ticket, const kp::VerifyResult& result) {
    JsonLine out;
    out.Array("tests");
    for (std::size_t k = 0; k < result.tests.size(); ++k) {
        out.Object();
        out.Text("name", ticket.tests[k].name);
        WriteVerdict(out, result.tests[k].verdict, result.tests[k].output_ticks);
        out.End();
    }
    out.End();
    out.Number("passed", result.passed);
    out.Number("total", result.total);
    out.Number("lines", result.lines);
    out.Number("ticks", result.ticks);
    out.Text("message", result.message);
}

void PrintTests(const kp::Ticket& ticket, const kp::VerifyResult& result, bool colour) {
    TextTable table({{}, {}, {"", TextTable::Align::Right}});
    for (std::size_t k = 0; k < result.tests.size(); ++k) {
        const kp::TestResult& test = result.tests[k];
        if (test.verdict.passed) {
            table.Add({std::string(kPassMark), ticket.tests[k].name,
                       base::Format("%u ticks", test.output_ticks)},
                      Ink::Good);
        } else {
            table.Add({std::string(kFailMark), ticket.tests[k].name, "failed"}, Ink::Bad);
        }
    }
    table.Print(colour);
    PutLine();
}

void PrintText(const Subject& subject, const kp::VerifyResult& result, kp::Session& session,
               bool colour) {
    if (!result.tests.empty()) PrintTests(subject.ticket, result, colour);
    PutLine(result.message);
    const auto failed = std::find_if(result.tests.begin(), result.tests.end(),
                                     [](const kp::TestResult& t) { return !t.verdict.passed; });
    if (failed != result.tests.end()) {
        PrintExplanation(subject, static_cast<std::size_t>(failed - result.tests.begin()),
                         failed->verdict, session);
        PutLine(base::Format("%d of %d passed.", result.passed, result.total));
    } else if (result.AllPassed()) {
        PutLine(base::Format("The reference takes %u ticks with %d lines.", subject.reference.ticks,
                             subject.reference.lines));
    }
}

}  // namespace

Outcome RunVerify(const Request& request) {
    kp::Session session;
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject, session)) return *problem;
    const kp::VerifyResult result =
        kp::Verify(subject.ticket, subject.reference, subject.firmware, session);
    if (request.json) {
        WriteJson(subject.ticket, result);
    } else {
        PrintText(subject, result, session, request.colour);
    }
    return result.AllPassed() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
