#include "json/parser.h"

#include <cmath>
#include <cstdlib>

#include <doctest/doctest.h>

#include "json/writer.h"
#include "support/cases.h"
#include "support/text.h"

namespace {

// The document written back on one line, or "line:column message".
std::string Reading(std::string_view text) {
    json::Value value;
    json::Error error;
    if (json::Parse(text, value, error)) {
        CHECK(error == json::Error());
        return json::Write(value, 0);
    }
    return std::to_string(error.line) + ":" + std::to_string(error.column) + " " + error.message;
}

std::string Nested(int arrays) {
    const auto count = static_cast<std::size_t>(arrays);
    return std::string(count, '[') + std::string(count, ']');
}

// Every text of up to `most` of the bytes that may stand in a number, after a given first byte.
void ForEachNumberRun(std::string& run, std::size_t most, const auto& visit) {
    visit(run);
    if (run.size() == most) return;
    for (const char c : std::string_view("+-.059eE")) {
        run.push_back(c);
        ForEachNumberRun(run, most, visit);
        run.pop_back();
    }
}

}  // namespace

TEST_CASE("documents are read as reading.txt says") {
    for (const support::Case& steps : support::Cases("json/reading.txt")) {
        std::string text;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            if (step.key == "read") {
                text = support::Unmarked(step.value);
            } else if (step.key == "gives") {
                CHECK(Reading(text) == support::Unmarked(step.value));
            } else {
                REQUIRE(step.key == "string");
                CHECK(support::Json(text).string == support::Unmarked(step.value));
            }
        }
    }
}

TEST_CASE("a number is what strtod makes of its whole run") {
    int accepted = 0;
    const auto compare = [&](const std::string& run) {
        char* end = nullptr;
        const double expected = std::strtod(run.c_str(), &end);
        const bool whole = end == run.c_str() + run.size() && std::isfinite(expected);
        json::Value value;
        json::Error error;
        const bool parsed = json::Parse(run, value, error);
        const bool same = parsed ? value.number == expected &&
                                       std::signbit(value.number) == std::signbit(expected)
                                 : error == json::Error{1, 1, "malformed number"};
        // Thousands of runs: only those that go wrong are worth a line.
        if (parsed != whole || !same) FAIL_CHECK(run);
        accepted += parsed;
    };
    for (const char first : std::string_view("-059")) {
        std::string run(1, first);
        ForEachNumberRun(run, 5, compare);
    }
    CHECK(accepted > 1000);
    for (const char* run :
         {"1e-999", "-1e-999", "4.9e-324", "2.4703282292062327e-324", "2.2250738585072011e-308",
          "1.7976931348623157e308", "1.7976931348623159e308", "9007199254740993",
          "0.1000000000000000055", "123456789012345678901234567890", "1e99999999999999999999"}) {
        compare(run);
    }
}

TEST_CASE("containers nest 129 deep and no deeper") {
    CHECK(Reading(Nested(129)) == Nested(129));
    CHECK(Reading(Nested(130)) == "1:130 nesting is too deep");
    CHECK(Reading(Nested(128).insert(128, "{\"a\": 1}")) == "1:135 nesting is too deep");
    CHECK(Reading(std::string(100000, '[')) == "1:130 nesting is too deep");
}
