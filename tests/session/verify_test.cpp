#include "session/verify.h"

#include <doctest/doctest.h>

#include "rig.h"
#include "session/explain.h"

using support::Json;

namespace {

kp::Ticket Loopback() {
    return *kp::ParseTicket(Json(R"({"id": "loop", "max_ticks": 400,
        "machine": {"timer": true, "ram": 0}, "tests": [
        {"name": "Two", "rx": [{"text": "AB", "at": 3, "gap": 4}]},
        {"name": "Random", "count": 2, "rx": [{"random": {"len": [2, 9], "max": 255}, "gap": 4}]}]})"));
}

constexpr std::string_view kReference = "loop: rx a\ntx a\njmp loop";

kp::VerifyResult VerifyOn(const kp::Ticket& ticket, std::string_view firmware) {
    kp::Session session;
    const auto reference = kp::ProveReference(ticket, kReference, session);
    REQUIRE(reference);
    return kp::Verify(ticket, *reference, kp::Assemble(firmware, ticket.machine), session);
}

}  // namespace

TEST_CASE("a proven reference gives every test's output and the par scores") {
    const kp::Ticket ticket = Loopback();
    kp::Session session;
    const auto reference = kp::ProveReference(ticket, kReference, session);
    REQUIRE(reference);
    CHECK(reference->lines == 3);
    REQUIRE(reference->outputs.size() == 3);
    CHECK(reference->outputs[0].transmitted == kp::Bytes{0x41, 0x42});
    CHECK(reference->outputs[1].transmitted == ticket.tests[1].rx[0].bytes);
    CHECK(VerifyOn(ticket, kReference).ticks == reference->ticks);
}

TEST_CASE("a reference that proves nothing says why") {
    const struct {
        std::string_view firmware, message;
    } cases[] = {
        {"nop\nrx", "reference line 2: rx takes 1 or 2 operands."},
        {"loop: jmp loop", "reference fails test 1: The reference was still running at tick 399."},
        {"nop\nret", "reference fails test 1: Line 2: ret ran with no call to return to."},
        {"rx a\nhalt", "test 1 produces no output"},
        // A later failure wins over an earlier silence.
        {"rx a\njeq a, 'A', end\nret\nend: halt",
         "reference fails test 2: Line 3: ret ran with no call to return to."},
    };
    for (const auto& c : cases) {
        CAPTURE(c.firmware);
        kp::Session session;
        CHECK(kp::ProveReference(Loopback(), c.firmware, session).Message() == c.message);
    }
}

TEST_CASE("a verify runs every test and sums the deck up") {
    const kp::Ticket ticket = Loopback();
    const kp::VerifyResult pass = VerifyOn(ticket, "rx a\ntx a");
    CHECK(pass.AllPassed());
    CHECK(pass.lines == 2);
    CHECK(pass.message ==
          "All 3 tests pass in " + std::to_string(pass.ticks) + " ticks with 2 lines.");
    const kp::VerifyResult fail = VerifyOn(ticket, "rx a\ntx a\nrx a\ntx a\nhalt");
    CHECK(fail.passed == 1);
    CHECK(fail.tests.size() == 3);
    CHECK(fail.ticks == fail.tests[0].output_ticks);
    const std::string sent = "Test 2 of 3: The test ended after 2 of " +
                             std::to_string(ticket.tests[1].rx[0].bytes.size()) + " expected ";
    CHECK(fail.message.substr(0, sent.size()) == sent);
    const kp::VerifyResult broken = VerifyOn(ticket, "nop\nrx q\ntx");
    CHECK(broken.message == "Line 2: rx needs a register here.");
    CHECK(broken.tests.empty());
    CHECK(broken.total == 3);
    kp::Session session;
    CHECK(kp::Verify(ticket, {}, kp::Assemble("halt", ticket.machine), session).message ==
          "This ticket's reference has not been prepared.");
}

TEST_CASE("a tick limit is explained by what repeats and what it never reaches") {
    const struct {
        std::string_view firmware, explanation;
    } cases[] = {
        {"l: jmp l\ntx 1",
         "Your program ran 400 ticks without producing output. Line 1 repeats, and the tx on line "
         "2 "
         "never runs."},
        {"rx a\ntx a\nl: nop\njmp l\nhalt",
         "Your program ran 400 ticks and produced 1 of 2 expected bytes. Lines 3 to 4 repeat and "
         "never reach the halt on line 5."},
        {"rx a\ntx a\nl: jmp l",
         "Your program ran 400 ticks and produced 1 of 2 expected bytes. Line 3 repeats and never "
         "reaches a halt."},
        {"rx a\ntx a\nrx a\nl: tmr 9\nrx a, l",
         "Your program ran 400 ticks and produced 1 of 2 expected bytes. Line 5 waits at rx, and "
         "no "
         "byte arrives."},
        {"rx a\ntx a\nrx a\nl: tmr 9\nhin a, l",
         "Your program ran 400 ticks and produced 1 of 2 expected bytes. Line 5 waits at hin, and "
         "the host sends nothing more."},
        {"rx a\ntx a\nrx a\ntx a\nhalt", ""},
    };
    const kp::Ticket ticket = Loopback();
    kp::Session session;
    const auto reference = kp::ProveReference(ticket, kReference, session);
    REQUIRE(reference);
    for (const auto& c : cases) {
        CAPTURE(c.firmware);
        const kp::Assembly assembly = kp::Assemble(c.firmware, ticket.machine);
        const kp::Program program = kp::Load(assembly, ticket.machine);
        CHECK(kp::ExplainTickLimit(ticket, 0, assembly, program, reference->outputs[0], session) ==
              c.explanation);
    }
}
