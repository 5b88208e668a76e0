#include "base/format.h"
#include "commands.h"
#include "conversation.h"
#include "json_line.h"
#include "subject.h"
#include "text.h"
#include "ticket/labels.h"
#include "verdict.h"

namespace lc1 {
namespace {

void WriteTrace(JsonLine& out, const kp::Session& session) {
    out.Array("trace");
    for (const kp::TraceEvent& event : session.Trace()) {
        out.Object();
        out.Number("tick", event.tick);
        out.Number("kind", static_cast<int>(event.kind));
        out.Number("value", event.value);
        out.Number("index", event.index);
        out.Number("line", event.line);
        out.End();
    }
    out.End();
}

void WriteFarEnd(JsonLine& out, const kp::Session& session) {
    out.Array("windows");
    for (const kp::TimingWindow& window : session.Windows()) {
        out.Object();
        out.Number("kind", static_cast<int>(window.kind));
        out.Number("from", window.from);
        out.Number("until", window.until);
        out.Text("what", window.what);
        out.End();
    }
    out.End();
    out.Array("notes");
    for (const kp::FarEndNote& note : session.Notes()) {
        out.Object();
        out.Number("tick", note.tick);
        out.Text("text", note.text);
        out.End();
    }
    out.End();
}

void WriteCard(JsonLine& out, const kp::Processor& card, const kp::CardConfig& config) {
    constexpr int kListed[] = {kp::kA, kp::kB, kp::kC, kp::kD, kp::kCrc};
    out.Object("card");
    out.Text("state", kp::StateName(card.State()));
    out.Number("line", card.Line());
    for (const int number : kListed) {
        // The crc register starts at $FFFF, also where no engine is fitted that could change it.
        const bool fitted = number != kp::kCrc || config.crc;
        out.Number(kp::kRegisterNames[static_cast<std::size_t>(number)],
                   fitted ? card.RegisterValue(number) : 0);
    }
    out.Numbers("ram", card.Ram());
    out.End();
}

void WriteJson(const kp::Session& session, const kp::ExpectedOutput& expected) {
    JsonLine out;
    WriteVerdict(out, session.Verdict(), session.OutputTicks());
    out.Number("end_tick", static_cast<std::int64_t>(session.CurrentTick()) - 1);
    out.Numbers("transmitted", session.Transmitted());
    out.Numbers("delivered", session.Delivered());
    out.Object("expected");
    out.Numbers("transmitted", expected.transmitted);
    out.Numbers("delivered", expected.delivered);
    out.Texts("places", kp::LabelStream(expected.transmitted, session.RunTicket().frame));
    out.End();
    WriteTrace(out, session);
    WriteFarEnd(out, session);
    WriteCard(out, session.Card(), session.RunTicket().machine);
}

Outcome WriteErrors(const kp::Assembly& assembly, bool as_json) {
    const std::string message = kp::FirstErrorText(assembly);
    if (as_json) {
        JsonLine out;
        out.Text("outcome", "error");
        out.Text("message", message);
    } else {
        PutLine(message);
    }
    return ExitCode::Fail;
}

void PrintVerdict(const kp::Session& session, bool colour) {
    const kp::Verdict& verdict = session.Verdict();
    if (verdict.passed) {
        PutLine(Inked(kPassMark, Ink::Good, colour) +
                base::Format(" passed in %u ticks", session.OutputTicks()));
    } else {
        PutLine(Inked(kFailMark, Ink::Bad, colour) + ' ' + verdict.message);
    }
}

void PrintText(const Subject& subject, std::size_t test, kp::Session& session, bool colour) {
    const std::vector<kp::Test>& tests = subject.ticket.tests;
    PutLine(base::Format("Test %zu of %zu: ", test + 1, tests.size()) + tests[test].name);
    PutLine();
    PrintConversation(session, colour);
    PutLine();
    PrintVerdict(session, colour);
    // The explanation runs the session anew, so it gets the verdict as it was.
    const kp::Verdict verdict = session.Verdict();
    PrintExplanation(subject, test, verdict, session);
}

}  // namespace

Outcome RunTest(const Request& request) {
    kp::Session session;
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject, session)) return *problem;
    const std::size_t test = static_cast<std::size_t>(request.test) - 1;
    const std::size_t tests = subject.ticket.tests.size();
    if (test >= tests) {
        return Problem{base::Format("there is no test %zu; the ticket has %zu", test + 1, tests)};
    }
    if (!subject.firmware.errors.empty()) return WriteErrors(subject.firmware, request.json);
    const kp::Program program = kp::Load(subject.firmware, subject.ticket.machine);
    const kp::ExpectedOutput& expected = subject.reference.outputs[test];
    const base::Status begun = kp::BeginTest(session, subject.ticket, test, program, &expected);
    if (!begun) return Problem{begun.Message()};
    session.RunToEnd();
    const bool passed = session.Verdict().passed;
    if (request.json) {
        WriteJson(session, expected);
    } else {
        PrintText(subject, test, session, request.colour);
    }
    return passed ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
