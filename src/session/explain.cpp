#include "session/explain.h"

#include <algorithm>
#include <vector>

#include "base/format.h"

namespace kp {
namespace {

using base::Format;

// What a run did in its last quarter, and which instructions it ever completed.
struct Observation {
    std::vector<bool> ever;     // by instruction
    std::vector<bool> repeats;  // at the program counter in the last quarter
    int rx_line = 0;            // where the card waited for a byte then, 0 for nowhere
    int hin_line = 0;
    bool bytes_came = false;  // or the host handed something over
};

Observation Observe(Session& session, std::size_t size, Tick limit) {
    Observation seen{std::vector<bool>(size), std::vector<bool>(size)};
    const Tick late = limit - limit / 4;
    bool more = true;
    while (more) {
        const Tick tick = session.CurrentTick();
        const std::size_t at = session.Card().ProgramCounter();
        const std::size_t events = session.Trace().size();
        more = session.StepTick();
        const Processor& card = session.Card();
        if (card.Executed()) seen.ever[at] = true;
        if (tick < late) continue;
        seen.repeats[at] = true;
        if (card.State() == CardState::WaitingByte) seen.rx_line = card.Line();
        if (card.State() == CardState::WaitingHost) seen.hin_line = card.Line();
        for (const TraceEvent& event : session.Trace().subspan(events)) {
            const bool came =
                event.kind == Happening::Received || event.kind == Happening::ReadHost;
            seen.bytes_came = seen.bytes_came || came;
        }
    }
    return seen;
}

struct Loop {
    int first = 0;  // source lines
    int last = 0;
    bool Single() const { return first == last; }
    std::string Lines() const {
        return Single() ? Format("Line %d", first) : Format("Lines %d to %d", first, last);
    }
};

Loop FindLoop(const Observation& seen, const std::vector<Instruction>& instructions) {
    Loop loop;
    for (std::size_t k = 0; k < instructions.size(); ++k) {
        if (!seen.repeats[k]) continue;
        const int line = instructions[k].line;
        loop.first = loop.first == 0 ? line : std::min(loop.first, line);
        loop.last = std::max(loop.last, line);
    }
    return loop;
}

const Instruction* FirstThatNeverRan(const Observation& seen, Op op,
                                     const std::vector<Instruction>& instructions) {
    for (std::size_t k = 0; k < instructions.size(); ++k) {
        if (instructions[k].op == op && !seen.ever[k]) return &instructions[k];
    }
    return nullptr;
}

std::string ProducedText(Tick limit, const Session& session, const ExpectedOutput& expected) {
    const std::size_t produced = session.Transmitted().size() + session.Delivered().size();
    if (produced == 0) return Format("Your program ran %u ticks without producing output.", limit);
    return Format("Your program ran %u ticks and produced %zu of %zu expected bytes.", limit,
                  produced, expected.transmitted.size() + expected.delivered.size());
}

std::string LoopText(const Observation& seen, const Session& session,
                     const ExpectedOutput& expected, const std::vector<Instruction>& all) {
    if (seen.rx_line > 0 && !seen.bytes_came) {
        return Format("Line %d waits at rx, and no byte arrives.", seen.rx_line);
    }
    if (seen.hin_line > 0 && !seen.bytes_came) {
        return Format("Line %d waits at hin, and the host sends nothing more.", seen.hin_line);
    }
    const Loop loop = FindLoop(seen, all);
    const std::string lines = loop.Lines();
    const char* repeat = loop.Single() ? "repeats" : "repeat";
    const char* reach = loop.Single() ? "reaches" : "reach";
    const bool owes_line = session.Transmitted().size() < expected.transmitted.size();
    const Op owed = owes_line ? Op::Tx : Op::Hout;
    if (const Instruction* output = FirstThatNeverRan(seen, owed, all)) {
        return Format("%s %s, and the %s on line %d never runs.", lines.c_str(), repeat,
                      std::string(Info(owed).name).c_str(), output->line);
    }
    if (const Instruction* halt = FirstThatNeverRan(seen, Op::Halt, all)) {
        return Format("%s %s and never %s the halt on line %d.", lines.c_str(), repeat, reach,
                      halt->line);
    }
    return Format("%s %s and never %s a halt.", lines.c_str(), repeat, reach);
}

}  // namespace

std::string ExplainTickLimit(const Ticket& ticket, std::size_t test, const Assembly& firmware,
                             const Program& program, const ExpectedOutput& expected,
                             Session& session) {
    if (!BeginTest(session, ticket, test, program, &expected)) return "";
    if (firmware.instructions.empty()) return "";
    const Observation seen = Observe(session, firmware.instructions.size(), ticket.max_ticks);
    if (session.Verdict().kind != FailureKind::TickLimit) return "";
    return ProducedText(ticket.max_ticks, session, expected) + " " +
           LoopText(seen, session, expected, firmware.instructions);
}

}  // namespace kp
