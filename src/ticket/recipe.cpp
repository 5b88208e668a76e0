#include "recipe.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/format.h"
#include "ticket/hex.h"

namespace kp {
namespace {

using base::Failure;
using Built = base::Result<Bytes>;

constexpr int kDraws = 64;                 // before a byte to be avoided is kept all the same
constexpr std::size_t kMostBytes = 65536;  // of one recipe, so that a mistyped size cannot stall

Failure TooLong() {
    return {base::Format("a recipe makes more than %zu bytes", kMostBytes)};
}

Bytes TextBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

Built BuildArray(const json::Value& array) {
    Bytes bytes;
    bytes.reserve(array.items.size());
    for (const json::Value& item : array.items) {
        if (!item.IsNumber()) return Failure{"a byte array may hold only numbers"};
        bytes.push_back(static_cast<std::uint8_t>(json::ToInt(item.number)));
    }
    return bytes;
}

Built BuildText(const json::Value& object, RecipeContext&) {
    return TextBytes(json::String(json::Member(object, "text")));
}

Built BuildHex(const json::Value& object, RecipeContext&) {
    const std::string& text = json::String(json::Member(object, "hex"));
    if (auto bytes = ReadHex(text)) return *std::move(bytes);
    return Failure{"malformed hex \"" + text + "\""};
}

struct Range {
    std::int64_t low = 1;
    std::int64_t high = 1;
};

Range ReadLength(const json::Value& length) {
    if (length.IsNumber()) return {json::ToInt(length.number), json::ToInt(length.number)};
    Range range;
    if (!length.IsArray()) return range;
    const auto number = [&](std::size_t k, std::int64_t fallback) -> std::int64_t {
        const bool there = k < length.items.size() && length.items[k].IsNumber();
        return there ? json::ToInt(length.items[k].number) : fallback;
    };
    range.low = number(0, 1);
    range.high = number(1, range.low);
    return range;
}

Built BuildRandom(const json::Value& object, RecipeContext& context) {
    const json::Value& random = json::Member(object, "random");
    const auto avoid = ReadHex(json::StringOr(random, "avoid", ""));
    if (!avoid) return Failure{"malformed avoid list"};
    const std::string& from = json::String(json::Member(random, "from"));
    const std::int64_t low = json::IntOr(random, "min", 32);
    const std::int64_t high = json::IntOr(random, "max", 126);
    const auto draw = [&]() -> std::uint8_t {
        if (from.empty()) return static_cast<std::uint8_t>(context.generator.Draw(low, high));
        const auto last = static_cast<std::int64_t>(from.size()) - 1;
        return static_cast<std::uint8_t>(
            from[static_cast<std::size_t>(context.generator.Draw(0, last))]);
    };
    const auto allowed = [&](std::uint8_t byte) {
        return std::find(avoid->begin(), avoid->end(), byte) == avoid->end();
    };
    const Range range = ReadLength(json::Member(random, "len"));
    const std::int64_t length = context.generator.Draw(range.low, range.high);
    if (length > static_cast<std::int64_t>(kMostBytes)) return TooLong();
    Bytes bytes;
    for (std::int64_t k = 0; k < length; ++k) {
        std::uint8_t byte = draw();
        for (int tries = 1; tries < kDraws && !allowed(byte); ++tries) byte = draw();
        bytes.push_back(byte);
    }
    return bytes;
}

Built BuildFramed(const json::Value& object, RecipeContext& context) {
    if (!context.frame) {
        return Failure{"a test encodes a frame, but the ticket has no frame format"};
    }
    Built payload = BuildBytes(json::Member(object, "frame"), context);
    if (!payload) return payload;
    const auto flags = static_cast<std::uint8_t>(json::IntOr(object, "flags", 0));
    return BuildFrame(*context.frame, *payload, flags);
}

Built BuildConcat(const json::Value& object, RecipeContext& context) {
    const json::Value& parts = json::Member(object, "concat");
    if (!parts.IsArray()) return Failure{"expected bytes as text, a number array, or an object"};
    Bytes bytes;
    for (const json::Value& part : parts.items) {
        const Built built = BuildBytes(part, context);
        if (!built) return built;
        bytes.insert(bytes.end(), built->begin(), built->end());
        if (bytes.size() > kMostBytes) return TooLong();
    }
    return bytes;
}

// The inner bytes are built, and draw, once, also when they are not wanted at all.
Built BuildRepeat(const json::Value& object, RecipeContext& context) {
    const Built inner = BuildBytes(json::Member(object, "repeat"), context);
    if (!inner) return inner;
    Bytes bytes;
    for (int times = json::IntOr(object, "times", 1); times > 0; --times) {
        bytes.insert(bytes.end(), inner->begin(), inner->end());
        if (bytes.size() > kMostBytes) return TooLong();
        if (inner->empty()) break;
    }
    return bytes;
}

Built BuildWrapped(const json::Value& object, RecipeContext& context) {
    return BuildBytes(json::Member(object, "bytes"), context);
}

struct Form {
    std::string_view key;
    Built (*build)(const json::Value& object, RecipeContext& context);
};

constexpr std::array<Form, 7> kForms = {{
    // in the order in which they are tried
    {"text", BuildText},
    {"hex", BuildHex},
    {"random", BuildRandom},
    {"frame", BuildFramed},
    {"concat", BuildConcat},
    {"repeat", BuildRepeat},
    {"bytes", BuildWrapped},
}};

void Damage(Bytes& bytes, const json::Value& object) {
    for (const json::Value& position : json::Member(object, "corrupt").items) {
        if (!position.IsNumber() || position.number < 0) continue;
        const auto at = static_cast<std::size_t>(json::ToInt(position.number));
        if (at < bytes.size()) bytes[at] ^= 0x10;
    }
    const std::int32_t kept = json::IntOr(object, "truncate", -1);
    if (kept >= 0 && static_cast<std::size_t>(kept) < bytes.size()) {
        bytes.resize(static_cast<std::size_t>(kept));
    }
}

}  // namespace

Built BuildBytes(const json::Value& recipe, RecipeContext& context) {
    if (recipe.IsString()) return TextBytes(recipe.string);
    if (recipe.IsArray()) return BuildArray(recipe);
    if (!recipe.IsObject()) return Failure{"expected bytes as text, a number array, or an object"};
    const auto form = std::find_if(kForms.begin(), kForms.end(),
                                   [&](const Form& f) { return json::Has(recipe, f.key); });
    if (form == kForms.end()) {
        return Failure{"bytes need text, hex, random, frame, concat, or repeat"};
    }
    Built built = form->build(recipe, context);
    if (built) Damage(*built, recipe);
    return built;
}

}  // namespace kp
