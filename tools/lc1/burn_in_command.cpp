#include "commands.h"
#include "json_line.h"
#include "session/burn_in.h"
#include "subject.h"
#include "text.h"
#include "verdict.h"

namespace lc1 {
namespace {

void WriteJson(const kp::BurnIn& burn_in) {
    JsonLine out;
    out.Number("seeds", static_cast<int>(burn_in.Draws()));
    out.Number("passed", static_cast<int>(burn_in.Passed()));
    if (const auto& miss = burn_in.FirstMiss()) {
        out.Object("first");
        out.Number("seed", static_cast<int>(miss->draw));
        out.Text("name", miss->test.name);
        out.Text("message", miss->verdict.message);
        out.End();
    }
    out.Text("message", kp::BurnInText(burn_in));
}

}  // namespace

Outcome RunBurnIn(const Request& request) {
    kp::Session session;
    Subject subject;
    if (std::optional<Problem> problem = LoadSubject(request, subject, session)) return *problem;
    if (!subject.firmware.errors.empty()) return Problem{kp::FirstErrorText(subject.firmware)};
    if (!kp::BurnIn::Suits(subject.ticket)) {
        return Problem{"no test of " + subject.ticket.id + " is drawn from a seed"};
    }
    kp::BurnIn burn_in(subject.ticket, subject.reference_text, subject.firmware,
                       static_cast<std::uint32_t>(request.seeds));
    while (burn_in.Run(subject.ticket.max_ticks)) {
    }
    if (request.json) {
        WriteJson(burn_in);
    } else {
        PutLine(kp::BurnInText(burn_in));
    }
    return burn_in.Passed() == burn_in.Draws() ? ExitCode::Pass : ExitCode::Fail;
}

}  // namespace lc1
