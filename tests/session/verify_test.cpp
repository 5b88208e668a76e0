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

TEST_CASE("a reference that proves nothing says why, and a tick limit is explained") {
    const kp::Ticket ticket = Loopback();
    kp::Session session;
    const auto reference = kp::ProveReference(ticket, kReference, session);
    REQUIRE(reference);
    for (const support::Case& steps : support::Cases("session/explanations.txt")) {
        std::string firmware;
        for (const support::Step& step : steps) {
            INFO(step.where);
            if (step.key == "firmware") {
                firmware = step.Lines();
            } else if (step.key == "disproved") {
                CHECK(kp::ProveReference(ticket, firmware, session).Message() == step.value);
            } else if (step.key == "explained") {
                const kp::Assembly assembly = kp::Assemble(firmware, ticket.machine);
                const kp::Program program = kp::Load(assembly, ticket.machine);
                CHECK(kp::ExplainTickLimit(ticket, 0, assembly, program, reference->outputs[0],
                                           session) == step.value);
            } else {
                FAIL("unknown key ", step.key);
            }
        }
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
