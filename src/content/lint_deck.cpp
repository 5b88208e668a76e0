#include <algorithm>
#include <tuple>

#include "base/format.h"
#include "json/writer.h"
#include "lint_parts.h"

namespace kp {
namespace {

constexpr Tick kHeadroom = 5;  // times the slowest reference run

auto Bare(const HostMessage& message) {
    return std::tie(message.at, message.bytes);
}
auto Bare(const LineEntry& entry) {
    return std::tie(entry.at, entry.gap, entry.reply_within, entry.bytes);
}
auto Bare(const Reply& reply) {
    return std::tie(reply.after, reply.send, reply.delay);
}

template <class Item>
bool Same(const std::vector<Item>& left, const std::vector<Item>& right) {
    return std::ranges::equal(left, right,
                              [](const Item& a, const Item& b) { return Bare(a) == Bare(b); });
}

// Whether the card cannot tell the tests apart: they differ in names and labels at most.
bool Same(const Test& left, const Test& right) {
    return Same(left.host, right.host) && Same(left.rx, right.rx) && left.frames == right.frames &&
           Same(left.replies, right.replies) &&
           json::Write(left.peer, 0) == json::Write(right.peer, 0);
}

// A card that nothing reaches has the same test every time.
void LintCopies(const std::vector<Test>& tests, std::vector<std::string>& lines) {
    for (auto test = tests.begin(); test != tests.end(); ++test) {
        const auto earlier = std::find_if(tests.begin(), test,
                                          [&](const Test& other) { return Same(other, *test); });
        if (earlier == test || !test->HasBytes()) continue;
        lines.push_back("tests \"" + earlier->name + "\" and \"" + test->name +
                        "\" have the same bytes");
    }
}

Tick SlowestRun(const LoadedTicket& loaded, Session& session) {
    const Program program =
        Load(Assemble(loaded.reference_text, loaded.ticket.machine), loaded.ticket.machine);
    Tick slowest = 0;
    for (std::size_t k = 0; k < loaded.ticket.tests.size(); ++k) {
        if (!BeginTest(session, loaded.ticket, k, program, &loaded.reference.outputs[k])) continue;
        session.RunToEnd();
        slowest = std::max(slowest, session.CurrentTick());
    }
    return slowest;
}

}  // namespace

std::vector<std::string> LintDeck(const LoadedTicket& loaded, Session& session) {
    std::vector<std::string> lines;
    LintCopies(loaded.ticket.tests, lines);
    const Tick slowest = SlowestRun(loaded, session);
    if (loaded.ticket.max_ticks < kHeadroom * slowest) {
        lines.push_back(
            base::Format("max_ticks is %u, under five times the slowest reference run of %u ticks",
                         loaded.ticket.max_ticks, slowest));
    }
    return lines;
}

}  // namespace kp
