#include "recipe.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/format.h"
#include "json/writer.h"
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

bool IsByte(double number) {
    return number >= 0 && number <= 255;
}

Bytes TextBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

Built BuildArray(const json::Fields& recipe) {
    Bytes bytes;
    bytes.reserve(recipe.Source().items.size());
    for (const json::Value& item : recipe.Source().items) {
        if (!item.IsNumber()) return Failure{"a byte array may hold only numbers"};
        if (!IsByte(item.number)) recipe.Say(json::Write(item, 0) + " is no byte");
        bytes.push_back(static_cast<std::uint8_t>(json::ToInt(item.number)));
    }
    return bytes;
}

Built BuildText(json::Fields& object, RecipeContext&) {
    return TextBytes(object.Text("text"));
}

Built BuildHex(json::Fields& object, RecipeContext&) {
    const std::string text = object.Text("hex");
    if (auto bytes = ReadHex(text)) return *std::move(bytes);
    return Failure{"malformed hex \"" + text + "\""};
}

struct Range {
    std::int64_t low = 1;
    std::int64_t high = 1;
};

Range ReadLength(json::Fields& random) {
    const json::Fields length = random.Inner("len");
    const json::Value& value = length.Source();
    Range range;
    if (value.IsNumber()) {
        range.low = range.high = random.Number("len", 1);
    } else if (value.IsArray()) {
        const auto number = [&](std::size_t k, std::int64_t fallback) -> std::int64_t {
            const bool there = k < value.items.size() && value.items[k].IsNumber();
            return there ? json::ToInt(value.items[k].number) : fallback;
        };
        range.low = number(0, 1);
        range.high = number(1, range.low);
    }
    const bool is_pair = value.IsArray() && value.items.size() == 2 &&
                         std::ranges::all_of(value.items, &json::Value::IsNumber);
    const bool is_range = value.IsNumber() || (is_pair && range.low <= range.high);
    if (json::Has(random.Source(), "len") && !is_range) {
        random.Remark("len", "a number, or the least and the most");
    }
    return range;
}

// The bounds of a random byte. A number that is no byte is taken as its low eight bits once it has
// been drawn.
Range ReadBounds(json::Fields& random) {
    const Range bounds{random.Number("min", 32), random.Number("max", 126)};
    if (!IsByte(static_cast<double>(bounds.low))) random.Remark("min", "0 to 255");
    if (!IsByte(static_cast<double>(bounds.high)) || bounds.high < bounds.low) {
        random.Remark("max", base::Format("%d to 255", std::max(static_cast<int>(bounds.low), 0)));
    }
    return bounds;
}

Built BuildRandom(json::Fields& object, RecipeContext& context) {
    json::Fields random = object.Object("random");
    const auto avoid = ReadHex(random.Text("avoid"));
    if (!avoid) return Failure{"malformed avoid list"};
    const std::string from = random.Text("from");
    const Range bounds = ReadBounds(random);
    const auto draw = [&]() -> std::uint8_t {
        if (from.empty()) {
            return static_cast<std::uint8_t>(context.generator.Draw(bounds.low, bounds.high));
        }
        const auto last = static_cast<std::int64_t>(from.size()) - 1;
        return static_cast<std::uint8_t>(
            from[static_cast<std::size_t>(context.generator.Draw(0, last))]);
    };
    const auto allowed = [&](std::uint8_t byte) {
        return std::find(avoid->begin(), avoid->end(), byte) == avoid->end();
    };
    const Range range = ReadLength(random);
    random.RemarkUnknown();
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

Built BuildFramed(json::Fields& object, RecipeContext& context) {
    if (!context.frame) {
        return Failure{"a test encodes a frame, but the ticket has no frame format"};
    }
    Built payload = BuildBytes(object.Inner("frame"), context);
    if (!payload) return payload;
    const std::int32_t flags = object.Number("flags", 0);
    if (!IsByte(flags)) object.Remark("flags", "0 to 255");
    return BuildFrame(*context.frame, *payload, static_cast<std::uint8_t>(flags));
}

Built BuildConcat(json::Fields& object, RecipeContext& context) {
    const json::Value& parts = object.Inner("concat").Source();
    if (!parts.IsArray()) return Failure{"expected bytes as text, a number array, or an object"};
    Bytes bytes;
    for (std::size_t k = 0; k < parts.items.size(); ++k) {
        const Built built = BuildBytes(object.Item("concat", k), context);
        if (!built) return built;
        bytes.insert(bytes.end(), built->begin(), built->end());
        if (bytes.size() > kMostBytes) return TooLong();
    }
    return bytes;
}

// The inner bytes are built, and draw, once, also when they are not wanted at all.
Built BuildRepeat(json::Fields& object, RecipeContext& context) {
    const Built inner = BuildBytes(object.Inner("repeat"), context);
    if (!inner) return inner;
    Bytes bytes;
    for (int times = object.Number("times", 1); times > 0; --times) {
        bytes.insert(bytes.end(), inner->begin(), inner->end());
        if (bytes.size() > kMostBytes) return TooLong();
        if (inner->empty()) break;
    }
    return bytes;
}

Built BuildWrapped(json::Fields& object, RecipeContext& context) {
    return BuildBytes(object.Inner("bytes"), context);
}

struct Form {
    std::string_view key;
    Built (*build)(json::Fields& object, RecipeContext& context);
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

void Damage(Bytes& bytes, json::Fields& object) {
    for (const json::Value& position : object.List("corrupt")) {
        const bool inside = position.IsNumber() && position.number >= 0 &&
                            position.number < static_cast<double>(bytes.size());
        if (inside) {
            bytes[static_cast<std::size_t>(position.number)] ^= 0x10;
        } else {
            object.Remark("corrupt", "positions inside the bytes");
        }
    }
    const std::int32_t kept = object.Number("truncate", -1);
    const bool shorter = kept >= 0 && static_cast<std::size_t>(kept) < bytes.size();
    if (shorter) bytes.resize(static_cast<std::size_t>(kept));
    if (!shorter && json::Member(object.Source(), "truncate").IsNumber()) {
        object.Remark("truncate", "fewer bytes than there are");
    }
}

}  // namespace

Built BuildBytes(json::Fields recipe, RecipeContext& context) {
    const json::Value& value = recipe.Source();
    if (value.IsString()) return TextBytes(value.string);
    if (value.IsArray()) return BuildArray(recipe);
    if (!value.IsObject()) return Failure{"expected bytes as text, a number array, or an object"};
    const auto form = std::find_if(kForms.begin(), kForms.end(),
                                   [&](const Form& f) { return json::Has(value, f.key); });
    if (form == kForms.end()) {
        return Failure{"bytes need text, hex, random, frame, concat, or repeat"};
    }
    Built built = form->build(recipe, context);
    if (built) Damage(*built, recipe);
    recipe.RemarkUnknown();
    return built;
}

}  // namespace kp
