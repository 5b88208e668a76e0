#include "screens/title.h"

#include "exit.h"
#include "logo.h"
#include "shell/shell.h"
#include "ui/pane.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Key;
using zo::ui::Rect;
using zo::ui::Role;

struct TitleItem {
    std::string_view label;
    std::string_view shortcut;
    std::string_view hint;
    int stage;    // of unlocking, from which the item is offered
    Place place;  // that must exist; Place::Title for the way out
};
constexpr TitleItem kItems[] = {
    {"~C~ontinue", "", "", 0, Place::Bench},  // its hint names the ticket
    {"Ticket ~b~oard", "", "Shifts and tickets.", 1, Place::Board},
    {"~S~pec binder", "", "The LC-1 manual and protocol references.", 1, Place::Binder},
    {"~O~ptions", "", "Sound, display, and play settings.", 0, Place::Options},
    {"C~r~edits", "", "Credits and license notices.", 3, Place::Credits},
    {"E~x~it to DOS", "Alt+X", "Closes Vantor Kest.", 0, Place::Title},
};

constexpr zo::ui::KeyItem kKeys[] = {
    {.cap = "↑↓", .word = "Choose"},
    {.key = {.key = Key::Enter}, .word = "Open"},
    {.key = {.key = Key::Character, .character = U'x', .with = {.alt = true}}, .word = "Exit"},
    {.key = {.key = Key::F11}, .word = "Full screen"},
};

void Choose(Shell& shell, Place place) {
    if (place == Place::Title) {
        AskToExit(shell, "Exit to DOS?");
    } else if (place == Place::Bench) {
        const kp::LoadedTicket* ticket = shell.Unlocking().ContinueTicket();
        shell.Open(place, ticket ? ticket->ticket.id : std::string());
    } else {
        shell.Open(place);
    }
}

}  // namespace

// A player who is here for the first time chooses first what reads best.
void Title::Entered() {
    Fill();
    if (!shell_.IsPersistent() || shell_.Progress().title_card_seen) return;
    shell_.Open(Place::TextMode);
}

// What the options change may change what is offered.
void Title::Uncovered() {
    Fill();
}

void Title::Fill() {
    const int stage = shell_.Unlocking().Stage();
    std::vector<zo::ui::Menu::Item> items;
    for (const TitleItem& item : kItems) {
        if (stage < item.stage || !shell_.Offers(item.place)) continue;
        const std::string hint = item.hint.empty() ? ContinueHint() : std::string(item.hint);
        items.push_back({item.label, item.shortcut, hint,
                         [this, place = item.place] { Choose(shell_, place); }});
    }
    menu_.Set(std::move(items));
}

std::string Title::ContinueHint() const {
    const kp::LoadedTicket* current = shell_.Content().FindTicket(shell_.Progress().current);
    return current ? "Opens " + current->ticket.title + " on the bench." : "Opens the bench.";
}

void Title::Draw(Canvas& canvas, zo::ui::Pressables& pressables) {
    DrawName(canvas);
    const NamePlace place(canvas.Columns(), canvas.Rows());
    const int width = zo::ui::Menu::kWidth;
    const Rect box = {(canvas.Columns() - width) / 2, place.menu, width, menu_.Height()};
    zo::ui::DrawDialog(canvas, box, "MENU");
    menu_.Draw(canvas, pressables, box);
}

// What a failed save said stands here until the next save works.
void Title::DescribeFrame(FrameRecord& record) const {
    record.standing_alert = !shell_.SaveFailure().empty();
    record.standing = record.standing_alert ? shell_.SaveFailure()
                      : IsOnTop()           ? std::string(menu_.ChosenHint())
                                            : std::string();
    record.keys.assign(std::begin(kKeys), std::end(kKeys));
    if (shell_.InCells()) record.keys.pop_back();  // a terminal is as large as its own window
}

}  // namespace Kest
