#include "sources.h"

#include "base/format.h"

namespace hum {

std::string FaultText(const Fault& fault) {
    return base::Format("%s:%u:%u: %s", fault.name.c_str(), fault.line, fault.column,
                        fault.message.c_str());
}

std::uint32_t ColumnOf(const Tokens& tokens, Spot spot) {
    const std::string_view text = tokens.sources[spot.source].text;
    std::size_t start = spot.offset;
    while (start > 0 && text[start - 1] != '\n') --start;
    return spot.offset - static_cast<std::uint32_t>(start) + 1;
}

Fault FaultAt(const Tokens& tokens, Spot spot, std::string message) {
    return {tokens.sources[spot.source].name, spot.line, ColumnOf(tokens, spot),
            std::move(message)};
}

}  // namespace hum
