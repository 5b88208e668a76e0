#include "screens/board.h"

#include <algorithm>

#include "base/format.h"
#include "shell/shell.h"
#include "ticket_facts.h"

namespace Kest {
namespace {

using zo::ui::Align;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::ListRow;
using zo::ui::Paragraph;
using zo::ui::Role;
using zo::ui::RowKind;

constexpr int kBinderStage = 1;  // of unlocking
constexpr std::size_t kNumberLength = 4;
constexpr std::string_view kShiftClosed = "Shift closed.";
constexpr std::string_view kShiftLocked = "Locked. Close more of the shift before.";
constexpr std::string_view kTicketLocked = "Close the ticket before it first.";
constexpr std::string_view kHelpTitle = "Choosing a ticket";
constexpr std::string_view kHelp =
    "SHIFTS lists the shifts, TICKETS the tickets of the chosen shift, TICKET what the chosen "
    "ticket asks for. Tab goes from panel to panel; Enter on an open ticket opens the bench. A "
    "ticket closes when one firmware passes all its tests. You may leave one ticket open behind "
    "you and go on; a ticket marked ■ opens when enough of those before it are closed. At par "
    "means no more ticks and no more lines than the reference; Par lines and Par ticks, that in "
    "one of "
    "them.";

// What the table says of a ticket.
struct StateRow {
    std::string_view status;
    std::string_view mark;
    Role role;  // of the status
};
StateRow RowOfState(TicketState state, bool optional) {
    switch (state) {
        case TicketState::AtPar:
            return {"At par", "√", Role::Ok};
        case TicketState::AtParLines:
            return {"Par lines", "√", Role::Panel};
        case TicketState::AtParTicks:
            return {"Par ticks", "√", Role::Panel};
        case TicketState::Closed:
            return {"Closed", "√", Role::Panel};
        case TicketState::Open:
            return {optional ? "Optional" : "Open", "", Role::Panel};
        default:
            return {"Locked", "", Role::PanelDim};
    }
}

// The words behind its number.
std::string NameOf(const kp::LeftOut& left_out) {
    return left_out.id.substr(std::min(kNumberLength + 1, left_out.id.size()));
}

// Its shift is what the id begins with.
bool IsOfShift(const kp::LeftOut& left_out, const kp::Shift& shift) {
    return left_out.id.starts_with(std::to_string(shift.number) + "-");
}

}  // namespace

std::string_view Board::Entry::Id() const {
    return loaded != nullptr ? loaded->ticket.id : left_out->id;
}

Board::Board(Shell& shell)
    : Screen(shell),
      shifts_({.columns = {{.gap = 1}, {.cells = 13, .align = Align::Right}},
               .marks = true,
               .empty = "No tickets were loaded."}),
      tickets_({.marks = true, .empty = "No tickets were loaded."}) {
    shifts_.chosen = [this] { ShiftWasChosen(); };
    shifts_.open = [this] {
        ChooseFirstOpen();
        focus_.Focus(kTickets);
    };
    tickets_.chosen = [this] { FillTicket(); };
    tickets_.open = [this] { OpenTicket(); };
    for (zo::ui::TextPane* text : {&shift_text_, &facts_, &text_}) {
        text->copy = [this](const std::string& utf8) { shell_.SetClipboardText(utf8); };
    }
}

void Board::Entered() {
    LayOut(shell_.Grid().columns, shell_.Grid().rows);
    FillShifts();
    ChooseCurrent();
    MeetShift();
}

// What is open may have changed under an overlay.
void Board::Uncovered() {
    FillShifts();
    FillTickets();
}

const kp::Shift* Board::ShiftChosen() const {
    const std::vector<kp::Shift>& shifts = shell_.Content().shifts;
    return shifts.empty() ? nullptr : &shifts[static_cast<std::size_t>(shifts_.Chosen())];
}

const Board::Entry* Board::EntryChosen() const {
    return entries_.empty() ? nullptr : &entries_[static_cast<std::size_t>(tickets_.Chosen())];
}

bool Board::IsOpen(const Entry& entry) const {
    return entry.loaded != nullptr && shell_.Unlocking().IsTicketOpen(entry.Id());
}

void Board::FillShifts() {
    const Kest::Unlocking unlocking = shell_.Unlocking();
    std::vector<ListRow> rows;
    for (const kp::Shift& shift : shell_.Content().shifts) {
        const int closed = unlocking.ClosedCount(shift.number);
        const int required = unlocking.RequiredCount(shift.number);
        const bool done = required > 0 && closed == required;
        const bool open = unlocking.IsShiftOpen(shift.number);
        rows.push_back(
            {.cells = {{ShiftName(shift)}, {base::Format("%d of %d closed", closed, required)}},
             .kind = open ? RowKind::Plain : RowKind::Locked,
             .mark = {done ? "√" : "", Role::Ok}});
    }
    shifts_.Set(std::move(rows));
}

// The subtitle gives way where the shift has more to say than fits.
void Board::FillShiftText(const kp::Shift& shift) {
    const Kest::Unlocking unlocking = shell_.Unlocking();
    std::vector<Paragraph> state;
    if (!unlocking.IsShiftOpen(shift.number)) {
        state.push_back({.text = std::string(kShiftLocked)});
    } else if (unlocking.ClosedCount(shift.number) == unlocking.RequiredCount(shift.number)) {
        state.push_back({.text = std::string(kShiftClosed), .role = Role::Ok});
    }
    std::vector<Paragraph> text;
    text.push_back({.text = "Shift " + ShiftName(shift), .role = Role::PanelBright});
    const bool is_tight =
        layout_.totals.Empty() && !state.empty() &&
        state.front().text.size() > static_cast<std::size_t>(layout_.shift_text.width);
    if (!is_tight) text.push_back({.text = shift.subtitle});
    text.insert(text.end(), state.begin(), state.end());
    if (!layout_.totals.Empty()) {
        text.push_back({});
        text.push_back({.text = shift.intro});
    }
    shift_text_.Set(std::move(text));
}

ListRow Board::RowOf(const Entry& entry) const {
    const std::string number(entry.Id().substr(0, kNumberLength));
    if (entry.left_out != nullptr) {
        return {.cells = {{number}, {NameOf(*entry.left_out)}, {}, {}, {}, {"Left out"}},
                .kind = RowKind::Locked};
    }
    const kp::Ticket& ticket = entry.loaded->ticket;
    const TicketState state = StateOf(shell_.Unlocking(), *entry.loaded);
    const StateRow shown = RowOfState(state, ticket.optional);
    std::string lines;
    std::string ticks;
    if (shell_.Progress().IsClosed(ticket.id)) {
        const TicketRecord& record = shell_.Progress().tickets.find(ticket.id)->second;
        lines = std::to_string(record.best_lines);
        ticks = std::to_string(record.best_ticks);
    }
    const bool at_lines = state == TicketState::AtPar || state == TicketState::AtParLines;
    const bool at_ticks = state == TicketState::AtPar || state == TicketState::AtParTicks;
    return {.cells = {{number},
                      {ticket.title},
                      {ticket.client},
                      {lines, at_lines ? std::optional(Role::Ok) : std::nullopt},
                      {ticks, at_ticks ? std::optional(Role::Ok) : std::nullopt},
                      {std::string(shown.status), shown.role}},
            .kind = state == TicketState::Locked ? RowKind::Locked : RowKind::Plain,
            .mark = {std::string(shown.mark), Role::Ok}};
}

std::vector<Board::Entry> Board::EntriesOf(const kp::Shift& shift) const {
    std::vector<Entry> entries;
    for (const kp::LoadedTicket& loaded : shift.tickets) entries.push_back({.loaded = &loaded});
    for (const kp::LeftOut& left_out : shell_.Content().left_out) {
        if (IsOfShift(left_out, shift)) entries.push_back({.left_out = &left_out});
    }
    std::ranges::stable_sort(entries, {}, &Entry::Id);
    return entries;
}

void Board::FillTickets() {
    entries_.clear();
    if (const kp::Shift* shift = ShiftChosen()) {
        entries_ = EntriesOf(*shift);
        FillShiftText(*shift);
    }
    std::vector<ListRow> rows;
    for (const Entry& entry : entries_) rows.push_back(RowOf(entry));
    tickets_.Set(std::move(rows));
    FillTicket();
}

void Board::FillTicket() {
    const kp::Shift* shift = ShiftChosen();
    const Entry* entry = EntryChosen();
    const std::vector<std::string>& problems = shell_.Content().problems;
    std::vector<Paragraph> facts;
    std::vector<Paragraph> text;
    if (entry != nullptr && entry->loaded != nullptr) {
        TicketFacts about = {*entry->loaded, *shift, shell_.Unlocking()};
        if (OffersBinder()) {
            about.open_page = [this](const std::string& page) { OpenPage(page); };
        }
        facts = FactsText(about, layout_.facts_cells > 0 ? FactsForm::Roomy
                                 : layout_.has_brief     ? FactsForm::ShortWithTask
                                                         : FactsForm::Short);
        if (layout_.facts_cells > 0) text = TicketText(entry->loaded->ticket);
    } else if (entry != nullptr) {
        facts.push_back({.text = entry->left_out->id, .role = Role::PanelBright});
        facts.push_back({});
        facts.push_back({.text = "This ticket was left out, since its files have a problem:"});
        facts.push_back({.text = entry->left_out->reason, .role = Role::Warn});
    } else if (!problems.empty()) {
        facts.push_back({.text = problems.front(), .role = Role::Warn});
    }
    facts_.Set(std::move(facts));
    text_.Set(std::move(text));
}

// The shift and the ticket that the player would go on with.
void Board::ChooseCurrent() {
    const kp::LoadedTicket* ticket = shell_.Content().FindTicket(shell_.Progress().current);
    if (ticket == nullptr) ticket = shell_.Unlocking().ContinueTicket();
    const kp::Shift* shift = ticket ? shell_.Content().ShiftOf(ticket->ticket.id) : nullptr;
    if (shift != nullptr) {
        shifts_.Choose(static_cast<int>(shift - shell_.Content().shifts.data()));
    }
    FillTickets();
    if (ticket == nullptr) return;
    const auto entry = std::ranges::find(entries_, ticket, &Entry::loaded);
    tickets_.Choose(static_cast<int>(entry - entries_.begin()));
    FillTicket();
}

void Board::ShiftWasChosen() {
    FillTickets();
    ChooseFirstOpen();
    MeetShift();
}

// Says once what a shift is about, when it has opened. A run that keeps nothing is not stopped by
// it.
void Board::MeetShift() {
    const kp::Shift* shift = ShiftChosen();
    if (shift == nullptr || shift->intro.empty() || !shell_.IsPersistent()) return;
    if (!shell_.Unlocking().IsShiftOpen(shift->number)) return;
    if (!shell_.Progress().shifts_seen.insert(std::to_string(shift->number)).second) return;
    shell_.SaveProgress();
    shell_.Notice("Shift " + ShiftName(*shift), shift->intro);
}

// Of those that are not closed yet; else the first.
void Board::ChooseFirstOpen() {
    const auto entry = std::ranges::find_if(entries_, [this](const Entry& e) {
        return IsOpen(e) && !shell_.Progress().IsClosed(e.Id());
    });
    tickets_.Choose(entry == entries_.end() ? 0 : static_cast<int>(entry - entries_.begin()));
    FillTicket();
}

void Board::OpenTicket() {
    const Entry* entry = EntryChosen();
    if (entry == nullptr) return;
    if (IsOpen(*entry)) {
        shell_.Progress().current = entry->Id();
        shell_.SaveProgress();
        shell_.Open(Place::Bench, entry->Id());
    } else {
        shell_.Sound().Play(Effect::Error);
        shell_.SetStatus(StandingText(), Alert::Yes);
    }
}

bool Board::OffersBinder() const {
    return shell_.Offers(Place::Binder) && shell_.Unlocking().Stage() >= kBinderStage;
}

void Board::OpenBinder() {
    if (OffersBinder()) shell_.Open(Place::Binder);
}

void Board::OpenPage(const std::string& page) {
    shell_.Open(Place::Binder, page);
}

// What Enter would do, or why it would not.
std::string Board::StandingText() const {
    const Entry* entry = EntryChosen();
    if (entry == nullptr) return {};
    if (focus_.Has(kShifts)) {
        const kp::Shift& shift = *ShiftChosen();
        if (!shell_.Unlocking().IsShiftOpen(shift.number)) return std::string(kShiftLocked);
        return "Enter goes to the tickets of shift " + ShiftName(shift) + ".";
    }
    if (entry->left_out != nullptr) return "Left out: " + entry->left_out->reason;
    if (!IsOpen(*entry)) return std::string(kTicketLocked);
    return "Enter opens " + entry->loaded->ticket.title + " on the bench.";
}

std::string_view Board::ChosenHint() const {
    switch (focus_.At()) {
        case kShifts:
            return shifts_.ChosenHint();
        case kTickets:
            return tickets_.ChosenHint();
        default:
            return facts_.ChosenHint();
    }
}

void Board::DescribeFrame(FrameRecord& record) const {
    record.title = "TICKET BOARD";
    const TicketCount count = CountTickets(shell_);
    record.place = base::Format("%d of %d tickets closed", count.closed, count.all);
    record.standing_alert = !shell_.SaveFailure().empty();
    record.standing = record.standing_alert ? shell_.SaveFailure()
                      : IsOnTop()           ? StandingText()
                                            : std::string();
    record.right = ChosenHint();
    const Entry* entry = EntryChosen();
    const bool opens = focus_.Has(kShifts) || (entry != nullptr && IsOpen(*entry));
    record.keys.push_back({.key = {.key = Key::Enter}, .word = "Open", .enabled = opens});
    if (OffersBinder()) record.keys.push_back({.key = {.key = Key::F1}, .word = "Binder"});
    record.keys.push_back({.key = {.key = Key::F10}, .word = "Menu"});
    record.keys.push_back({.key = {.key = Key::Tab}, .word = "Panel"});
}

bool Board::Key(const KeyPress& key) {
    if (key.Is(Key::F10) || key.Is(Key::Escape)) {
        shell_.Open(Place::Pause);
    } else if (key.Is(Key::F1)) {
        OpenBinder();
    } else if (key.key == Key::F1 && key.with == zo::ui::Modifiers{.shift = true}) {
        shell_.Notice(std::string(kHelpTitle), std::string(kHelp));
    } else {
        return focus_.Key(key) || KeyInPane(key);
    }
    return true;
}

// A shift is gone to with its tickets, so that one number can tell all three apart.
int Board::Highlight() const {
    constexpr int kMostRows = 100;
    return (focus_.At() * kMostRows + shifts_.Chosen()) * kMostRows + tickets_.Chosen();
}

bool Board::KeyInPane(const KeyPress& key) {
    switch (focus_.At()) {
        case kShifts:
            if (!key.Is(Key::Right)) return shifts_.Key(key);
            shifts_.open();
            return true;
        case kTickets:
            if (!key.Is(Key::Left)) return tickets_.Key(key);
            focus_.Focus(kShifts);
            return true;
        default:
            break;
    }
    // Of the two columns the facts have the links, and the text is the longer one.
    zo::ui::TextPane& longer = text_.View().Needed() ? text_ : facts_;
    if (facts_.LinkKey(key) || longer.Key(key) || facts_.Key(key)) return true;
    if (!key.Is(Key::Enter)) return false;
    OpenTicket();
    return true;
}

bool Board::CaptureRequest(std::string_view request) {
    const auto choose_locked = [this] {
        const auto locked = std::ranges::find_if_not(
            entries_, [this](const Entry& entry) { return IsOpen(entry); });
        if (locked == entries_.end()) return;
        tickets_.Choose(static_cast<int>(locked - entries_.begin()));
        FillTicket();
    };
    if (request == "locked") {
        choose_locked();
    } else if (request == "shifts") {
        focus_.Focus(kShifts);
        shifts_.Choose(shifts_.Count() - 1);
        ShiftWasChosen();
    } else if (request == "ticket") {
        focus_.Focus(kTicket);
    } else if (request == "intro" && ShiftChosen() != nullptr) {
        shell_.Notice("Shift " + ShiftName(*ShiftChosen()), ShiftChosen()->intro);
    } else if (request == "help") {
        shell_.Notice(std::string(kHelpTitle), std::string(kHelp));
    } else {
        return false;
    }
    return true;
}

}  // namespace Kest
