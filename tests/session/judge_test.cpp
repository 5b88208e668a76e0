#include <doctest/doctest.h>

#include "rig.h"

using kp::FailureKind;
using support::Rig;

namespace {

using kp::Bytes;

constexpr std::string_view kPlain = R"({"id": "t", "max_ticks": 150, "tests": [{}]})";
constexpr std::string_view kFramed = R"({"id": "t", "frame": {"sync": "C1", "check": "sum8"},
    "tests": [{}]})";

struct Case {
    std::string_view ticket;
    std::string_view firmware;
    kp::ExpectedOutput expected;
    FailureKind kind;
    std::string_view message;
};

void CheckVerdict(const Case& c) {
    CAPTURE(c.firmware);
    Rig rig(c.ticket, c.firmware);
    const kp::Verdict& verdict = rig.Run(&c.expected);
    CHECK(verdict.message == c.message);
    CHECK(verdict.kind == c.kind);
    CHECK(verdict.passed == (c.kind == FailureKind::None));
}

// A script of one byte whose answer is due within five ticks.
constexpr std::string_view kDue = R"({"id": "t", "machine": {"timer": true}, "max_ticks": 200,
    "tests": [{"rx": [{"hex": "05", "at": 10, "label": "ENQ", "reply_within": 5},
                      {"hex": "07", "at": 60}]}]})";

}  // namespace

TEST_CASE("the first wrong byte is the verdict, in whole sentences") {
    const Case cases[] = {
        {kPlain, "tx $48\ntx 'I'\nhalt", {{0x48, 0x49}, {}}, FailureKind::None, ""},
        {kPlain,
         "tx $48\ntx $1F\nhalt",
         {{0x48, 0x49}, {}},
         FailureKind::TxWrong,
         "Tick 1: transmitted $1F as byte 2; the specification calls for $49 ('I')."},
        {kFramed,
         "tx $C1\ntx 1\ntx 'A'\ntx 0\nhalt",
         {{0xC1, 1, 0x41, 3}, {}},
         FailureKind::TxWrong,
         "Tick 3: transmitted $00 as frame 1, check byte; the specification calls for $03."},
        {kPlain,
         "tx 1\ntx '!'\nhalt",
         {{1}, {}},
         FailureKind::TxExtra,
         "Tick 1: transmitted $21 ('!'), but the specification's transmission was already complete "
         "after 1 bytes."},
        {kPlain,
         "tx 1\nnop",
         {{1}, {}},
         FailureKind::TxExtra,
         "Tick 2: transmitted $01, but the specification's transmission was already complete after "
         "1 bytes. Execution ran past the last line and started again at the first; halt stops the "
         "card."},
        {kPlain,
         "hout 'A'\nhout 'B'",
         {{}, {0x41}},
         FailureKind::HostExtra,
         "Tick 1: delivered $42 ('B') to the host, but the host had already received all 1 "
         "expected "
         "bytes."},
        {kPlain,
         "hout 'A'\nhout 0\nhalt",
         {{}, {0x41, 0x42}},
         FailureKind::HostWrong,
         "Tick 1: delivered $00 to the host as byte 2; the specification calls for $42 ('B')."},
    };
    for (const Case& c : cases) CheckVerdict(c);
}

TEST_CASE("a test that ends short says what was missing and what the card did") {
    const Case cases[] = {
        {kPlain,
         "tx 'H'\n\nhalt",
         {{0x48, 0x49, 0x21}, {}},
         FailureKind::Short,
         "The test ended after 1 of 3 expected transmitted bytes. Next expected: $49 ('I') as byte "
         "2. The card halted at line 3."},
        {kFramed,
         "tx $C1\nrx a",
         {{0xC1, 1}, {}},
         FailureKind::Short,
         "The test ended after 1 of 2 expected transmitted bytes. Next expected: $01 as frame 1, "
         "length. The card was waiting for a received byte at line 2."},
        {kPlain,
         "hin a",
         {{}, {7}},
         FailureKind::Short,
         "The test ended after the host received 0 of 1 expected bytes. Next expected: $07. The "
         "card "
         "was waiting for the host at line 1."},
        // Bytes owed on the line come first.
        {kPlain,
         "halt",
         {{7}, {8}},
         FailureKind::Short,
         "The test ended after 0 of 1 expected transmitted bytes. Next expected: $07 as byte 1. "
         "The "
         "card halted at line 1."},
        {kPlain,
         "",
         {{7}, {}},
         FailureKind::Short,
         "The test ended after 0 of 1 expected transmitted bytes. Next expected: $07 as byte 1. "
         "The "
         "card halted at line 0."},
    };
    for (const Case& c : cases) CheckVerdict(c);
}

TEST_CASE("the tick limit names the card's state") {
    const Case cases[] = {
        {kPlain,
         "l: jmp l",
         {{7}, {}},
         FailureKind::TickLimit,
         "The test reached its limit of 150 ticks before it finished. The card was running at line "
         "1."},
        {kPlain,
         "wait 32767\nl: jmp l",
         {{7}, {}},
         FailureKind::TickLimit,
         "The test reached its limit of 150 ticks before it finished. The card was waiting at line "
         "2."},
        {R"({"id": "t", "max_ticks": 100, "machine": {"tx_gap": 64}, "tests": [{}]})",
         "tx 1\ntx 1\ntx 1\nhalt",
         {{1, 1, 1}, {}},
         FailureKind::TickLimit,
         "The test reached its limit of 100 ticks before it finished. The card was waiting for the "
         "transmitter at line 3."},
        // A card that has sent everything and runs on passes once it has been quiet for a while.
        {kPlain, "tx 7\nl: jmp l", {{7}, {}}, FailureKind::None, ""},
    };
    for (const Case& c : cases) CheckVerdict(c);
}

TEST_CASE("a card that waits for good ends its test at once") {
    const struct {
        std::string_view ticket, firmware;
        kp::Tick ends;
    } cases[] = {
        {kPlain, "tx 7\nrx a", 2},
        {kPlain, "tx 7\nhin a", 2},
        {kPlain, "tx 7\nhalt", 2},
        {kPlain, "tx 7\nl: jmp l", 31},  // settle
        {kPlain, "tx 7\nwait 1000", 31},
        {R"({"id": "t", "machine": {"timer": true}, "tests": [{}]})",
         "tx 7\ntmr 9\nrx a, out\nout: rx a, out", 12},
    };
    for (const auto& c : cases) {
        CAPTURE(c.firmware);
        Rig rig(c.ticket, c.firmware);
        const kp::ExpectedOutput expected{{7}, {}};
        CHECK(rig.Run(&expected).passed);
        CHECK(rig.session.CurrentTick() == c.ends);
    }
}

TEST_CASE("a deadline is judged by the card's next byte, or by its silence") {
    const struct {
        std::string_view firmware;
        FailureKind kind;
        std::string_view message;
    } cases[] = {
        {"rx a\nwait 3\ntx 6\nrx a\nhalt", FailureKind::None, ""},
        {"rx a\nwait 4\ntx 6\nrx a\nhalt", FailureKind::None, ""},
        {"rx a\nwait 5\ntx 6\nrx a\nhalt", FailureKind::Late,
         "Tick 16: the reply to ENQ went out late. It was due by tick 15."},
        {"rx a\nrx a\ntx 6\nhalt", FailureKind::Deadline,
         "Tick 16: the reply to ENQ was due by tick 15, and nothing was transmitted in time. The "
         "card was waiting for a byte."},
        {"rx a\nwait 50\ntx 6\nhalt", FailureKind::Deadline,
         "Tick 16: the reply to ENQ was due by tick 15, and nothing was transmitted in time. The "
         "card was in a wait."},
        {"rx a\nl: jmp l", FailureKind::Deadline,
         "Tick 16: the reply to ENQ was due by tick 15, and nothing was transmitted in time."},
    };
    for (const auto& c : cases) {
        CheckVerdict({kDue, c.firmware, {{6}, {}}, c.kind, c.message});
    }
}

TEST_CASE("a window's sentence for a byte sent too early") {
    // The far end asks for silence until tick 20 from the moment it hears the first byte.
    class Quiet final : public kp::Peer {
    public:
        void Receive(kp::Tick tick, std::uint8_t, kp::PeerLink& link) override {
            link.Expect(kp::WindowKind::Earliest, 20, "the second byte", tick);
        }
        bool Done() const override { return true; }
    };
    for (const int wait : {17, 18}) {
        Rig rig(kPlain, "tx 1\nwait " + std::to_string(wait) + "\nnop\ntx 2\nhalt");
        const kp::ExpectedOutput expected{{1, 2}, {}};
        rig.session.Begin(rig.ticket, rig.ticket.tests[0], rig.program, std::make_unique<Quiet>(),
                          &expected);
        rig.session.RunToEnd();
        CHECK(rig.session.Verdict().message ==
              (wait == 18 ? ""
                          : "Tick 19: the second byte went out early. The specification waits "
                            "until tick 20."));
    }
}
