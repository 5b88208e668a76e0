#include "screens/pause.h"

#include "base/format.h"
#include "exit.h"
#include "save/achievements.h"
#include "shell/shell.h"
#include "ui/pane.h"

namespace Kest {
namespace {

using zo::ui::Key;

// What the item does; the rows with a place open it.
enum class Deed : std::uint8_t { Resume, Open, Exit };

struct PauseItem {
    std::string_view label;
    std::string_view shortcut;
    std::string_view hint;
    int stage;  // of unlocking, from which the item is offered
    Deed deed;
    Place place;  // that must exist, and is not offered to one who is there
};
constexpr PauseItem kItems[] = {
    {"~R~esume", "Esc", "", 0, Deed::Resume, Place::Pause},  // its hint says to where
    {"Ticket ~b~oard", "Alt+B", "Shifts and tickets.", 1, Deed::Open, Place::Board},
    {"~S~pec binder", "F1", "The LC-1 manual and protocol references.", 1, Deed::Open,
     Place::Binder},
    {"~O~ptions", "", "Sound, display, and play settings.", 0, Deed::Open, Place::Options},
    {"~A~chievements", "", "", 0, Deed::Open, Place::Achievements},  // its hint says how many
    {"~T~itle screen", "", "Saves the firmware.", 0, Deed::Open, Place::Title},
    {"E~x~it to DOS", "Alt+X", "Closes Vantor Kest.", 0, Deed::Exit, Place::Pause},
};

constexpr zo::ui::KeyItem kKeys[] = {
    {.cap = "↑↓", .word = "Choose"},
    {.key = {.key = Key::Enter}, .word = "Open"},
    {.key = {.key = Key::Escape}, .word = "Close"},
};

// An overlay takes the menu's place; a screen that is switched to takes the menu away itself.
void Do(Shell& shell, const PauseItem& item) {
    switch (item.deed) {
        case Deed::Resume:
            shell.CloseOverlay();
            break;
        case Deed::Open:
            shell.Open(item.place);
            break;
        case Deed::Exit:
            AskToExit(shell, "Exit to DOS? Firmware is saved first.");
            break;
    }
}

std::string AchievementsHint(const Shell& shell) {
    return base::Format("What you have earned, %zu of %zu.", shell.Progress().achievements.size(),
                        Achievements().size());
}

bool IsOn(const Shell& shell, std::string_view name) {
    return shell.Current() && shell.Current()->Name() == name;
}

}  // namespace

void Pause::Entered() {
    Fill();
}

// Options may have reset the progress.
void Pause::Uncovered() {
    Fill();
}

void Pause::Fill() {
    const int stage = shell_.Unlocking().Stage();
    const bool on_board = IsOn(shell_, "board");
    std::vector<zo::ui::Menu::Item> items;
    for (const PauseItem& item : kItems) {
        const bool there = on_board && item.place == Place::Board;
        if (stage < item.stage || there || !shell_.Offers(item.place)) continue;
        const std::string_view back = on_board ? "Back to the board." : "Back to the bench.";
        std::string hint(item.deed == Deed::Resume ? back : item.hint);
        if (item.place == Place::Achievements) hint = AchievementsHint(shell_);
        items.push_back(
            {item.label, item.shortcut, std::move(hint), [this, &item] { Do(shell_, item); }});
    }
    menu_.Set(std::move(items));
}

void Pause::Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) {
    const zo::ui::Rect box =
        zo::ui::OverlayRect(canvas.Columns(), canvas.Rows(), zo::ui::Menu::kWidth, menu_.Height());
    zo::ui::DrawOverlay(canvas, box, "MENU");
    menu_.Draw(canvas, pressables, box);
}

void Pause::DescribeFrame(FrameRecord& record) const {
    record.title = "MENU";
    if (const auto* loaded = shell_.Content().FindTicket(shell_.Progress().current)) {
        record.place = loaded->ticket.id.substr(0, 4) + " " + loaded->ticket.title;
    }
    record.right = menu_.ChosenHint();
    record.keys.assign(std::begin(kKeys), std::end(kKeys));
}

}  // namespace Kest
