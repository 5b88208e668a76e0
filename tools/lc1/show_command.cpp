#include <algorithm>

#include "base/format.h"
#include "base/wrap.h"
#include "campaign_text.h"
#include "commands.h"
#include "subject.h"
#include "text.h"

namespace lc1 {
namespace {

constexpr int kWidth = 76;

void PrintHeading(std::string_view text, bool colour) {
    PutLine();
    PutLine(Inked(text, Ink::Good, colour));
}

void PrintParagraph(const std::string& text, const std::string& margin = {}) {
    for (const std::string& line : base::WrapPlain(text, kWidth)) PutLine(margin + line);
}

void PrintSpaced(const std::string& paragraph) {
    PutLine();
    PrintParagraph(paragraph);
}

std::string RegistersText(const kp::CardConfig& card) {
    std::string text;
    for (int number = kp::kA; number <= kp::kD; ++number) {
        if (!card.HasRegister(number)) continue;
        if (!text.empty()) text += ' ';
        text += kp::kRegisterNames[static_cast<std::size_t>(number)];
    }
    return text.empty() ? "none" : text;
}

std::string UnitsText(const kp::CardConfig& card) {
    const struct {
        bool fitted;
        std::string_view name;
    } units[] = {
        {card.host, "host"}, {card.timer, "timer"}, {card.clock, "clock"}, {card.crc, "CRC"}};
    std::string text;
    for (const auto& unit : units) {
        if (!unit.fitted) continue;
        if (!text.empty()) text += ' ';
        text += unit.name;
    }
    return text.empty() ? "none" : text;
}

void PrintCard(const kp::CardConfig& card, bool colour) {
    TextTable table({{}, {}});
    table.Add({"  ROM", base::Format("%d lines", card.rom)});
    table.Add({"  RAM", base::Format("%d cells", card.ram)});
    table.Add({"  Registers", RegistersText(card)});
    table.Add({"  Units", UnitsText(card)});
    table.Add({"  Receive buffer", base::Format("%d bytes", card.rx_buffer)});
    table.Add({"  Transmitter",
               base::Format(card.tx_gap == 1 ? "%d tick a byte" : "%d ticks a byte", card.tx_gap)});
    table.Add({"  Call stack", base::Format("%d deep", card.stack)});
    table.Print(colour);
}

void PrintTests(const kp::Ticket& ticket, bool colour) {
    TextTable table({{"", TextTable::Align::Right}, {}});
    for (const kp::Test& test : ticket.tests) {
        table.Add(
            {base::Format("  %d", static_cast<int>(&test - ticket.tests.data()) + 1), test.name});
    }
    table.Print(colour);
}

void PrintHints(const kp::Ticket& ticket, std::int32_t count) {
    const std::size_t shown = std::min(ticket.hints.size(), static_cast<std::size_t>(count));
    for (std::size_t k = 0; k < shown; ++k) {
        PrintParagraph(std::to_string(k + 1) + ". " + ticket.hints[k], "  ");
    }
}

}  // namespace

Outcome RunShow(const Request& request) {
    kp::Ticket ticket;
    if (std::optional<Problem> problem = LoadTicket(request, ticket)) return *problem;
    PutLine(ticket.id + "  " + Inked(ticket.title, Ink::Good, request.colour));
    PutLine(ticket.client + "  " + DifficultyText(ticket.difficulty) +
            (ticket.optional ? "  optional" : ""));
    if (!ticket.brief.empty()) PrintParagraph(ticket.brief);
    for (const std::string& paragraph : ticket.text) PrintSpaced(paragraph);
    if (!ticket.note.empty()) PrintSpaced(ticket.note);
    PrintHeading("Card", request.colour);
    PrintCard(ticket.machine, request.colour);
    PrintHeading("Tests", request.colour);
    PrintTests(ticket, request.colour);
    if (request.hints > 0 && !ticket.hints.empty()) {
        PrintHeading("Hints", request.colour);
        PrintHints(ticket, request.hints);
    }
    return ExitCode::Pass;
}

}  // namespace lc1
