#include <doctest/doctest.h>

#include <algorithm>

#include "base/disk.h"
#include "base/format.h"
#include "content/lint.h"
#include "native/system_disk.h"
#include "session/burn_in.h"
#include "support/rounds.h"

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

namespace {

// Everything kept of a ticket that passes its deck.
std::vector<kp::KeptFirmware> Passing(const kp::LoadedTicket& loaded,
                                      const kp::Solutions& solutions) {
    std::vector<kp::KeptFirmware> passing = solutions.pass;
    passing.push_back({"reference", loaded.reference_text});
    if (solutions.plain) passing.push_back(*solutions.plain);
    if (!solutions.attempts.empty()) passing.push_back(solutions.attempts.back());
    return passing;
}

}  // namespace

// A seed that a correct card cannot handle is a fault of the ticket.
TEST_CASE("what solves a ticket passes its burn-in") {
    const auto draws = static_cast<std::uint32_t>(support::Rounds(10));
    zo::platform::SystemDisk disk;
    const auto kept = kp::ReadSolutions(disk, KEST_SOLUTIONS);
    REQUIRE_MESSAGE(kept, kept.Message());
    int suited = 0;
    for (const kp::Solutions& solutions : *kept) {
        const kp::LoadedTicket& loaded = *BuiltIn().FindTicket(solutions.ticket);
        suited += kp::BurnIn::Suits(loaded.ticket) ? 1 : 0;
        for (const kp::KeptFirmware& firmware : Passing(loaded, solutions)) {
            CAPTURE(solutions.ticket);
            CAPTURE(firmware.name);
            kp::BurnIn burn_in(loaded.ticket, loaded.reference_text,
                               kp::Assemble(firmware.text, loaded.ticket.machine), draws);
            while (burn_in.Run(loaded.ticket.max_ticks)) {
            }
            CHECK_MESSAGE(burn_in.Passed() == burn_in.Draws(), kp::BurnInText(burn_in));
        }
    }
    CHECK(suited > 30);
}

// Knows the outputs of one seeded test of the deck by heart.
std::string Reciter(const kp::LoadedTicket& loaded, std::size_t test) {
    std::string text;
    const kp::ExpectedOutput& output = loaded.reference.outputs[test];
    for (const std::uint8_t byte : output.transmitted) text += base::Format("tx %d\n", byte);
    for (const std::uint8_t byte : output.delivered) text += base::Format("hout %d\n", byte);
    return text + "halt\n";
}

TEST_CASE("a card that knows a test by heart does not pass a burn-in") {
    for (const kp::LoadedTicket* loaded : BuiltIn().Tickets()) {
        kp::Ticket ticket = loaded->ticket;
        ticket.machine.rom = 60000;
        for (std::size_t test = 0; test < ticket.tests.size(); ++test) {
            if (!ticket.tests[test].seeded) continue;
            CAPTURE(ticket.id);
            CAPTURE(test);
            const kp::Assembly firmware = kp::Assemble(Reciter(*loaded, test), ticket.machine);
            REQUIRE(firmware.errors.empty());
            kp::BurnIn burn_in(ticket, loaded->reference_text, firmware, 5);
            while (burn_in.Run(ticket.max_ticks)) {
            }
            CHECK(burn_in.Passed() == 0);
        }
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
