#include "session/verify.h"

#include "base/format.h"
#include "peers/factory.h"

namespace kp {
namespace {

using base::Failure;
using base::Format;

// The deck of one ticket under one firmware, test by test.
TestResult RunTest(Session& session, const Ticket& ticket, std::size_t test, const Program& program,
                   const ExpectedOutput& expected) {
    const base::Status begun = BeginTest(session, ticket, test, program, &expected);
    if (!begun) return {{false, FailureKind::Short, 0, std::nullopt, begun.Message()}, 0};
    session.RunToEnd();
    return {session.Verdict(), session.OutputTicks()};
}

void SumUp(VerifyResult& result) {
    for (std::size_t k = 0; k < result.tests.size(); ++k) {
        const TestResult& test = result.tests[k];
        if (test.verdict.passed) {
            ++result.passed;
            result.ticks += test.output_ticks;
        } else if (result.message.empty()) {
            result.message = TestFailureText(k, result.tests.size(), test.verdict);
        }
    }
    if (result.AllPassed()) {
        result.message = Format("All %d tests pass in %u ticks with %d lines.", result.total,
                                result.ticks, result.lines);
    }
}

}  // namespace

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

VerifyResult Verify(const Ticket& ticket, const Reference& reference, const Assembly& firmware,
                    Session& session) {
    VerifyResult result;
    result.total = static_cast<int>(ticket.tests.size());
    result.lines = firmware.lines;
    if (!firmware.errors.empty()) {
        result.message = FirstErrorText(firmware);
        return result;
    }
    if (reference.outputs.size() != ticket.tests.size()) {
        result.message = "This ticket's reference has not been prepared.";
        return result;
    }
    const Program program = Load(firmware, ticket.machine);
    result.tests.reserve(ticket.tests.size());
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        result.tests.push_back(RunTest(session, ticket, k, program, reference.outputs[k]));
    }
    SumUp(result);
    return result;
}

std::string FirstErrorText(const Assembly& firmware) {
    const AssemblyError& error = firmware.errors.front();
    return Format("Line %d: ", error.line) + error.message;
}

std::string TestFailureText(std::size_t test, std::size_t total, const Verdict& verdict) {
    return Format("Test %zu of %zu: ", test + 1, total) + verdict.message;
}

}  // namespace kp
