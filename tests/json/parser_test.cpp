#include "json/parser.h"

#include <cmath>
#include <cstdlib>

#include <doctest/doctest.h>

#include "json/writer.h"

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

TEST_CASE("a document is read, with its leniencies") {
    const struct {
        std::string_view text, written;
    } cases[] = {
        {" null ", "null"},
        {"[true,false , 1,\"\"]", "[true,false,1,\"\"]"},
        {"[]", "[]"},
        {"{}", "{}"},
        {"[1,[2,],]", "[1,[2]]"},
        {"{\"a\":1,}", "{\"a\":1}"},
        {"{\"b\":1,\"a\":2,\"b\":[3]}", "{\"b\":[3],\"a\":2}"},
        {"{\"a\":{\"x\":1},\"a\":{\"y\":2}}", "{\"a\":{\"y\":2}}"},
        {"\xEF\xBB\xBF[1]", "[1]"},
        {"// one\n[ // two\n 1 // three\r\n, // four\n] // five", "[1]"},
        {"{// a\n\"k\"// b\n:// c\n1}", "{\"k\":1}"},
        {"\"a // b\"", "\"a // b\""},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        CHECK(Reading(c.text) == c.written);
    }
}

TEST_CASE("an error says what was expected and where") {
    const struct {
        std::string_view text, error;
    } cases[] = {
        {"", "1:1 unexpected end of text"},
        {" \n// nothing\n ", "3:2 unexpected end of text"},
        {"[1,\n 2", "2:3 unterminated array"},
        {"[1,", "1:4 unexpected end of text"},
        {"[1 2]", "1:4 expected a comma or a closing bracket"},
        {"[,]", "1:2 expected a value"},
        {"[1,,]", "1:4 expected a value"},
        {"[1, /* no */ 2]", "1:5 expected a value"},
        {"[1}", "1:3 expected a comma or a closing bracket"},
        {"{\"a\" 1}", "1:6 expected a colon"},
        {"{\"a\"", "1:5 expected a colon"},
        {"{\"a\":", "1:6 unexpected end of text"},
        {"{\"a\":}", "1:6 expected a value"},
        {"{\"a\":1", "1:7 unterminated object"},
        {"{\"a\":1 \"b\"", "1:8 expected a comma or a closing brace"},
        {"{", "1:2 expected a quoted key"},
        {"{\"a\":1,,}", "1:8 expected a quoted key"},
        {"{a:1}", "1:2 expected a quoted key"},
        {"[1] x", "1:5 unexpected text after the document"},
        {"1 2", "1:3 unexpected text after the document"},
        {"1 /", "1:3 unexpected text after the document"},
        {"[trUe]", "1:2 expected true"},
        {"fals", "1:1 expected false"},
        {"nul", "1:1 expected null"},
        {"+1", "1:1 expected a value"},
        {".5", "1:1 expected a value"},
        {"[--1]", "1:2 malformed number"},
        {"-", "1:1 malformed number"},
        {"1e999", "1:1 malformed number"},
        {"[1,\n-1e999]", "2:1 malformed number"},
        {"\"ab", "1:4 unterminated string"},
        {"\"\\", "1:3 unterminated escape"},
        {"\"\\x\"", "1:3 unknown escape"},
        {"\"\\u00e", "1:4 short unicode escape"},
        {"\"\\u00\" ", "1:6 bad unicode escape"},
        {"\"\\ud83d\\u12", "1:10 short unicode escape"},
        {"\"\\ud83d\\u12g4\"", "1:12 bad unicode escape"},
        {"\r\n\t\xC3\xA9", "2:2 expected a value"},
        {"[\"\xC3\xA9\", x]", "1:8 expected a value"},
        {"\xEF\xBB\xBFx", "1:1 expected a value"},
        {"\xEF\xBB", "1:1 expected a value"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        CHECK(Reading(c.text) == c.error);
    }
}

TEST_CASE("strings are kept byte by byte but for their escapes") {
    const struct {
        std::string_view text, bytes;
    } cases[] = {
        {R"("\"\\\/\b\f\n\r\t")", "\"\\/\b\f\n\r\t"},
        {"\"\x01\n\x80\xFF\"", "\x01\n\x80\xFF"},
        {R"("\u0041\u00e9\u20AC")", "A\xC3\xA9\xE2\x82\xAC"},
        {R"("\ud83d\ude00")", "\xF0\x9F\x98\x80"},
        {R"("\ud800\u0041")", "\xE2\x91\x81"},                  // a pair without a low surrogate
        {R"("\udbff\uffff")", "\xF4\x91\xBF\xBF"},              // beyond the last code point
        {R"("\ud83d\n\ude00")", "\xED\xA0\xBD\n\xED\xB8\x80"},  // surrogates apart
        {R"("\ud83dA")",
         "\xED\xA0\xBD"
         "A"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        json::Value value;
        json::Error error;
        REQUIRE(json::Parse(c.text, value, error));
        CHECK(value.string == c.bytes);
    }
    json::Value value;
    json::Error error;
    REQUIRE(json::Parse("\"a\\u0000b\"", value, error));
    CHECK(value.string == std::string("a\0b", 3));
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
