#include "ticket_facts.h"

#include "base/format.h"

namespace Kest {
namespace {

using zo::ui::Paragraph;
using zo::ui::Role;
using zo::ui::Wrap;

constexpr int kNameCells = 11;
constexpr std::string_view kNone = "none";
constexpr std::string_view kPointer = "►";  // before what leads elsewhere
constexpr std::string_view kLockedText = "Close the ticket before this one to open it.";

std::string OrNone(std::string text) {
    return text.empty() ? std::string(kNone) : text;
}

std::string UnitsText(const kp::CardConfig& card) {
    const struct {
        bool has;
        std::string_view name;
    } units[] = {
        {card.host, "host"}, {card.timer, "timer"}, {card.clock, "clock"}, {card.crc, "CRC"}};
    std::string text;
    for (const auto& unit : units) {
        if (!unit.has) continue;
        if (!text.empty()) text += ", ";
        text += unit.name;
    }
    return text;
}

std::string RegistersText(const kp::CardConfig& card) {
    std::string text;
    for (int number = 0; number < 4; ++number) {
        if (!card.HasRegister(number)) continue;
        if (!text.empty()) text += ' ';
        text += static_cast<char>('a' + number);
    }
    return text;
}

std::string SizeText(int size) {
    return size > 0 ? std::to_string(size) : std::string(kNone);
}

std::string BestText(const Unlocking& unlocking, const kp::Ticket& ticket) {
    if (!unlocking.progress.IsClosed(ticket.id)) return {};
    const TicketRecord& record = unlocking.progress.tickets.find(ticket.id)->second;
    return ScoresText(record.best_ticks, record.best_lines);
}

std::string StatusText(TicketState state, bool optional) {
    const std::string_view text = state == TicketState::AtPar        ? "Closed at par"
                                  : state == TicketState::AtParLines ? "Closed, par in lines"
                                  : state == TicketState::AtParTicks ? "Closed, par in ticks"
                                  : state == TicketState::Closed     ? "Closed"
                                                                     : "Not closed";
    return std::string(text) + (optional ? ", optional" : "");
}

Paragraph Fact(std::string_view name, std::string value, Role role = Role::Panel) {
    std::string label(name);
    label.resize(kNameCells, ' ');
    return {.text = OrNone(std::move(value)), .role = role, .label = std::move(label)};
}

// Two short facts in one row.
Paragraph TwoFacts(std::string_view name, std::string value, std::string_view other,
                   const std::string& other_value) {
    constexpr std::size_t kOtherAt = 13;
    constexpr std::size_t kOtherNameCells = 7;
    Paragraph row = Fact(name, std::move(value));
    row.text.resize(kOtherAt, ' ');
    row.text += other;
    row.spans.push_back({kOtherAt, row.text.size(), Role::PanelDim});
    row.text.resize(kOtherAt + kOtherNameCells, ' ');
    row.text += other_value;
    row.wrap = Wrap::Kept;
    return row;
}

// A page in each row, under the name of the first.
void AddPages(std::vector<Paragraph>& text, const TicketFacts& facts) {
    if (!facts.open_page) return;
    bool first = true;
    for (const std::string& id : facts.loaded.ticket.binder) {
        const kp::BinderPage* page = facts.unlocking.content.FindPage(id);
        if (page == nullptr) continue;
        if (first) text.push_back({});
        Paragraph row = Fact(first ? "Binder" : "", std::string(kPointer) + page->title);
        row.spans.push_back({0, kPointer.size(), Role::Link});
        row.links.push_back({.from = kPointer.size(),
                             .to = row.text.size(),
                             .hint = "A binder page.",
                             .act = [open = facts.open_page, id] { open(id); }});
        text.push_back(std::move(row));
        first = false;
    }
}

// With the rating behind it, or at the right.
Paragraph TitleOf(const kp::Ticket& ticket, bool roomy) {
    const std::string rating = RatingText(ticket.difficulty);
    if (!roomy) {
        return {.text = ticket.title,
                .role = Role::PanelBright,
                .label_role = Role::Panel,
                .right = rating};
    }
    const std::string title = ticket.title + "  ";
    return {.text = title + rating, .spans = {{0, title.size(), Role::PanelBright}}};
}

template <class Room>
void AddStatus(std::vector<Paragraph>& text, const TicketFacts& facts, Room room) {
    const TicketState state = StateOf(facts.unlocking, facts.loaded);
    const Role role = state == TicketState::AtPar ? Role::Ok : Role::Panel;
    text.push_back(Fact("Status", StatusText(state, facts.loaded.ticket.optional), role));
    if (state != TicketState::Locked) return;
    room();
    text.push_back({.text = std::string(kLockedText)});
}

}  // namespace

TicketState StateOf(const Unlocking& unlocking, const kp::LoadedTicket& loaded) {
    const std::string& id = loaded.ticket.id;
    if (!unlocking.progress.IsClosed(id)) {
        return unlocking.IsTicketOpen(id) ? TicketState::Open : TicketState::Locked;
    }
    const TicketRecord& record = unlocking.progress.tickets.find(id)->second;
    const bool ticks = record.best_ticks <= static_cast<int>(loaded.reference.ticks);
    const bool lines = record.best_lines <= loaded.reference.lines;
    if (ticks && lines) return TicketState::AtPar;
    if (lines) return TicketState::AtParLines;
    return ticks ? TicketState::AtParTicks : TicketState::Closed;
}

TicketCount CountTickets(const Shell& shell) {
    TicketCount count;
    for (const kp::LoadedTicket* loaded : shell.Content().Tickets()) {
        ++count.all;
        if (shell.Progress().IsClosed(loaded->ticket.id)) ++count.closed;
    }
    return count;
}

std::string ShiftName(const kp::Shift& shift) {
    return std::to_string(shift.number) + " " + shift.title;
}

std::string ScoresText(int ticks, int lines) {
    return base::Format("%d %s, %d %s", ticks, ticks == 1 ? "tick" : "ticks", lines,
                        lines == 1 ? "line" : "lines");
}

std::string RatingText(int difficulty) {
    std::string marks;
    for (int k = 1; k <= 5; ++k) marks += k <= difficulty ? "♦" : "·";
    return marks;
}

std::vector<Paragraph> FactsText(const TicketFacts& facts, FactsForm form) {
    const kp::Ticket& ticket = facts.loaded.ticket;
    const kp::CardConfig& card = ticket.machine;
    const bool roomy = form == FactsForm::Roomy;
    std::vector<Paragraph> text;
    const auto room = [&] {
        if (roomy) text.push_back({});
    };
    text.push_back(TitleOf(ticket, roomy));
    room();
    text.push_back(Fact("Shift", ShiftName(facts.shift)));
    text.push_back(Fact("Device", ticket.client));
    text.push_back(Fact("Units", UnitsText(card)));
    text.push_back(Fact("Registers", RegistersText(card)));
    if (roomy) {
        text.push_back(Fact("ROM", SizeText(card.rom)));
        text.push_back(Fact("RAM", SizeText(card.ram)));
    } else {
        text.push_back(TwoFacts("ROM", SizeText(card.rom), "RAM", SizeText(card.ram)));
    }
    text.push_back(Fact("Tests", std::to_string(ticket.tests.size())));
    text.push_back(Fact("Best", BestText(facts.unlocking, ticket)));
    const kp::Reference& reference = facts.loaded.reference;
    text.push_back(
        Fact("Reference", ScoresText(static_cast<int>(reference.ticks), reference.lines)));
    AddStatus(text, facts, room);
    if (form == FactsForm::Short) return text;
    if (form == FactsForm::ShortWithTask) {
        text.push_back({});
        text.push_back({.text = ticket.brief, .wrap = Wrap::Even});
    }
    AddPages(text, facts);
    return text;
}

std::vector<Paragraph> TicketText(const kp::Ticket& ticket) {
    std::vector<Paragraph> text;
    text.push_back({.text = ticket.brief, .wrap = Wrap::Even});
    for (const std::string& paragraph : ticket.text) {
        text.push_back({});
        text.push_back({.text = paragraph});
    }
    if (!ticket.note.empty()) {
        text.push_back({});
        text.push_back({.text = ticket.note});
    }
    text.push_back({});
    text.push_back({.text = "Tests", .role = Role::PanelDim});
    for (std::size_t k = 0; k < ticket.tests.size(); ++k) {
        text.push_back({.text = ticket.tests[k].name, .label = base::Format("%2zu  ", k + 1)});
    }
    return text;
}

}  // namespace Kest
