#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "json/value.h"

namespace json {

// The least and the most that a whole number may be.
struct Limits {
    std::int32_t least = std::numeric_limits<std::int32_t>::min();
    std::int32_t most = std::numeric_limits<std::int32_t>::max();
};

// One line for each thing in a document that its reader did not take as it stands.
using Remarks = std::vector<std::string>;

// Reads an object key by key and never fails: a key that is missing or of another kind is its
// default, a number beyond its limits the nearest, and a value that is no object has no keys. Given
// a list of remarks it tells an author so, and names the keys that nobody asked for, each line led
// by its place: "test 3, rx 2: gap is 0; it takes 1 or more". The value must outlive the fields.
class Fields {
public:
    Fields(const Value& value, Remarks* remarks = nullptr, std::string place = {})
        : value_(&value), remarks_(remarks), place_(std::move(place)) {}

    const Value& Source() const { return *value_; }

    bool Flag(std::string_view key, bool fallback);
    std::int32_t Number(std::string_view key, std::int32_t fallback, Limits limits = {});
    std::string Text(std::string_view key, std::string_view fallback = {});
    // One text, or an array whose other items become empty texts.
    std::vector<std::string> Texts(std::string_view key);
    const std::vector<Value>& List(std::string_view key);
    // What stands under the key; an object, or a value of any kind that its reader judges.
    Fields Object(std::string_view key);
    Fields Inner(std::string_view key);
    // The item of a list under the key, counted from 0 here and from 1 in its place.
    Fields Item(std::string_view key, std::size_t index) const;

    // Counts a key as asked for.
    void Know(std::string_view key);
    // "<place>: <key> is <value>; it takes <kind>"
    void Remark(std::string_view key, std::string_view kind) const;
    // "<place>: <text>"
    void Say(const std::string& text) const;
    // A line for every key that has not been asked for.
    void RemarkUnknown() const;

private:
    const Value& Ask(std::string_view key, bool (Value::*fits)() const, std::string_view kind);
    std::string PlaceOf(std::string_view key) const;

    const Value* value_;
    Remarks* remarks_;
    std::string place_;
    std::vector<std::string_view> asked_;  // kept only where there are remarks
};

}  // namespace json
