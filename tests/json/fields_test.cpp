#include "json/fields.h"

#include <doctest/doctest.h>

#include "support/cases.h"
#include "support/lines.h"
#include "support/text.h"

using json::Remarks;
using support::Json;
using support::Lines;

TEST_CASE("a value that does not fit is replaced, with a remark that says what does") {
    for (const support::Case& steps : support::Cases("json/numbers.txt")) {
        json::Value value;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            if (step.key == "read") {
                value = Json(step.value);
                continue;
            }
            REQUIRE(step.key == "gives");
            Remarks remarks;
            const auto number = static_cast<std::int32_t>(step.Number());
            CHECK(json::Fields(value, &remarks).Number("n", 7, {2, 9}) == number);
            CHECK(Lines(remarks) == step.text);
            CHECK(json::Fields(value).Number("n", 7, {2, 9}) == number);
        }
    }
}

TEST_CASE("a remark names the place, the key and the beginning of a long value") {
    const json::Value value = Json(R"({"flag": 1, "text": true, "texts": ["a", 3], "list": {},
        "object": [], "open": -1, "any": 0.5, "odd": 1,
        "long": "0123456789012345678901234567890123456789",
        "inside": [{}, {"deep": {"n": 0, "x\n": 1}}]})");
    Remarks remarks;
    json::Fields fields(value, &remarks, "file");
    CHECK(fields.Flag("flag", true));
    CHECK(fields.Text("text", "else") == "else");
    CHECK(fields.Texts("texts") == std::vector<std::string>{"a", ""});
    CHECK(fields.List("list").empty());
    CHECK(fields.Object("object").Flag("key", true));
    CHECK(fields.Number("open", 0, {.least = 0}) == 0);
    CHECK(fields.Number("any", 3) == 0);
    CHECK(fields.Number("long", 3) == 3);
    CHECK(fields.List("inside").size() == 2);
    json::Fields deep = fields.Item("inside", 1).Object("deep");
    CHECK(deep.Number("n", 1, {1, 2}) == 1);
    deep.RemarkUnknown();
    fields.RemarkUnknown();
    CHECK(Lines(remarks) ==
          Lines({
              "file: flag is 1; it takes true or false",
              "file: text is true; it takes a text",
              "file: texts is [\"a\",3]; it takes a text or a list of texts",
              "file: list is {}; it takes a list",
              "file: object is []; it takes an object",
              "file: open is -1; it takes 0 or more",
              "file: any is 0.5; it takes a whole number",
              "file: long is \"012345678901234567890123456789012345678...; it takes a "
              "whole number",
              "file, inside 2, deep: n is 0; it takes 1 to 2",
              "file, inside 2, deep: unknown key \"x\\n\"",
              "file: unknown key \"odd\"",
          }));
}
