// The judge. A case of verdicts/ names a ticket, a firmware and what it owes, and then the verdict:
//
//     ticket "max_ticks": 150, "tests": [{}]
//     firmware tx $48 / halt
//     owes 48                     bytes on the line; `owes-host` bytes for the host
//     passes                      or `fails tx-wrong Tick 1: ...`
//     ticks 2                     that the run took
//     ends 25                     the last tick of a run that is recorded, and if it fails why.
//     What
//                                 passes ends there judged too, where a byte still owed is missed

#include "rig.h"
#include "ticket/hex.h"

using support::Rig;

namespace {

std::string TextOf(const kp::Verdict& verdict) {
    if (verdict.passed) return "passes ";
    return "fails " + std::string(kp::FailureWord(verdict.kind)) + " " + verdict.message;
}

void CheckEnd(Rig& rig, std::string_view claim) {
    const kp::Tick end = static_cast<kp::Tick>(std::stoi(std::string(support::Cut(claim, " "))));
    const kp::Verdict& recorded = rig.Run();
    CHECK(recorded.tick == end);
    CHECK(recorded.message == claim);
    if (!recorded.passed) return;
    kp::ExpectedOutput expected = {rig.session.Transmitted(), {}};
    CHECK(rig.Run(&expected).passed);
    CHECK(rig.session.Verdict().tick == end);
    expected.transmitted.push_back(0);
    CHECK(rig.Run(&expected).kind == kp::FailureKind::Short);
    CHECK(rig.session.Verdict().tick == end);
}

}  // namespace

TEST_CASE("verdicts and ends are as written") {
    for (const support::Case& steps : support::Cases("session/verdicts")) {
        std::string ticket;
        std::optional<Rig> rig;
        kp::ExpectedOutput expected;
        for (const support::Step& step : steps) {
            INFO(step.where);
            if (step.key == "ticket") {
                ticket = step.All();
            } else if (step.key == "firmware") {
                rig.emplace(ticket, step.Lines());
                expected = {};
            } else if (step.key == "owes") {
                expected.transmitted = *kp::ReadHex(step.value);
            } else if (step.key == "owes-host") {
                expected.delivered = *kp::ReadHex(step.value);
            } else if (step.key == "passes" || step.key == "fails") {
                CHECK(TextOf(rig->Run(&expected)) == step.key + " " + step.value);
            } else if (step.key == "ticks") {
                CHECK(rig->session.CurrentTick() == step.Number());
            } else if (step.key == "ends") {
                CheckEnd(*rig, step.value);
            } else {
                FAIL("unknown key ", step.key);
            }
        }
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
        Rig rig(R"("tests": [{}])", "tx 1\nwait " + std::to_string(wait) + "\nnop\ntx 2\nhalt");
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
