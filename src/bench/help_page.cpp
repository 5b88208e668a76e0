#include "bench/help_page.h"

#include <algorithm>
#include <cctype>

#include "bench/firmware_colours.h"

namespace Kest {
namespace {

using zo::ui::Role;

std::string Word(std::u16string_view line, const zo::ui::Span& span) {
    std::string word;
    for (const char16_t c : line.substr(static_cast<std::size_t>(span.column),
                                        static_cast<std::size_t>(span.length))) {
        word += static_cast<char>(std::tolower(static_cast<int>(c & 0x7F)));
    }
    return word;
}

}  // namespace

std::string HelpPageAt(std::u16string_view line, int column) {
    std::vector<zo::ui::Span> spans;
    ColourFirmware(line, spans);
    const auto at = std::ranges::find_if(spans, [column](const zo::ui::Span& span) {
        const bool word = span.role == Role::CodeOp || span.role == Role::CodeReg ||
                          span.role == Role::CodeDef || span.role == Role::CodeLabel;
        return word && span.column <= column && column <= span.column + span.length;
    });
    if (at == spans.end()) return {};
    const std::string word = Word(line, *at);
    if (at->role == Role::CodeOp) return "op-" + word;
    if (at->role != Role::CodeReg) return "labels";
    return word == "crc" ? "crc-engine" : "registers";
}

}  // namespace Kest
