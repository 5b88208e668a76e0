#include "json/writer.h"

#include <doctest/doctest.h>

#include "json/parser.h"

TEST_CASE("an indented document has a line an element") {
    json::Value value;
    json::Error error;
    REQUIRE(json::Parse(R"({"a":[1,[],{}],"b":{"c":null}})", value, error));
    CHECK(json::Write(value, 2) ==
          "{\n  \"a\": [\n    1,\n    [],\n    {}\n  ],\n  \"b\": {\n    \"c\": null\n  }\n}\n");
    CHECK(json::Write(value, 0) == R"({"a":[1,[],{}],"b":{"c":null}})");
    CHECK(json::Write(json::Value(json::Kind::Array), 1) == "[]\n");
}

TEST_CASE("a number is written so that it reads back the same") {
    const struct {
        double number;
        std::string_view text;
    } cases[] = {
        {3.0, "3"},
        {-0.0, "-0"},
        {-12, "-12"},
        {0.1, "0.10000000000000001"},
        {8999999999999999.0, "8999999999999999"},
        {9e15, "9000000000000000"},
        {1e16, "10000000000000000"},
        {1e17, "1e+17"},
        {-2.5e-10, "-2.5000000000000002e-10"},
        {1.7976931348623157e308, "1.7976931348623157e+308"},
    };
    for (const auto& c : cases) {
        CHECK(json::Write(json::Value(c.number), 0) == c.text);
        json::Value again;
        json::Error error;
        REQUIRE(json::Parse(c.text, again, error));
        CHECK(again.number == c.number);
    }
}

TEST_CASE("strings and keys are escaped alike") {
    const std::string bytes("\"\\/\t\n\r\b\x1F\x7F\xC3\xA9\0", 12);
    const std::string escaped = "\\\"\\\\/\\t\\n\\r\\u0008\\u001f\x7F\xC3\xA9\\u0000";
    CHECK(json::EscapeString(bytes) == escaped);
    json::Value object(json::Kind::Object);
    json::Set(object, bytes, json::Value(bytes));
    CHECK(json::Write(object, 0) == "{\"" + escaped + "\":\"" + escaped + "\"}");
}
