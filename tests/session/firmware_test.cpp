// The tick engine, tested in its own language. Each file of firmware/ opens with what it shows and
// may name its ticket ("; ticket", over as many lines of comment as it takes) and the failure that
// ends the run ("; fails fault Line 2: ..."). A comment "; expect tx $55 at 0, tx $55 at 4" behind
// an instruction lists everything that the instruction made happen in a recorded run, in order.

#include <map>

#include "rig.h"

using kp::Happening;
using support::Rig;

namespace {

std::string Describe(const kp::TraceEvent& event) {
    constexpr const char* kNames[] = {"tx",   "in",    "rx",       "lost",    "hin",
                                      "hout", "tmr",   "tmr stop", "ran out", "timeout",
                                      "halt", "fault", "wrap"};
    std::string what = kNames[static_cast<std::size_t>(event.kind)];
    switch (event.kind) {
        case Happening::Transmitted:
        case Happening::ReadByte:
        case Happening::Delivered:
        case Happening::ReadHost:
            what += event.value == 0xFFFF ? " end" : base::Format(" $%02X", event.value);
            break;
        case Happening::TimerStarted:
            what += base::Format(" %d", event.value);
            break;
        default:
            break;
    }
    return what + base::Format(" at %u", event.tick);
}

struct Claims {
    std::string ticket;
    std::string failure;               // "fault Line 2: ..."
    std::map<int, std::string> lines;  // what happens on each
};

Claims ClaimsOf(std::string_view firmware) {
    Claims claims;
    bool in_ticket = false;
    for (int number = 1; !firmware.empty(); ++number) {
        std::string_view line = support::Cut(firmware, "\n");
        const bool head = line.starts_with("; ");
        in_ticket = head && (in_ticket || line.starts_with("; ticket "));
        if (in_ticket) {
            claims.ticket += line.substr(line.starts_with("; ticket ") ? 9 : 1);
        } else if (line.starts_with("; fails ")) {
            claims.failure = line.substr(8);
        } else if (const auto at = line.find("; expect "); at != std::string_view::npos) {
            claims.lines[number] = line.substr(at + 9);
        }
    }
    if (claims.ticket.empty()) claims.ticket = R"("max_ticks": 200, "tests": [{}])";
    return claims;
}

}  // namespace

TEST_CASE("every instruction does what stands beside it") {
    for (const std::string& name : support::NamesIn("session/firmware")) {
        CAPTURE(name);
        const std::string firmware = support::ReadText("session/firmware/" + name);
        const Claims claims = ClaimsOf(firmware);
        Rig rig(claims.ticket, firmware);
        const kp::Verdict& verdict = rig.Run();
        CHECK(verdict.passed == claims.failure.empty());
        const std::string failure =
            std::string(kp::FailureWord(verdict.kind)) + " " + verdict.message;
        CHECK((verdict.passed ? "" : failure) == claims.failure);
        CHECK(rig.session.CurrentTick() == verdict.tick + 1);
        std::map<int, std::string> happened;
        for (const kp::TraceEvent& event : rig.session.Trace()) {
            if (event.line == 0) continue;
            std::string& line = happened[event.line];
            line += (line.empty() ? "" : ", ") + Describe(event);
        }
        CHECK(happened == claims.lines);
    }
}

TEST_CASE("an empty program halts on its first tick") {
    Rig rig(R"("tests": [{}])", "; nothing");
    CHECK(rig.Run().passed);
    CHECK(rig.session.CurrentTick() == 1);
    CHECK(Describe(rig.session.Trace().back()) == "halt at 0");
}

TEST_CASE("a step runs until one instruction is done") {
    Rig rig(R"("tests": [{"rx": [{"text": "A", "at": 8}]}])", "tx 1\nwait 5\nrx a\nhalt");
    rig.Begin();
    std::vector<kp::Tick> ticks;
    while (rig.session.StepInstruction()) ticks.push_back(rig.session.CurrentTick());
    CHECK(ticks == std::vector<kp::Tick>{1, 2, 9});
    CHECK(rig.session.CurrentTick() == 10);
    CHECK_FALSE(rig.session.StepTick());
}
