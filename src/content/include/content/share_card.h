#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "content/content.h"

namespace kp {

// A closed ticket as plain text, to be handed on in a chat or a mail.
struct ShareCard {
    std::string ticket;  // its id
    int lines = 0;
    std::uint32_t ticks = 0;
    std::uint32_t check = 0;  // of the firmware, as FirmwareCheck gives it
    std::string firmware;
};

// CRC-32 (ISO 3309, polynomial 0xEDB88320) of the firmware without what means nothing: rows
// trimmed, of ">" at their ends too, blanks in a row as one, empty rows left out.
std::uint32_t FirmwareCheck(std::string_view firmware);

// Every firmware line stands behind a "|", so that it can be told apart when line ends are lost.
std::string WriteShareCard(const Ticket& ticket, int lines, std::uint32_t ticks,
                           std::string_view firmware);

// The card in a text, whatever was done to its blanks and line ends on its way, with quotation
// marks before its rows or other text around it. Nothing when there is none.
std::optional<ShareCard> ReadShareCard(std::string_view text);

// What a card's claim comes to when its firmware is verified.
struct CardProof {
    bool holds = false;
    std::string sentence;
};
CardProof ProveCard(const ShareCard& card, const LoadedTicket& loaded, Session& session);

}  // namespace kp
