#include "rig.h"
#include "support/random_firmware.h"

namespace {

constexpr const char* kEverything =
    R"("max_ticks": 700, "settle": 25, "frame": {"sync": "C1", "check": "sum8"},
       "machine": {"ram": 8, "crc": true, "timer": true, "clock": true, "stack": 2, "tx_gap": 2,
                   "rx_buffer": 4}, )";

// The last output comes long after anything else has, and the card goes on without a word.
constexpr const char* kLateOutput = "mov a, 90\nlate: djn a, late\nhout 6\non: jmp on";

}  // namespace

TEST_CASE("a run in one go is the run tick by tick") {
    kp::Session plain;
    const support::Case tickets = support::Cases("session/fast_path.txt").front();
    for (const support::Step& step : tickets) {
        INFO(step.where);
        support::Rig fast(kEverything + step.All(), "");
        kp::Generator generator(77);
        for (int round = support::Rounds(150); round >= 0; --round) {
            const std::string firmware =
                round > 0 ? support::RandomFirmware(generator) : kLateOutput;
            CAPTURE(firmware);
            fast.Load(firmware);
            const auto begin = [&](const kp::ExpectedOutput* expected) {
                return kp::BeginTest(plain, fast.ticket, 0, fast.program, expected);
            };
            // Judged by what the firmware itself does for a while, so that runs are long.
            if (!begin(nullptr)) continue;
            plain.RunToEnd();
            const kp::ExpectedOutput output = {plain.Transmitted(), plain.Delivered()};
            for (const kp::ExpectedOutput* expected : {&output, {}}) {
                REQUIRE(begin(expected));
                while (plain.StepTick()) {
                }
                fast.Run(expected);
                CHECK((support::Record(fast.session) == support::Record(plain)));
            }
        }
    }
}
