#include "peer_settings.h"

#include <algorithm>

#include "base/format.h"
#include "json/writer.h"
#include "ticket/hex.h"

namespace kp {
namespace {

Tick ToTicks(const json::Value& number) {
    return static_cast<Tick>(std::clamp(json::ToInt(number.number), 0, PeerSettings::kMostTicks));
}

bool IsTicks(const json::Value& number) {
    return ToTicks(number) == number.number;
}

bool IsArrayOf(const json::Value& value, bool (json::Value::*kind)() const) {
    const auto fits = [kind](const json::Value& item) { return (item.*kind)(); };
    return value.IsArray() && std::all_of(value.items.begin(), value.items.end(), fits);
}

bool AreStrings(const json::Value& value) {
    return IsArrayOf(value, &json::Value::IsString);
}

bool AreNumbers(const json::Value& value) {
    return IsArrayOf(value, &json::Value::IsNumber);
}

bool AreTwoNumbers(const json::Value& value) {
    return AreNumbers(value) && value.items.size() == 2;
}

bool IsObjectOfStrings(const json::Value& value) {
    const auto fits = [](const auto& member) { return member.second.IsString(); };
    return value.IsObject() && std::all_of(value.members.begin(), value.members.end(), fits);
}

}  // namespace

PeerSettings::PeerSettings(const kp::Ticket& ticket, std::size_t test, json::Remarks* remarks)
    : ticket_(ticket),
      test_(test),
      ticket_block_(ticket.peer, remarks, "peer"),
      test_block_(Test().peer, remarks, base::Format("test %zu, peer", test + 1)) {
    ticket_block_.Know("type");
}

// The block that the key's value stands in, or its default.
json::Fields& PeerSettings::Block(std::string_view key) {
    ticket_block_.Know(key);
    test_block_.Know(key);
    return json::Has(Test().peer, key) ? test_block_ : ticket_block_;
}

bool PeerSettings::Flag(std::string_view key, bool fallback) {
    return Block(key).Flag(key, fallback);
}

std::int32_t PeerSettings::Number(std::string_view key, std::int32_t fallback, std::int32_t least,
                                  std::int32_t most) {
    return Block(key).Number(key, fallback, {least, most});
}

Tick PeerSettings::Ticks(std::string_view key, std::int32_t fallback, std::int32_t least) {
    return static_cast<Tick>(Number(key, fallback, least));
}

Bytes PeerSettings::Hex(std::string_view key, std::string_view fallback) {
    return ParseHex(key, Block(key).Text(key, fallback));
}

std::vector<std::string> PeerSettings::Words(std::string_view key) {
    std::vector<std::string> words;
    for (const json::Value& item : List(key, "an array of strings", AreStrings).items)
        words.push_back(item.string);
    return words;
}

std::vector<Tick> PeerSettings::TickList(std::string_view key) {
    std::vector<Tick> ticks;
    for (const json::Value& item : List(key, "an array of numbers", AreNumbers).items) {
        if (!IsTicks(item)) Block(key).Remark(key, "ticks from 0 on");
        ticks.push_back(ToTicks(item));
    }
    return ticks;
}

RetryWindow PeerSettings::Retry(std::string_view key) {
    const auto& items = List(key, "an array of two numbers", AreTwoNumbers).items;
    if (items.empty()) return {};
    const bool is_window =
        IsTicks(items[0]) && IsTicks(items[1]) && items[0].number <= items[1].number;
    if (!is_window) Block(key).Remark(key, "the least ticks and the most");
    return {ToTicks(items[0]), ToTicks(items[1])};
}

std::vector<std::pair<Bytes, Bytes>> PeerSettings::HexPairs(std::string_view key) {
    std::vector<std::pair<Bytes, Bytes>> pairs;
    for (const auto& [left, right] :
         List(key, "an object of hex texts", IsObjectOfStrings).members) {
        Bytes first = ParseHex(key, left);
        pairs.emplace_back(std::move(first), ParseHex(key, right.string));
    }
    return pairs;
}

// The key's value when it is there and has its shape, else a null value.
const json::Value& PeerSettings::List(std::string_view key, std::string_view shape,
                                      bool (*fits)(const json::Value& value)) {
    static const json::Value kNothing;
    const json::Value& block = Block(key).Source();
    if (!json::Has(block, key)) return kNothing;
    const json::Value& value = json::Member(block, key);
    if (fits(value)) return value;
    Fail(key, "malformed value " + json::Write(value, 0) + " for peer key \"" + std::string(key) +
                  "\": it takes " + std::string(shape));
    return kNothing;
}

Bytes PeerSettings::ParseHex(std::string_view key, const std::string& text) {
    if (auto bytes = ReadHex(text)) return *std::move(bytes);
    Fail(key, "malformed hex \"" + json::EscapeString(text) + "\" for peer key \"" +
                  std::string(key) + "\"");
    return {};
}

void PeerSettings::RemarkUnknown() const {
    ticket_block_.RemarkUnknown();
    test_block_.RemarkUnknown();
}

void PeerSettings::Fail(std::string_view key, const std::string& problem) {
    if (!problem_.empty()) return;
    const bool in_test = json::Has(Test().peer, key);
    problem_ = (in_test ? base::Format("test %zu: ", test_ + 1) : "") + problem;
}

}  // namespace kp
