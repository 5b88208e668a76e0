#include "surroundings.h"

#include <algorithm>
#include <string>

namespace zo::term {
namespace {

bool Has(std::string_view text, std::string_view part) {
    return text.find(part) != text.npos;
}

bool NamesUtf8(std::string_view characters) {
    std::string small(characters);
    std::ranges::transform(small, small.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return Has(small, "utf-8") || Has(small, "utf8");
}

Depth DepthIn(const Surroundings& around) {
    const bool direct = around.colour == "truecolor" || around.colour == "24bit" ||
                        Has(around.term, "direct") || Has(around.term, "truecolor");
    if (direct) return Depth::Direct;
    return Has(around.term, "256color") ? Depth::Palette : Depth::Sixteen;
}

}  // namespace

bool IsUnusable(const Surroundings& around) {
    return around.term.empty() || around.term == "dumb";
}

Abilities AbilitiesIn(const Surroundings& around) {
    return {.depth = DepthIn(around),
            .charset = NamesUtf8(around.characters) ? Charset::Unicode : Charset::Ascii};
}

}  // namespace zo::term
