#include "json/fields.h"

#include <algorithm>
#include <cmath>

#include "base/format.h"
#include "base/utf.h"
#include "json/writer.h"

namespace json {
namespace {

constexpr std::size_t kShown = 40;  // characters of a value in a remark

std::string Shown(const Value& value) {
    const std::u32string text = base::ToUtf32(Write(value, 0));
    return text.size() <= kShown ? base::ToUtf8(text)
                                 : base::ToUtf8(text.substr(0, kShown)) + "...";
}

std::string KindOf(Limits limits) {
    constexpr Limits kAll;
    if (limits.least == kAll.least && limits.most == kAll.most) return "a whole number";
    if (limits.most == kAll.most) return base::Format("%d or more", limits.least);
    return base::Format("%d to %d", limits.least, limits.most);
}

bool Holds(Limits limits, double number) {
    return number >= limits.least && number <= limits.most && number == std::trunc(number);
}

bool AreTexts(const Value& value) {
    return std::ranges::all_of(value.items, &Value::IsString);
}

}  // namespace

bool Fields::Flag(std::string_view key, bool fallback) {
    Ask(key, &Value::IsBoolean, "true or false");
    return BoolOr(*value_, key, fallback);
}

std::int32_t Fields::Number(std::string_view key, std::int32_t fallback, Limits limits) {
    const Value& value = Member(*value_, key);
    Know(key);
    if (Has(*value_, key) && !(value.IsNumber() && Holds(limits, value.number))) {
        Remark(key, KindOf(limits));
    }
    return std::clamp(IntOr(*value_, key, fallback), limits.least, limits.most);
}

std::string Fields::Text(std::string_view key, std::string_view fallback) {
    Ask(key, &Value::IsString, "a text");
    return StringOr(*value_, key, fallback);
}

std::vector<std::string> Fields::Texts(std::string_view key) {
    const Value& value = Member(*value_, key);
    Know(key);
    if (Has(*value_, key) && !value.IsString() && !(value.IsArray() && AreTexts(value))) {
        Remark(key, "a text or a list of texts");
    }
    if (value.IsString()) return {value.string};
    std::vector<std::string> texts;
    for (const Value& item : value.items) texts.push_back(String(item));
    return texts;
}

const std::vector<Value>& Fields::List(std::string_view key) {
    return Ask(key, &Value::IsArray, "a list").items;
}

Fields Fields::Object(std::string_view key) {
    return {Ask(key, &Value::IsObject, "an object"), remarks_, PlaceOf(key)};
}

Fields Fields::Inner(std::string_view key) {
    Know(key);
    return {Member(*value_, key), remarks_, PlaceOf(key)};
}

Fields Fields::Item(std::string_view key, std::size_t index) const {
    std::string place = PlaceOf(key);
    if (remarks_ != nullptr) place += base::Format(" %zu", index + 1);
    return {Member(*value_, key).items[index], remarks_, std::move(place)};
}

void Fields::Know(std::string_view key) {
    if (remarks_ != nullptr) asked_.push_back(key);
}

void Fields::Remark(std::string_view key, std::string_view kind) const {
    if (remarks_ == nullptr) return;
    const std::string value = Has(*value_, key) ? Shown(Member(*value_, key)) : "missing";
    Say(std::string(key) + " is " + value + "; it takes " + std::string(kind));
}

void Fields::RemarkUnknown() const {
    if (remarks_ == nullptr || !value_->IsObject()) return;
    for (const auto& [key, member] : value_->members) {
        if (std::ranges::find(asked_, key) == asked_.end()) {
            Say("unknown key \"" + EscapeString(key) + "\"");
        }
    }
}

// The key's value, after a remark when it is there and of the wrong kind.
const Value& Fields::Ask(std::string_view key, bool (Value::*fits)() const, std::string_view kind) {
    const Value& value = Member(*value_, key);
    Know(key);
    if (Has(*value_, key) && !(value.*fits)()) Remark(key, kind);
    return value;
}

std::string Fields::PlaceOf(std::string_view key) const {
    if (remarks_ == nullptr) return {};
    return place_.empty() ? std::string(key) : place_ + ", " + std::string(key);
}

void Fields::Say(const std::string& text) const {
    if (remarks_ != nullptr) remarks_->push_back(place_.empty() ? text : place_ + ": " + text);
}

}  // namespace json
