#include <doctest/doctest.h>

#include "bench/bench_run.h"
#include "small_campaign.h"

using namespace Kest;

namespace {

struct Echo {
    kp::Content content = support::SmallCampaign();
    BenchRun run{*content.FindTicket("1-01-echo")};

    explicit Echo(std::string_view firmware = support::kEchoReference) {
        run.SetFirmware(firmware);
    }
};

std::string MarksOf(const BenchRun& run) {
    std::string marks;
    for (std::size_t i = 0; i < run.TestCount(); ++i) {
        marks += run.Mark(i) == TestMark::Passed   ? '+'
                 : run.Mark(i) == TestMark::Failed ? '!'
                                                   : '.';
    }
    return marks;
}

}  // namespace

TEST_CASE("every command says in one sentence what came of it") {
    using Act = void (*)(BenchRun&);
    const Act run_one = [](BenchRun& run) { run.Run(); };
    const Act run_to_end = [](BenchRun& run) { run.RunToEnd(); };
    const Act verify = [](BenchRun& run) { run.Verify(); };
    const struct {
        std::string_view firmware;
        Act act;
        std::string_view says;
        bool alert;
        RunState state;
        std::string_view marks;
    } cases[] = {
        {"", [](BenchRun&) {}, "Assembled: 0 errors, 0 lines.", false, RunState::NotRunning, ".."},
        {"tx 1", [](BenchRun&) {}, "Assembled: 0 errors, 1 line.", false, RunState::NotRunning,
         ".."},
        {"tx\nshr a 8\n", [](BenchRun&) {}, "Assembled: 2 errors, 2 lines.", false,
         RunState::NotRunning, ".."},
        {"tx 1", [](BenchRun& run) { run.SelectTest(1); }, "Test 2 of 2: A zero.", false,
         RunState::NotRunning, ".."},
        {"", run_one, "No instructions to run.", true, RunState::NotRunning, ".."},
        {"; only words", verify, "No instructions to run.", true, RunState::NotRunning, ".."},
        {"tx 1\nshr a", run_one, "Line 2: shr takes 2 operands.", true, RunState::NotRunning, ".."},
        {"tx 1\nshr a", verify, "Line 2: shr takes 2 operands.", true, RunState::NotRunning, ".."},
        {"rx a\ntx a", run_one, "Running Test 1 of 2: Letters.", false, RunState::Running, ".."},
        {"rx a\ntx a",
         [](BenchRun& run) {
             run.Run();
             run.Advance(0.1);
             run.Pause();
         },
         "Paused at tick 3.", false, RunState::Paused, ".."},
        {"rx a\ntx a", [](BenchRun& run) { run.Step(); }, "Tick 4. Next line 2.", false,
         RunState::Paused, ".."},
        {"rx a\ntx a", run_to_end, "Test 1 of 2: PASS. Last output at tick 8.", false,
         RunState::Passed, "+."},
        {"rx a\ntx 1", run_to_end,
         "Test 1 of 2: FAIL. Tick 4: transmitted $01 as byte 1; the specification calls for $48 "
         "('H').",
         true, RunState::Failed, "!."},
        {"rx a\ntx a",
         [](BenchRun& run) {
             run.RunToEnd();
             run.Reset();
         },
         "Reset to tick 0.", false, RunState::NotRunning, "+."},
        {"rx a\ntx a", verify, "Verify: 2 of 2 passed.", false, RunState::NotRunning, "++"},
        {"rx a\nhalt", verify,
         "Verify: 0 of 2 passed. Test 1 of 2: The test ended after 0 of 2 expected transmitted "
         "bytes. Next expected: $48 ('H') as byte 1. The card halted at line 2.",
         false, RunState::NotRunning, "!!"},
        {"rx a\ntx 0", verify,
         "Verify: 1 of 2 passed. Test 1 of 2: Tick 4: transmitted $00 as byte 1; the "
         "specification calls for $48 ('H').",
         false, RunState::NotRunning, "!+"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.firmware);
        Echo echo(c.firmware);
        c.act(echo.run);
        CHECK(echo.run.Standing() == c.says);
        CHECK(echo.run.StandingIsAlert() == c.alert);
        CHECK(echo.run.State() == c.state);
        CHECK(MarksOf(echo.run) == c.marks);
    }
}

TEST_CASE("a test that reaches its tick limit is explained") {
    Echo echo("loop: jmp loop");
    echo.run.RunToEnd();
    CHECK(echo.run.VerdictText() ==
          "Test 1 of 2: FAIL. The test reached its limit of 200 ticks before it finished. The "
          "card was running at line 1.");
    CHECK(echo.run.Explanation() ==
          "Your program ran 200 ticks without producing output. Line 1 repeats and never reaches "
          "a halt.");
    echo.run.Verify();
    CHECK(echo.run.VerdictText() ==
          "Test 1 of 2: The test reached its limit of 200 ticks before it finished. The card was "
          "running at line 1.");
    CHECK_FALSE(echo.run.Explanation().empty());
    echo.run.Run();
    CHECK(echo.run.VerdictText().empty());
    CHECK(echo.run.Explanation().empty());
}

TEST_CASE("a running test takes its ticks from the time that passes, at the speed set") {
    const int per_second[] = {4, 10, 24, 60, 160};
    for (int speed = 0; speed < 5; ++speed) {
        CAPTURE(speed);
        Echo echo;
        echo.run.SetSpeed(speed);
        echo.run.Run();
        echo.run.Advance(0);
        CHECK(echo.run.ShownTick() == 1);
        CHECK(echo.run.SecondsToNextTick() == doctest::Approx(1.0 / per_second[speed]));
        for (int frame = 0; frame < 6; ++frame) echo.run.Advance(0.01);
        CHECK(echo.run.ShownTick() == 1 + static_cast<kp::Tick>(per_second[speed] * 0.06));
    }
}

TEST_CASE("a paused test goes on, a finished one starts again, an edit ends it") {
    Echo echo;
    BenchRun& run = echo.run;
    run.Step();
    run.Run();
    run.Advance(0);
    CHECK(run.ShownTick() == 5);
    run.Pause();
    run.RunToEnd();
    REQUIRE(run.State() == RunState::Passed);
    run.Step();
    CHECK(run.Standing() == "Tick 4. Next line 2.");
    CHECK(run.Trace().card.size() == 4);
    run.SetFirmware("tx 1");
    CHECK(run.State() == RunState::NotRunning);
    CHECK(run.Session() == nullptr);
    CHECK(run.Trace().card.empty());
    CHECK(run.Trace().events.empty());
    CHECK(MarksOf(run) == "..");
}

TEST_CASE("the run keeps what the card did on each tick beside what the reference did") {
    Echo echo("rx a\nwait 2\ntx a");
    echo.run.RunToEnd();
    const TraceData trace = echo.run.Trace();
    const auto state = [&](std::size_t tick) { return trace.card[tick].state; };
    CHECK(state(0) == kp::CardState::WaitingByte);
    CHECK(state(3) == kp::CardState::Running);
    CHECK(trace.card[3].line == 1);
    CHECK(state(5) == kp::CardState::InWait);
    CHECK(state(6) == kp::CardState::Running);
    CHECK(trace.card[6].line == 3);
    REQUIRE(trace.to_transmit.size() == 2);
    CHECK(trace.to_transmit[0].tick == 4);
    CHECK(trace.to_transmit[1].byte == 'i');
    CHECK(echo.run.BytesRead() == 2);
    CHECK(echo.run.Received().size() == 2);
}
