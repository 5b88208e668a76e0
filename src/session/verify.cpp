#include "session/verify.h"

#include <algorithm>

#include "base/format.h"
#include "peers/factory.h"

namespace kp {

using base::Failure;
using base::Format;

base::Status BeginTest(Session& session, const Ticket& ticket, std::size_t test,
                       const Program& program, const ExpectedOutput* expected) {
    auto peer = CreatePeer(ticket, test);
    if (!peer) return Failure{peer.Message()};
    session.Begin(ticket, ticket.tests[test], program, std::move(*peer), expected);
    return {};
}

base::Result<Reference> ProveReference(const Ticket& ticket, std::string_view firmware,
                                       Session& session) {
    const Assembly assembly = Assemble(firmware, ticket.machine);
    if (!assembly.errors.empty()) {
        const AssemblyError& error = assembly.errors.front();
        return Failure{Format("reference line %d: ", error.line) + error.message};
    }
    const Program program = Load(assembly, ticket.machine);
    Reference reference{{}, program.lines, 0};
    std::size_t first_silent = 0;  // counted from 1
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        if (const auto begun = BeginTest(session, ticket, k, program, nullptr); !begun) {
            return Failure{begun.Message()};
        }
        session.RunToEnd();
        if (!session.Verdict().passed) {
            return Failure{Format("reference fails test %zu: ", k + 1) + session.Verdict().message};
        }
        reference.outputs.push_back({session.Transmitted(), session.Delivered()});
        reference.ticks += session.OutputTicks();
        if (session.OutputTicks() == 0 && first_silent == 0) first_silent = k + 1;
    }
    if (first_silent > 0) return Failure{Format("test %zu produces no output", first_silent)};
    return reference;
}

VerifyRun::VerifyRun(const Ticket& ticket, const Reference& reference, const Assembly& firmware,
                     Session& session)
    : ticket_(ticket), reference_(reference), session_(session) {
    result_.total = static_cast<int>(ticket.tests.size());
    result_.lines = firmware.lines;
    if (!firmware.errors.empty()) {
        result_.message = FirstErrorText(firmware);
        finished_ = true;
    } else if (reference.outputs.size() != ticket.tests.size()) {
        result_.message = "This ticket's reference has not been prepared.";
        finished_ = true;
    } else {
        program_ = Load(firmware, ticket.machine);
        result_.tests.reserve(ticket.tests.size());
    }
}

bool VerifyRun::Run(Tick ticks) {
    while (!finished_) {
        const std::size_t test = result_.tests.size();
        if (!begun_) {
            const base::Status begun =
                BeginTest(session_, ticket_, test, program_, &reference_.outputs[test]);
            if (!begun) {
                Keep({{false, FailureKind::Short, 0, std::nullopt, begun.Message()}, 0});
                continue;
            }
            begun_ = true;
        }
        const Tick before = session_.CurrentTick();
        session_.RunUpTo(before + std::min(ticks, ticket_.max_ticks));
        if (!session_.Finished()) return true;
        ticks -= std::min(ticks, session_.CurrentTick() - before);
        Keep({session_.Verdict(), session_.OutputTicks()});
    }
    return false;
}

void VerifyRun::Keep(TestResult result) {
    begun_ = false;
    result_.tests.push_back(std::move(result));
    if (result_.tests.size() < ticket_.tests.size()) return;
    finished_ = true;
    SumUp();
}

void VerifyRun::SumUp() {
    for (std::size_t k = 0; k < result_.tests.size(); ++k) {
        const TestResult& test = result_.tests[k];
        if (test.verdict.passed) {
            ++result_.passed;
            result_.ticks += test.output_ticks;
        } else if (result_.message.empty()) {
            result_.message = TestFailureText(k, result_.tests.size(), test.verdict);
        }
    }
    if (result_.AllPassed()) {
        result_.message = Format("All %d tests pass in %u ticks with %d lines.", result_.total,
                                 result_.ticks, result_.lines);
    }
}

VerifyResult Verify(const Ticket& ticket, const Reference& reference, const Assembly& firmware,
                    Session& session) {
    VerifyRun verify(ticket, reference, firmware, session);
    while (verify.Run(ticket.max_ticks)) {
    }
    return verify.Result();
}

std::string FirstErrorText(const Assembly& firmware) {
    const AssemblyError& error = firmware.errors.front();
    return Format("Line %d: ", error.line) + error.message;
}

std::string TestFailureText(std::size_t test, std::size_t total, const Verdict& verdict) {
    return Format("Test %zu of %zu: ", test + 1, total) + verdict.message;
}

}  // namespace kp
