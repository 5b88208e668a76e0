#include "verdict.h"

#include "session/explain.h"
#include "text.h"

namespace lc1 {

void WriteVerdict(JsonLine& out, const kp::Verdict& verdict, kp::Tick output_ticks) {
    out.Text("outcome", verdict.passed ? "pass" : "fail");
    if (verdict.passed) {
        out.Null("kind");
        out.Null("tick");
    } else {
        out.Text("kind", kp::FailureWord(verdict.kind));
        out.Number("tick", verdict.tick);
    }
    if (verdict.line) {
        out.Number("line", *verdict.line);
    } else {
        out.Null("line");
    }
    out.Text("message", verdict.message);
    out.Number("ticks_score", output_ticks);
}

void PrintExplanation(const Subject& subject, std::size_t test, const kp::Verdict& verdict,
                      kp::Session& session) {
    if (verdict.kind != kp::FailureKind::TickLimit) return;
    const kp::Program program = kp::Load(subject.firmware, subject.ticket.machine);
    PutLine(kp::ExplainTickLimit(subject.ticket, test, subject.firmware, program,
                                 subject.reference.outputs[test], session));
}

}  // namespace lc1
