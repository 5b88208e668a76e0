#include "rig.h"

using support::Rig;

namespace {

constexpr std::string_view kSilent = "rest: rx a\n jmp rest\n";
constexpr std::string_view kRubbish = "loop: tx $55\n jmp loop\n";
constexpr std::string_view kStillRunning = "The reference was still running at tick 299.";

constexpr std::string_view kAcker =
    R"("frame": {"sync": "C1"}, "peer": {"type": "acker"}, "tests": [{"host": [""]}])";
constexpr std::string_view kFlow = R"("peer": {"type": "flow", "burst": 2}, "tests": [{}])";
constexpr std::string_view kResponder =
    R"("peer": {"type": "responder"}, "tests": [{"replies": [
        {"after": "A", "send": "B", "delay": 5}]}])";
constexpr std::string_view kSender =
    R"("peer": {"type": "sender", "timeout": 10}, "tests": [{"frames": ["A"]}])";
constexpr std::string_view kReceiver =
    R"("peer": {"type": "xmodem-rx", "block": 1}, "tests": [{}])";
constexpr std::string_view kEmptyFile = R"("peer": {"type": "xmodem-tx"}, "tests": [{}])";

struct Ending {
    std::string_view ticket;
    std::string firmware;
    kp::Tick tick;                  // the last one
    std::string_view message = {};  // of the recorded run
};

std::string Then(std::string_view first, std::string_view rest) {
    return std::string(first) + std::string(rest);
}

}  // namespace

TEST_CASE("a test ends on the tick on which nothing more can come") {
    const Ending endings[] = {
        {R"("tests": [{}])", Then("", kSilent), 0},
        {R"("tests": [{}])", Then("", kRubbish), 299, kStillRunning},
        {R"("tests": [{"rx": [{"text": "A", "at": 10}]}])", Then("", kSilent), 12},
        {R"("tests": [{"rx": [{"text": "A", "at": 10}]}])", Then("", kRubbish), 299, kStillRunning},

        {kFlow, Then("", kSilent), 0},
        {kFlow, Then("tx 1\n", kSilent), 1},
        {kFlow, Then("tx 1\n tx 2\n", kSilent), 25},  // after XON
        {kFlow, Then("tx 1\n tx 2\n", "halt"), 2},
        {kFlow, Then("", kRubbish), 4,
         "Tick 4: the first byte after XOFF went out early. The specification waits until tick "
         "24."},

        {kResponder, Then("", kSilent), 0},
        {kResponder, Then("tx 'A'\n", kSilent), 8},
        {kResponder, Then("tx 'A'\n tx 'A'\n", kSilent), 8},
        {kResponder, Then("", kRubbish), 299, kStillRunning},
        {R"("peer": {"type": "responder"}, "tests": [{"replies": [{"after": "A", "delay": 30}]}])",
         Then("tx 'A'\n", kSilent), 31},

        {kAcker, Then("", kSilent), 0},
        {kAcker, Then("tx $C1\n", kSilent), 1},  // half a frame
        {kAcker, Then("tx $C1\n tx 0\n", kSilent), 6},
        {kAcker, Then("tx $C1\n tx 0\n tx $C1\n tx 0\n", kSilent), 8},
        {kAcker, Then("", kRubbish), 299, kStillRunning},
        {R"("frame": {"sync": "C1"}, "peer": {"type": "acker", "final": "04"},
            "tests": [{"host": [""]}])",
         Then("tx $C1\n tx 0\n", kSilent), 6},
        {R"("peer": {"type": "acker", "delay": 40, "answers": {"04": ""}, "final": "04"},
            "tests": [{}])",
         Then("tx 4\n", kSilent), 41},

        {kSender, Then("", kSilent), 84},  // given up
        {kSender, Then("rx a\n tx 6\n", kSilent), 6},
        {kSender, Then("rx a\n tx 6\n tx 6\n", kSilent), 7},
        {kSender, Then("", kRubbish), 299, kStillRunning},
        // The second ACK comes while nobody listens, and frame 2 is given up.
        {R"("peer": {"type": "sender", "timeout": 10}, "tests": [{"frames": ["A", "B"]}])",
         Then("rx a\n tx 6\n tx 6\n", kSilent), 90},

        {kReceiver, Then("", kSilent), 10},
        {kReceiver, Then("rx a\n tx 4\n rx a\n tx 4\n", kSilent), 18},
        {kReceiver, Then("rx a\n tx 4\n rx a\n tx 4\n tx 4\n", kSilent), 20},
        {kReceiver, Then("", kRubbish), 0,
         "Tick 0: the answer to the receiver's NAK went out early. The specification waits until "
         "tick 8."},

        {kEmptyFile, Then("", kSilent), 0},
        {kEmptyFile, Then("tx $15\n", kSilent), 7},  // EOT is not answered
        {kEmptyFile, Then("tx $15\n rx a\n tx 6\n", kSilent), 7},
        {kEmptyFile, Then("tx $15\n rx a\n tx 6\n tx 6\n", kSilent), 8},
        {kEmptyFile, Then("", kRubbish), 299, kStillRunning},
    };
    for (const Ending& ending : endings) {
        CAPTURE(ending.ticket);
        CAPTURE(ending.firmware);
        Rig rig("{\"id\": \"t\", \"max_ticks\": 300, \"settle\": 299, " +
                    std::string(ending.ticket) + "}",
                ending.firmware);
        const kp::Verdict& recorded = rig.Run();
        CHECK(recorded.tick == ending.tick);
        CHECK(recorded.message == ending.message);
        if (!recorded.passed) continue;
        // Judged, the end is the same; a byte that is still owed is missed then.
        kp::ExpectedOutput expected = {rig.session.Transmitted(), {}};
        CHECK(rig.Run(&expected).passed);
        CHECK(rig.session.Verdict().tick == ending.tick);
        expected.transmitted.push_back(0);
        CHECK(rig.Run(&expected).kind == kp::FailureKind::Short);
        CHECK(rig.session.Verdict().tick == ending.tick);
    }
}
