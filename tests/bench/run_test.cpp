#include <functional>
#include <map>

#include "base/format.h"
#include "bench/bench_run.h"
#include "game.h"
#include "support/cases.h"

using namespace Kest;

namespace {

struct Echo {
    kp::Content content = support::SmallCampaign();
    BenchRun run{*content.FindTicket("1-01-echo")};

    explicit Echo(std::string_view firmware = "rx a\ntx a\n") { run.SetFirmware(firmware); }
};

std::string Standing(const BenchRun& run) {
    constexpr const char* kStates[] = {"not running", "running", "paused",
                                       "passed",      "failed",  "verifying"};
    std::string text = std::string(kStates[static_cast<std::size_t>(run.State())]) + " ";
    for (std::size_t i = 0; i < run.TestCount(); ++i) {
        text += ".+!"[static_cast<std::size_t>(run.Mark(i))];
    }
    return text;
}

const std::map<std::string, void (*)(BenchRun&)> kCommands = {
    {"run", [](BenchRun& run) { run.Run(); }},
    {"step", [](BenchRun& run) { run.Step(); }},
    {"end", [](BenchRun& run) { run.RunToEnd(); }},
    {"verify",
     [](BenchRun& run) {
         if (run.BeginVerify()) run.FinishVerify();
     }},
    {"back", [](BenchRun& run) { run.StepBack(); }},
    {"begin verify", [](BenchRun& run) { run.BeginVerify(); }},
    {"motion", [](BenchRun& run) { run.SetMotion(true); }},
    {"pause", [](BenchRun& run) { run.Pause(); }},
    {"reset", [](BenchRun& run) { run.Reset(); }},
    {"next", [](BenchRun& run) { run.SelectTest(run.TestIndex() + 1); }},
    {"advance", [](BenchRun& run) { run.Advance(0.1); }},
};

// What a command has led to.
const std::map<std::string, std::function<std::string(const BenchRun&)>> kViews = {
    {"says",
     [](const BenchRun& run) { return (run.StandingIsAlert() ? "! " : "") + run.Standing(); }},
    {"now", Standing},
    {"tick",
     [](const BenchRun& run) { return run.Session() ? std::to_string(run.ShownTick()) : "none"; }},
    {"card",
     [](const BenchRun& run) {
         return base::Format("tick %u line %d a $%04X", run.ShownTick(), run.ShownLine(),
                             unsigned{run.Card().RegisterValue(kp::kA)});
     }},
    {"verdict", &BenchRun::VerdictText},
    {"explained", &BenchRun::Explanation},
    {"cards", [](const BenchRun& run) { return std::to_string(run.Trace().card.size()); }},
    {"events", [](const BenchRun& run) { return std::to_string(run.Trace().events.size()); }},
};

}  // namespace

TEST_CASE("every command says in one sentence what came of it") {
    for (const support::Case& steps : support::Cases("bench/runs.txt")) {
        std::optional<Echo> echo;
        for (const support::Step& step : steps) {
            INFO(step.where);
            if (step.key == "firmware") {
                echo.emplace(step.Lines());
            } else if (step.key == "edit") {
                echo->run.SetFirmware(step.Lines());
            } else if (step.key == "break") {
                echo->run.SetBreakpoints({static_cast<int>(step.Number())});
            } else if (step.key == "look") {
                echo->run.Look(static_cast<kp::Tick>(step.Number()));
            } else if (step.key == "do") {
                kCommands.at(step.value)(echo->run);
            } else {
                CHECK(kViews.at(step.key)(echo->run) == step.value);
            }
        }
    }
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
