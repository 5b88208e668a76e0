#include "json/value.h"

#include <limits>

#include <doctest/doctest.h>

#include "json/writer.h"
#include "support/text.h"

TEST_CASE("a typed read gives the fallback for another kind and for a missing member") {
    const json::Value value =
        support::Json(R"({"b": true, "n": -2.9, "s": "text", "z": null, "a": []})");
    const json::Value array = support::Json("[1]");
    CHECK(json::BoolOr(value, "b", false));
    CHECK(json::IntOr(value, "n", 7) == -2);
    CHECK(json::NumberOr(value, "n", 7) == -2.9);
    CHECK(json::StringOr(value, "s", "x") == "text");
    for (const char* key : {"z", "a", "missing", ""}) {
        CAPTURE(key);
        CHECK(json::BoolOr(value, key, true));
        CHECK(json::IntOr(value, key, 7) == 7);
        CHECK(json::NumberOr(value, key, 7.5) == 7.5);
        CHECK(json::StringOr(value, key, "x") == "x");
        CHECK(json::String(json::Member(value, key)).empty());
    }
    CHECK(json::Has(value, "z"));
    CHECK_FALSE(json::Has(value, "missing"));
    CHECK_FALSE(json::Has(array, ""));
    CHECK(&json::Member(value, "missing") == &json::Member(array, "b"));
}

TEST_CASE("a number becomes the nearest integer toward zero that fits") {
    using Limits = std::numeric_limits<std::int32_t>;
    CHECK(json::ToInt(2147483647.5) == Limits::max());
    CHECK(json::ToInt(2147483648.0) == Limits::max());
    CHECK(json::ToInt(1e300) == Limits::max());
    CHECK(json::ToInt(-2147483648.5) == Limits::min());
    CHECK(json::ToInt(-1e300) == Limits::min());
    CHECK(json::ToInt(-0.9) == 0);
    CHECK(json::ToInt(0.9) == 0);
}

TEST_CASE("setting a member keeps its place, or adds it last") {
    json::Value object = support::Json(R"({"a": 1, "b": 2})");
    json::Set(object, "a", json::Value("new"));
    json::Set(object, "c", json::Value(true));
    CHECK(json::Write(object, 0) == R"({"a":"new","b":2,"c":true})");
}
