#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/shell.h"
#include "ui/text_layout.h"

namespace Kest {

// Par is no more ticks and no more lines than the reference, in the player's bests; it may be
// reached in one of them alone.
enum class TicketState : std::uint8_t { Locked, Open, Closed, AtParLines, AtParTicks, AtPar };
TicketState StateOf(const Unlocking& unlocking, const kp::LoadedTicket& loaded);

struct TicketCount {
    int closed = 0;
    int all = 0;
};
TicketCount CountTickets(const Shell& shell);

std::string ShiftName(const kp::Shift& shift);  // "4 Delivery"
// "182 ticks, 9 lines".
std::string ScoresText(int ticks, int lines);
// Five signs, so many of them filled.
std::string RatingText(int difficulty);

// What the board tells of a ticket.
struct TicketFacts {
    const kp::LoadedTicket& loaded;
    const kp::Shift& shift;
    const Unlocking& unlocking;
    // Opens a page of the binder; without it none is named.
    std::function<void(const std::string& page)> open_page = {};
};
enum class FactsForm : std::uint8_t {
    Short,          // in as few rows as there may be
    ShortWithTask,  // the task and the pages behind them
    Roomy,          // a row to a fact, the pages behind them; the task stands elsewhere
};
std::vector<zo::ui::Paragraph> FactsText(const TicketFacts& facts, FactsForm form);
// The task, the ticket's text and the names of its tests.
std::vector<zo::ui::Paragraph> TicketText(const kp::Ticket& ticket);

}  // namespace Kest
