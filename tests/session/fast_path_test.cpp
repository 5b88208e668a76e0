#include <doctest/doctest.h>

#include "rig.h"
#include "support/random_firmware.h"

namespace {

// Everything that a run leaves behind must be the same either way.
void CheckSameRun(const kp::Session& fast, const kp::Session& plain) {
    CHECK(std::equal(fast.Trace().begin(), fast.Trace().end(), plain.Trace().begin(),
                     plain.Trace().end()));
    CHECK(fast.Verdict().message == plain.Verdict().message);
    CHECK(fast.Verdict().passed == plain.Verdict().passed);
    CHECK(fast.CurrentTick() == plain.CurrentTick());
    CHECK(fast.OutputTicks() == plain.OutputTicks());
    CHECK(fast.Card().State() == plain.Card().State());
    CHECK(fast.Windows().size() == plain.Windows().size());
    CHECK(fast.Notes().size() == plain.Notes().size());
    for (int k = 0; k < 5; ++k) {
        CHECK(fast.Card().RegisterValue(k) == plain.Card().RegisterValue(k));
    }
}

// One ticket a far end, with traffic in both directions and something for every peer to do.
constexpr std::string_view kTickets[] = {
    R"("peer": {"type": "none"}, "tests": [{"host": ["AB", {"text": "", "at": 30}, "C"]}])",
    R"("peer": {"type": "script"}, "tests": [{"host": [{"text": "AB", "at": 9}],
        "rx": [{"text": "Q", "at": 4, "reply_within": 9}, {"text": "RSTU", "at": 40, "gap": 3}]}])",
    R"("peer": {"type": "flow", "burst": 2, "pause": 9}, "tests": [{"host": ["ABCDEF"]}])",
    R"("peer": {"type": "responder", "reply_within": 40}, "tests": [{"replies":
        [{"after": "A", "send": "XY"}, {"after": [1], "delay": 9}]}])",
    R"("peer": {"type": "acker", "delay": 7, "answers": {"41": "06 41", "05": "06"}, "final": "01"},
        "tests": [{"host": ["A"]}])",
    R"("peer": {"type": "sender", "timeout": 50, "reply_within": 20}, "tests": [{"frames":
        [{"frame": "AB"}, {"hex": "C1 00"}]}])",
    R"("peer": {"type": "xmodem-rx", "block": 2, "timeout": 60}, "tests": [{"host": ["ABC"]}])",
    R"("peer": {"type": "xmodem-tx", "block": 2, "timeout": 60}, "tests": [{"frames": ["ABC"]}])",
};

kp::Ticket TicketOf(std::string_view rest) {
    auto ticket = kp::ParseTicket(support::Json(
        R"({"id": "fast", "max_ticks": 700, "settle": 25, "frame": {"sync": "C1", "check": "sum8"},
            "machine": {"ram": 8, "crc": true, "timer": true, "clock": true, "stack": 2,
                        "tx_gap": 2, "rx_buffer": 4}, )" +
        std::string(rest) + "}"));
    INFO(ticket.Message());
    REQUIRE(ticket);
    return *ticket;
}

}  // namespace

TEST_CASE("a run in one go is the run tick by tick") {
    kp::Session fast;
    kp::Session plain;
    for (const std::string_view rest : kTickets) {
        const kp::Ticket ticket = TicketOf(rest);
        CAPTURE(rest);
        kp::Generator generator(77);
        for (int round = support::Rounds(150); round > 0; --round) {
            const std::string firmware = support::RandomFirmware(generator);
            const kp::Assembly assembly = kp::Assemble(firmware, ticket.machine);
            CAPTURE(firmware);
            REQUIRE(assembly.errors.empty());
            const kp::Program program = kp::Load(assembly, ticket.machine);
            // Judged by what the firmware itself does for a while, so that runs are long.
            kp::ExpectedOutput expected;
            if (!kp::BeginTest(plain, ticket, 0, program, nullptr)) continue;
            plain.RunToEnd();
            expected = {plain.Transmitted(), plain.Delivered()};
            for (const bool judged : {true, false}) {
                REQUIRE(kp::BeginTest(fast, ticket, 0, program, judged ? &expected : nullptr));
                REQUIRE(kp::BeginTest(plain, ticket, 0, program, judged ? &expected : nullptr));
                fast.RunToEnd();
                while (plain.StepTick()) {
                }
                CheckSameRun(fast, plain);
            }
        }
    }
}
