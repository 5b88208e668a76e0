#include <doctest/doctest.h>

#include <algorithm>

#include "base/disk.h"
#include "content/lint.h"
#include "native/system_disk.h"

// Each ticket has a folder here: `plain.lc1` is the obvious solution, `pass` holds other good
// ideas, `fail` wrong programs, each with the claim in its first line that it is held to, and
// `independent` the attempts of somebody who had only the text and the manual.

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

}  // namespace

TEST_CASE("the kept firmware passes, or fails where its first line says") {
    CHECK(BuiltIn().problems == std::vector<std::string>{});
    zo::platform::SystemDisk disk;
    const auto kept = kp::ReadSolutions(disk, KEST_SOLUTIONS);
    REQUIRE_MESSAGE(kept, kept.Message());
    for (const std::string& line : kp::LintSolutions(BuiltIn(), *kept)) FAIL_CHECK(line);
    for (const kp::Solutions& solutions : *kept) {
        CHECK_MESSAGE(solutions.fail.size() >= 3, solutions.ticket);
        CHECK_MESSAGE(!solutions.attempts.empty(), solutions.ticket);
    }
}

TEST_CASE("a starter assembles and is no solution yet") {
    kp::Session session;
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        const kp::Ticket& ticket = loaded->ticket;
        if (ticket.starter.empty()) continue;
        const kp::VerifyResult result = kp::Verify(
            ticket, loaded->reference, kp::Assemble(ticket.starter, ticket.machine), session);
        CAPTURE(ticket.id);
        CHECK_FALSE(result.tests.empty());
        CHECK_FALSE(result.AllPassed());
    }
}

TEST_CASE("a starter that is an earlier ticket's card does that ticket's work") {
    kp::Session session;
    const std::vector<const kp::LoadedTicket*> tickets = BuiltIn().Tickets();
    for (const kp::LoadedTicket* loaded : tickets) {
        const std::string& starter = loaded->ticket.starter;
        const auto names = [&](const kp::LoadedTicket* other) {
            return starter.starts_with("; a " + other->ticket.title + " card\n");
        };
        if (!starter.starts_with("; a ")) continue;
        CAPTURE(loaded->ticket.id);
        const auto earlier = std::ranges::find_if(tickets, names);
        REQUIRE(earlier != tickets.end());
        const kp::Ticket& ticket = (*earlier)->ticket;
        const kp::VerifyResult result = kp::Verify(ticket, (*earlier)->reference,
                                                   kp::Assemble(starter, ticket.machine), session);
        CHECK_MESSAGE(result.AllPassed(), result.message);
    }
}
