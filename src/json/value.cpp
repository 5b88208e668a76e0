#include "json/value.h"

#include <algorithm>
#include <limits>

namespace json {
namespace {

const Value kNull;

const Value* Find(const Value& value, std::string_view key) {
    if (!value.IsObject()) return nullptr;
    for (const auto& [name, member] : value.members) {
        if (name == key) return &member;
    }
    return nullptr;
}

}  // namespace

const Value& Member(const Value& value, std::string_view key) {
    const Value* member = Find(value, key);
    return member ? *member : kNull;
}

bool Has(const Value& value, std::string_view key) {
    return Find(value, key) != nullptr;
}

bool BoolOr(const Value& value, std::string_view key, bool fallback) {
    const Value& member = Member(value, key);
    return member.kind == Kind::Boolean ? member.boolean : fallback;
}

std::int32_t IntOr(const Value& value, std::string_view key, std::int32_t fallback) {
    const Value& member = Member(value, key);
    return member.IsNumber() ? ToInt(member.number) : fallback;
}

double NumberOr(const Value& value, std::string_view key, double fallback) {
    const Value& member = Member(value, key);
    return member.IsNumber() ? member.number : fallback;
}

std::string StringOr(const Value& value, std::string_view key, std::string_view fallback) {
    const Value& member = Member(value, key);
    return member.IsString() ? member.string : std::string(fallback);
}

const std::string& String(const Value& value) {
    return value.IsString() ? value.string : kNull.string;
}

std::int32_t ToInt(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (number != number) return 0;  // not a number: no nearest integer
    return static_cast<std::int32_t>(
        std::clamp(number, double{Limits::min()}, double{Limits::max()}));
}

void Set(Value& object, std::string_view key, Value value) {
    for (auto& [name, member] : object.members) {
        if (name == key) {
            member = std::move(value);
            return;
        }
    }
    object.members.emplace_back(key, std::move(value));
}

}  // namespace json
