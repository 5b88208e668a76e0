#include <doctest/doctest.h>

#include "call.h"
#include "json/writer.h"

namespace {

std::string Text(const json::Value& value, std::string_view key) {
    return json::Write(json::Member(value, key), 0);
}

const json::Value& First(const json::Value& value, std::string_view key) {
    const json::Value& array = json::Member(value, key);
    REQUIRE_FALSE(array.items.empty());
    return array.items.front();
}

}  // namespace

TEST_CASE("asm answers with the instructions, or with every error") {
    const Bench bench;
    AddEcho(bench);
    bench.Write("all.lc1", "top: mov [1], a\n mov b, [a]\n add a, -1\n rx a, end\nend:\n");
    const json::Value good = bench.Json("asm --ticket echo.json all.lc1", 0);
    CHECK(json::IntOr(good, "lines", 0) == 4);
    CHECK(Text(good, "errors") == "[]");
    const char* const instructions[] = {
        R"({"op":"mov","operands":[{"kind":3,"value":1},{"kind":1,"value":0}],"target":null,"line":1})",
        R"({"op":"mov","operands":[{"kind":1,"value":1},{"kind":4,"value":0}],"target":null,"line":2})",
        R"({"op":"add","operands":[{"kind":1,"value":0},{"kind":2,"value":65535}],"target":null,"line":3})",
        R"({"op":"rx","operands":[{"kind":1,"value":0}],"target":4,"line":4})",
    };
    const json::Value& listed = json::Member(good, "instructions");
    REQUIRE(listed.items.size() == 4);
    for (std::size_t k = 0; k < 4; ++k) CHECK(json::Write(listed.items[k], 0) == instructions[k]);

    // A byte that is no UTF-8 must not make the answer unreadable.
    bench.Write("bad.lc1", "tx a\n hl\xE9t\n tx zz\n");
    const json::Value bad = bench.Json("asm --ticket echo.json bad.lc1", 1);
    CHECK(json::Member(bad, "errors").items.size() == 2);
    CHECK(json::IntOr(First(bad, "errors"), "line", 0) == 2);
    CHECK(json::IntOr(First(bad, "errors"), "column", 0) == 2);
    CHECK(json::IntOr(First(bad, "errors"), "length", 0) == 4);
    CHECK(json::StringOr(First(bad, "errors"), "message", "").find("\xEF\xBF\xBD") !=
          std::string::npos);
}

TEST_CASE("run answers with the verdict, the bytes, the trace and the card") {
    const Bench bench;
    AddEcho(bench);
    const json::Value pass = bench.Json("run --test 1 " + std::string(kEcho) + "mine.lc1", 0);
    CHECK(json::StringOr(pass, "outcome", "") == "pass");
    for (const char* key : {"kind", "tick", "line"}) CHECK(Text(pass, key) == "null");
    CHECK(json::StringOr(pass, "message", "?").empty());
    CHECK(Text(pass, "transmitted") == "[72,73,33]");
    CHECK(Text(pass, "delivered") == "[]");
    CHECK(Text(pass, "expected") ==
          R"({"transmitted":[72,73,33],"delivered":[],"places":["byte 1","byte 2","byte 3"]})");
    CHECK(json::Write(First(pass, "trace"), 0) ==
          R"({"tick":3,"kind":1,"value":72,"index":0,"line":0})");
    CHECK(Text(pass, "card") ==
          R"({"state":"halted","line":4,"a":33,"b":0,"c":0,"d":0,"crc":0,"ram":[0,0]})");
    CHECK(json::IntOr(pass, "end_tick", 0) >= json::IntOr(pass, "ticks_score", 0));

    bench.Write("short.lc1", " rx a\n tx a\n halt\n");
    const json::Value fail = bench.Json("run --test 1 short.lc1 " + std::string(kEcho), 1);
    CHECK(json::StringOr(fail, "outcome", "") == "fail");
    CHECK(json::StringOr(fail, "kind", "") == "short");
    CHECK(json::StringOr(fail, "message", "") ==
          "The test ended after 1 of 3 expected transmitted bytes. Next expected: $49 ('I') as "
          "byte 2. The card halted at line 3.");

    bench.Write("bad.lc1", " rx a\n hlat\n");
    const json::Value error = bench.Json("run --test 1 bad.lc1 " + std::string(kEcho), 1);
    CHECK(json::StringOr(error, "outcome", "") == "error");
    CHECK(json::StringOr(error, "message", "").starts_with("Line 2: "));
}

TEST_CASE("verify runs every test, also after a failing one") {
    const Bench bench;
    AddEcho(bench);
    const json::Value pass = bench.Json("verify mine.lc1 " + std::string(kEcho), 0);
    CHECK(json::IntOr(pass, "passed", 0) == 3);
    CHECK(json::IntOr(pass, "lines", 0) == 4);
    CHECK(json::StringOr(pass, "message", "").starts_with("All 3 tests pass in "));
    std::int32_t ticks = 0;
    for (const json::Value& test : json::Member(pass, "tests").items) {
        ticks += json::IntOr(test, "ticks_score", 0);
    }
    CHECK(ticks == json::IntOr(pass, "ticks", 0));

    // Stops at the letter I, which stands in the first test alone.
    bench.Write("fussy.lc1", "l: rx a\n tx a\n jeq a, 'H', e\n jne a, $21, l\ne: halt\n");
    const json::Value fail = bench.Json("verify fussy.lc1 " + std::string(kEcho), 1);
    CHECK(json::IntOr(fail, "passed", 0) == 2);
    CHECK(json::IntOr(fail, "total", 0) == 3);
    REQUIRE(json::Member(fail, "tests").items.size() == 3);
    CHECK(Text(First(fail, "tests"), "kind") == "\"short\"");
    CHECK(Text(json::Member(fail, "tests").items[2], "name") == "\"Noise 2\"");
    CHECK(json::StringOr(fail, "message", "").starts_with("Test 1 of 3: The test ended"));

    bench.Write("bad.lc1", "hlat\n");
    const json::Value error = bench.Json("verify bad.lc1 " + std::string(kEcho), 1);
    CHECK(Text(error, "tests") == "[]");
    CHECK(json::IntOr(error, "total", 0) == 3);
    CHECK(json::StringOr(error, "message", "").starts_with("Line 1: "));
}

TEST_CASE("bytes answers with every test's own bytes and seed") {
    const Bench bench;
    AddEcho(bench);
    const json::Value bytes = bench.Json("bytes --ticket echo.json", 0);
    CHECK(json::StringOr(bytes, "id", "") == "t-01-echo");
    const json::Value& tests = json::Member(bytes, "tests");
    REQUIRE(tests.items.size() == 3);
    CHECK(Text(tests.items[0], "rx") ==
          R"([{"at":3,"gap":5,"label":"word","reply_within":0,"bytes":[72,73,33]}])");
    CHECK(json::StringOr(tests.items[0], "seed", "").size() == 18);
    CHECK(Text(tests.items[1], "seed") != Text(tests.items[2], "seed"));
    for (const char* key : {"host", "frames", "replies"}) CHECK(Text(tests.items[0], key) == "[]");
}

TEST_CASE("json answers with the document byte by byte, or with the place of the error") {
    const Bench bench;
    bench.Write("a.json", "[1, \"\xFF\",]");
    CHECK(Text(bench.Json("json --indent 0 a.json", 0), "bytes") == "[91,49,44,34,255,34,93]");
    CHECK(Text(bench.Json("json a.json", 0), "bytes") ==
          "[91,10,32,32,49,44,10,32,32,34,255,34,10,93,10]");
    bench.Write("b.json", "[\n }");
    const json::Value error = bench.Json("json b.json", 1);
    CHECK(json::Write(error, 0) ==
          R"({"ok":false,"line":2,"column":2,"message":"expected a value"})");
}

TEST_CASE("content answers with the campaign and its problems") {
    const Bench bench;
    bench.Write("own/missions/campaign.json",
                R"({"title": "Own", "shifts": [{"title": "One", "missions": ["t", "u"]}]})");
    bench.Write("own/missions/t.json", R"({"id": "t", "difficulty": 9, "tests": [{}]})");
    bench.Write("own/missions/reference/t.lc1", "tx 1\nhalt\n");
    bench.Write("own/missions/binder.json", R"({"pages": [{"id": "wrap"}]})");
    CHECK(json::Write(bench.Json("content own", 1), 0) ==
          R"({"title":"Own","shifts":[{"number":1,"title":"One","tickets":[)"
          R"({"id":"t","title":"t","difficulty":5,"lines":2,"ticks":1}]}],)"
          R"("pages":["wrap"],"problems":["missions/u.json is missing"]})");
    bench.Write("own/missions/campaign.json", R"({"shifts": [{"missions": ["t"]}]})");
    CHECK(Text(bench.Json("content own", 0), "problems") == "[]");
}
