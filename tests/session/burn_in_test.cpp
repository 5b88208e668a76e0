#include "session/burn_in.h"

#include <doctest/doctest.h>

#include "rig.h"

namespace {

// A deck of a fixed test and two seeded ones, to be sent back byte by byte.
kp::Ticket Echo() {
    return support::Rig::TicketOf(R"("machine": {"rom": 200}, "tests": [
        {"name": "Two", "rx": [{"text": "AB", "at": 3, "gap": 4}]},
        {"name": "Drawn", "count": 2, "rx": [{"random": {"len": [2, 9], "max": 255}, "gap": 4}]}])");
}
constexpr std::string_view kEcho = "loop: rx a\ntx a\njmp loop";

// A card that knows the deck: it tells the tests apart by their first byte and recites.
std::string Reciter(const kp::Ticket& ticket) {
    std::string text = "rx a\n";
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        const kp::Bytes& bytes = ticket.tests[k].rx[0].bytes;
        text += base::Format("jne a, %d, next%zu\ntx a\n", bytes.front(), k);
        for (std::size_t at = 1; at < bytes.size(); ++at) {
            text += base::Format("rx a\ntx %d\n", bytes[at]);
        }
        text += base::Format("halt\nnext%zu: nop\n", k);
    }
    return text + "halt\n";
}

kp::BurnIn Burn(const kp::Ticket& ticket, std::string_view firmware, std::uint32_t draws) {
    const kp::Assembly assembly = kp::Assemble(firmware, ticket.machine);
    REQUIRE(assembly.errors.empty());
    return {ticket, kEcho, assembly, draws};
}

}  // namespace

TEST_CASE("a draw leaves fixed tests out, differs from the deck, and is the same every time") {
    const kp::Ticket deck = Echo();
    kp::Ticket drawn = deck;
    REQUIRE(kp::DrawTests(drawn, 1));
    REQUIRE(drawn.tests.size() == 2);
    CHECK(drawn.tests[0].name == "Drawn 1");
    const kp::Bytes first = drawn.tests[0].rx[0].bytes;
    CHECK(first != deck.tests[1].rx[0].bytes);
    REQUIRE(kp::DrawTests(drawn, 2));
    CHECK(first != drawn.tests[0].rx[0].bytes);
    REQUIRE(kp::DrawTests(drawn, 1));
    CHECK(first == drawn.tests[0].rx[0].bytes);
    REQUIRE(kp::DrawTests(drawn, 0));
    CHECK(drawn.tests[0].rx[0].bytes == deck.tests[1].rx[0].bytes);
}

TEST_CASE("a card that solves the ticket passes, one that recites the deck is found out") {
    const kp::Ticket ticket = Echo();
    kp::Session session;
    const auto reference = kp::ProveReference(ticket, kEcho, session);
    REQUIRE(reference);
    const std::string reciter = Reciter(ticket);
    CHECK(
        kp::Verify(ticket, *reference, kp::Assemble(reciter, ticket.machine), session).AllPassed());

    kp::BurnIn honest = Burn(ticket, kEcho, 20);
    int slices = 0;
    while (honest.Run(1)) ++slices;
    CHECK(slices == 19);  // one draw at least, however few ticks it is given
    CHECK(kp::BurnInText(honest) == "Burn-in: 20 of 20.");

    kp::BurnIn dishonest = Burn(ticket, reciter, 20);
    while (dishonest.Run(100000)) {
    }
    CHECK(dishonest.Passed() == 0);
    REQUIRE(dishonest.FirstMiss());
    const kp::BurnInMiss& miss = *dishonest.FirstMiss();
    CHECK(miss.draw == 1);
    CHECK(miss.test.name == "Drawn 1");
    CHECK(miss.expected.transmitted == miss.test.rx[0].bytes);
    CHECK(kp::BurnInText(dishonest) ==
          "Burn-in: 0 of 20. Seed 1, Drawn 1: " + miss.verdict.message);
}

TEST_CASE("without a seeded test there is nothing to burn in") {
    const kp::Ticket fixed = support::Rig::TicketOf(R"("tests": [{"rx": [{"text": "AB"}]}])");
    CHECK_FALSE(kp::BurnIn::Suits(fixed));
    kp::BurnIn burn_in = Burn(fixed, kEcho, 20);
    CHECK_FALSE(burn_in.Run(100));
    CHECK(burn_in.Draws() == 0);
}

TEST_CASE("a reference that does not end on a draw is the ticket's fault, and said so") {
    // It waits for a byte that only the deck's draws do not hold at the front.
    const kp::Ticket ticket = support::Rig::TicketOf(R"("max_ticks": 300, "tests": [
        {"name": "Drawn", "rx": [{"random": {"len": 3, "min": 1, "max": 4}, "gap": 4}]}])");
    const std::string front = base::Format("%d", ticket.tests[0].rx[0].bytes[0]);
    const std::string picky = "rx a\njne a, " + front + ", stuck\ntx a\nhalt\nstuck: jmp stuck";
    kp::BurnIn burn_in(ticket, picky, kp::Assemble(picky, ticket.machine), 40);
    while (burn_in.Run(100000)) {
    }
    CHECK(burn_in.Passed() < burn_in.Draws());
    REQUIRE(burn_in.FirstMiss());
    CHECK(burn_in.FirstMiss()->reference_fails);
    CHECK(kp::BurnInText(burn_in).find("the reference fails.") != std::string::npos);
}
