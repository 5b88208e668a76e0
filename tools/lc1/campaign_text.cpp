#include "campaign_text.h"

#include "base/format.h"
#include "text.h"

namespace lc1 {
namespace {

constexpr int kMostDifficult = 5;

}  // namespace

std::string DifficultyText(int difficulty) {
    std::string text;
    for (int k = 1; k <= kMostDifficult; ++k) text += k <= difficulty ? "♦" : "·";
    return text;
}

void PrintCampaign(const kp::Content& content, bool colour) {
    using enum TextTable::Align;
    TextTable table({{"ticket"}, {"title"}, {"client"}, {""}, {"lines", Right}, {"ticks", Right}});
    for (const kp::Shift& shift : content.shifts) {
        table.Add({base::Format("Shift %d, ", shift.number) + shift.title, "", "", "", "", ""},
                  Ink::Good);
        for (const kp::LoadedTicket& loaded : shift.tickets) {
            const kp::Ticket& ticket = loaded.ticket;
            table.Add({"  " + ticket.id, ticket.title, ticket.client,
                       DifficultyText(ticket.difficulty), std::to_string(loaded.reference.lines),
                       std::to_string(loaded.reference.ticks)});
        }
    }
    table.Print(colour);
}

}  // namespace lc1
