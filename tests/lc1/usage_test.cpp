#include <doctest/doctest.h>

#include "call.h"

TEST_CASE("a call that has no answer exits with 2 and says why in one line") {
    const Bench bench;
    AddEcho(bench);
    bench.Write("broken.json", "{\n  \"id\" 1}");
    bench.Write("nameless.json", "{}");
    bench.Write("silent.lc1", "halt\n");
    bench.Write("empty/other/a.json", "{}");
    const struct {
        const char* arguments;
        const char* problem;
    } cases[] = {
        {"verify --ticket none.json --reference echo.lc1 mine.lc1",
         "cannot read none.json: No such file or directory"},
        {"verify --ticket broken.json --reference echo.lc1 mine.lc1",
         "broken.json:2:8: expected a colon"},
        {"asm --ticket ./broken.json mine.lc1", "broken.json:2:8: expected a colon"},
        {"bytes --ticket nameless.json", "missing id"},
        {"verify --ticket echo.json --reference silent.lc1 mine.lc1", "test 1 produces no output"},
        {"verify --ticket echo.json --reference none.lc1 mine.lc1",
         "cannot read none.lc1: No such file or directory"},
        {"run --ticket echo.json --reference echo.lc1 --test 1 none.lc1",
         "cannot read none.lc1: No such file or directory"},
        {"asm --ticket echo.json .", "cannot read .: Is a directory"},
        {"run --ticket echo.json --reference echo.lc1 --test 4 mine.lc1",
         "there is no test 4; the ticket has 3"},
        {"verify 9-99 mine.lc1", "there is no ticket 9-99"},
        {"json none.json", "cannot read none.json: No such file or directory"},
        {"content empty", "no missions folder under empty"},
        {"lint empty", "no missions folder under empty"},
        {"lint --solutions none", "cannot read none"},
        {"lint empty more", "lint has no use for more; usage: lc1 lint [FOLDER] [--solutions DIR]"},
        {"", "a command is missing; lc1 --help lists them"},
        {"frobnicate", "there is no command frobnicate; lc1 --help lists them"},
        {"list --frob", "there is no option --frob; lc1 --help lists them"},
        {"json --indent", "--indent needs a value"},
        {"json --indent x a.json", "--indent takes a whole number from 0 to 100"},
        {"run --test 0 1-01 mine.lc1", "--test takes a whole number from 1 to 1000000"},
        {"verify --hints 1 1-01 mine.lc1",
         "verify takes no --hints; usage: lc1 verify TICKET FIRMWARE"},
        {"verify --ticket echo.json mine.lc1",
         "verify needs --reference; usage: lc1 verify TICKET FIRMWARE"},
        {"verify --reference echo.lc1 1-01 mine.lc1",
         "--reference goes with --ticket; usage: lc1 verify TICKET FIRMWARE"},
        {"run 1-01 mine.lc1", "run needs --test; usage: lc1 run TICKET --test N FIRMWARE"},
        {"verify 1-01", "verify needs more than that; usage: lc1 verify TICKET FIRMWARE"},
        {"list all", "list has no use for all; usage: lc1 list"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.arguments));
        const Answer answer = bench.Call(c.arguments);
        CHECK(answer.code == 2);
        CHECK(answer.out.empty());
        CHECK(answer.err == "lc1: " + std::string(c.problem) + "\n");
        CHECK(json::StringOr(bench.Json(c.arguments, 2), "problem", "") == c.problem);
    }
    const json::Value located = bench.Json("bytes --ticket broken.json", 2);
    CHECK(json::IntOr(located, "line", 0) == 2);
    CHECK(json::IntOr(located, "column", 0) == 8);
}

TEST_CASE("help and version are there everywhere") {
    const Bench bench;
    for (const char* arguments : {"--help", "verify --help", "--help verify a b c"}) {
        CAPTURE(std::string(arguments));
        const Answer answer = bench.Call(arguments);
        CHECK(answer.code == 0);
        CHECK(answer.out.find("lc1 verify TICKET FIRMWARE") != std::string::npos);
        CHECK(answer.err.empty());
    }
    for (const char* arguments : {"--version", "run --version"}) {
        CAPTURE(std::string(arguments));
        CHECK(bench.Call(arguments).code == 0);
        CHECK(bench.Call(arguments).out.starts_with("lc1 "));
    }
}

TEST_CASE("options and the firmware stand in any order, and a dash is standard input") {
    const Bench bench;
    AddEcho(bench);
    const char* const calls[] = {
        "verify --ticket echo.json --reference echo.lc1 mine.lc1",
        "verify mine.lc1 --reference echo.lc1 --ticket echo.json",
        "--ticket echo.json verify --reference echo.lc1 mine.lc1",
        "verify --ticket echo.json --reference echo.lc1 - < mine.lc1",
        "verify --ticket echo.json --reference echo.lc1 -- mine.lc1",
    };
    for (const char* arguments : calls) {
        CAPTURE(std::string(arguments));
        CHECK(bench.Call(arguments).code == 0);
    }
}
