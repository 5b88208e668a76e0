#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace json {

enum class Kind : std::uint8_t { Null, Boolean, Number, String, Array, Object };

// A tagged record. Only the member that `kind` names has a meaning. Object members keep the order
// in which their keys were first seen, and a key occurs once.
struct Value {
    Kind kind = Kind::Null;
    bool boolean = false;
    double number = 0;
    std::string string;  // bytes as they stand; UTF-8 is not checked
    std::vector<Value> items;
    std::vector<std::pair<std::string, Value>> members;

    Value() = default;
    explicit Value(bool value) : kind(Kind::Boolean), boolean(value) {}
    explicit Value(double value) : kind(Kind::Number), number(value) {}
    explicit Value(int value) : Value(static_cast<double>(value)) {}
    explicit Value(std::string value) : kind(Kind::String), string(std::move(value)) {}
    explicit Value(const char* value) : Value(std::string(value)) {}
    explicit Value(Kind empty) : kind(empty) {}

    bool IsBoolean() const { return kind == Kind::Boolean; }
    bool IsObject() const { return kind == Kind::Object; }
    bool IsArray() const { return kind == Kind::Array; }
    bool IsString() const { return kind == Kind::String; }
    bool IsNumber() const { return kind == Kind::Number; }
};

// Lookups that miss give a shared null value or a shared empty string.
const Value& Member(const Value& value, std::string_view key);
bool Has(const Value& value, std::string_view key);
bool BoolOr(const Value& value, std::string_view key, bool fallback);
// The number truncated toward zero; one beyond 32 bits becomes the nearest that fits.
std::int32_t IntOr(const Value& value, std::string_view key, std::int32_t fallback);
double NumberOr(const Value& value, std::string_view key, double fallback);
std::string StringOr(const Value& value, std::string_view key, std::string_view fallback);
const std::string& String(const Value& value);

// A number's value as a 32-bit integer, by the rule of IntOr.
std::int32_t ToInt(double number);

// Sets an object's member: a key that is there keeps its place, a new one goes last.
void Set(Value& object, std::string_view key, Value value);

}  // namespace json
