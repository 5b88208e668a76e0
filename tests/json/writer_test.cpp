#include "json/writer.h"

#include <doctest/doctest.h>

#include <cstdlib>

#include "support/text.h"

TEST_CASE("an indented document has a line an element") {
    const json::Value value = support::Json(R"({"a":[1,[],{}],"b":{"c":null}})");
    CHECK(json::Write(value, 2) ==
          "{\n  \"a\": [\n    1,\n    [],\n    {}\n  ],\n  \"b\": {\n    \"c\": null\n  }\n}\n");
    CHECK(json::Write(value, 0) == R"({"a":[1,[],{}],"b":{"c":null}})");
    CHECK(json::Write(json::Value(json::Kind::Array), 1) == "[]\n");
}

TEST_CASE("a number is written so that it reads back the same") {
    for (const char* text :
         {"3", "-0", "-12", "0.10000000000000001", "8999999999999999", "9000000000000000",
          "10000000000000000", "1e+17", "-2.5000000000000002e-10", "1.7976931348623157e+308"}) {
        CHECK(json::Write(json::Value(std::strtod(text, nullptr)), 0) == text);
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
