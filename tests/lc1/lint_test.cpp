#include <doctest/doctest.h>

#include "call.h"

TEST_CASE("lint has nothing to say of the built-in content and the firmware kept for it") {
    const Bench bench;
    const Answer answer = bench.Call("lint --solutions '" KEST_SOLUTIONS "'");
    CHECK(answer.code == 0);
    CHECK(answer.out.empty());
    CHECK(answer.err.empty());
}

TEST_CASE("lint writes a line for each fault of a folder and of the firmware kept for it") {
    const Bench bench;
    AddEcho(bench);
    const std::string missions = "mine/missions/";
    bench.Write(missions + "campaign.json", R"({"shifts": [{"missions": ["t-01-echo", "gone"]}]})");
    bench.Write(missions + "binder.json", R"({"pages": [], "odd": 1})");
    bench.Write(missions + "t-01-echo.json", bench.Read("echo.json"));
    bench.Write(missions + "reference/t-01-echo.lc1", bench.Read("echo.lc1"));
    bench.Write("kept/t-01-echo/plain.lc1", "halt\n");
    bench.Write("kept/t-01-echo/fail/still.lc1", "; fails Noise 1: The test ended\nhalt\n");
    const std::string faults =
        "missions/gone.json is missing\n"
        "missions/binder.json: unknown key \"odd\"\n";
    const struct {
        const char* arguments;
        std::string out;
    } cases[] = {
        {"lint mine", faults},
        {"lint --solutions kept mine",
         faults +
             "t-01-echo: plain.lc1 fails: Test 1 of 3: The test ended after 0 of 3 expected "
             "transmitted bytes. Next expected: $48 ('H') as byte 1. The card halted at line 1.\n"
             "t-01-echo: fail/still.lc1 fails first in \"Word\", not in \"Noise 1\"\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.arguments));
        const Answer answer = bench.Call(c.arguments);
        CHECK(answer.code == 1);
        CHECK(answer.out == c.out);
        CHECK(answer.err.empty());
    }
}
