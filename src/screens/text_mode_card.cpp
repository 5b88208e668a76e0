#include "screens/text_mode_card.h"

#include <algorithm>
#include <span>

#include "base/format.h"
#include "display_choices.h"
#include "ui/button.h"
#include "ui/key_grammar.h"
#include "ui/pane.h"
#include "ui/radio_row.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;
using zo::ui::Style;

constexpr int kWidth = 78;
constexpr int kHeight = 20;

// Columns and rows of the box.
constexpr int kPointerAt = 1;
constexpr int kNameAt = 3;
constexpr int kValueAt = 15;
constexpr int kGridAt = 55;
constexpr int kTextRow = 2;
constexpr int kChoicesRow = 5;
constexpr int kSamplesRow = 9;
constexpr int kButtonRow = 18;

constexpr DisplayChoice (*kChoiceOf[])(const Shell& shell) = {LookChoice, ThemeChoice,
                                                              TextSizeChoice};

constexpr std::string_view kText[] = {
    "The bench draws everything in character cells. Choose what reads best;",
    "Options can change it at any time.",
};

// A piece of a sample, in the role that it is there to show.
struct Piece {
    std::string_view text;
    Role role = Role::Dialog;
    Style style = Style::Plain;
};
struct Sample {
    std::string_view name;
    std::span<const Piece> pieces;
};

constexpr Piece kLetters[] = {{"ABCDEFGHIJKLMNOPQRSTUVWXYZ  abcdefghijklmnopqrstuvwxyz"}};
constexpr Piece kDigits[] = {{"0123456789  0O 1lI 5S 8B  $%#&@ .,:;!? '\" ()[]{}<> +-*/=_|"}};
constexpr Piece kLines[] = {{"┌──┬──┐ ╔══╦══╗  ░▒▓█ ▀▄▌▐  ■ √ • · ♦ ► ◄ ▲ ▼ « » ← ↑ → ↓ ¶"}};
constexpr Piece kControls[] = {{"├──┼──┤ ╠══╬══╣  "},
                               {"[Reset]", Role::Button},
                               {" "},
                               {"►Step◄", Role::ButtonFocus},
                               {"  [√] [ ]  (•) ( )"}};
constexpr Piece kWords[] = {{"normal", Role::Panel},
                            {"  ", Role::Panel},
                            {"dim", Role::PanelDim},
                            {"  ", Role::Panel},
                            {"bright", Role::PanelBright},
                            {"  ", Role::Panel},
                            {"hotkey", Role::PanelHot, Style::Underline},
                            {"  ", Role::Panel},
                            {"link", Role::Link, Style::Underline},
                            {"  ", Role::Panel},
                            {"√ passed", Role::Ok},
                            {"  ", Role::Panel},
                            {"! failed", Role::Fault}};
constexpr Piece kCode[] = {{"loop", Role::CodeLabel},
                           {":", Role::CodePunct},
                           {"  ", Role::Code},
                           {"rx", Role::CodeOp},
                           {" ", Role::Code},
                           {"a", Role::CodeReg},
                           {",", Role::CodePunct},
                           {" ", Role::Code},
                           {"late", Role::CodeLabel},
                           {"   ", Role::Code},
                           {"; comment", Role::CodeNote},
                           {"   ", Role::Code},
                           {"def", Role::CodeDef},
                           {" ACK ", Role::Code},
                           {"$06", Role::CodeNum},
                           {"  ", Role::Code},
                           {"mov", Role::CodeOp},
                           {" ", Role::Code},
                           {"b", Role::CodeReg},
                           {",", Role::CodePunct},
                           {" ", Role::Code},
                           {"'A'", Role::CodeStr}};
constexpr Piece kTrace[] = {
    {"$C1 ", Role::LaneTx},    {"67", Role::LaneAlt},    {" •■  ", Role::LaneRx},
    {"[   ]", Role::LaneTime}, {"  ", Role::Lane},       {"├────┤", Role::LaneTime},
    {"  ", Role::Lane},        {"█████", Role::LaneRun}, {"▄▄▄▄░░░░", Role::LaneWait}};
constexpr Sample kSamples[] = {
    {"Letters", kLetters}, {"Digits", kDigits}, {"Lines", kLines}, {"", kControls},
    {"Text", kWords},      {"Code", kCode},     {"Trace", kTrace},
};

constexpr zo::ui::KeyItem kKeys[] = {
    {.cap = "↑↓", .word = "Choose"},
    {.cap = "←→", .word = "Change"},
    {.key = {.key = Key::Enter}, .word = "Continue"},
};

}  // namespace

// Whoever has met it once is not stopped by it again.
void TextModeCard::Entered() {
    bool& seen = shell_.Progress().title_card_seen;
    if (seen || !shell_.IsPersistent()) return;
    seen = true;
    shell_.SaveProgress();
}

void TextModeCard::Draw(Canvas& canvas, Pressables& pressables) {
    const Rect box = zo::ui::OverlayRect(canvas.Columns(), canvas.Rows(), kWidth, kHeight);
    zo::ui::DrawOverlay(canvas, box, "TEXT MODE");
    int y = box.y + kTextRow;
    for (const std::string_view line : kText) {
        canvas.Text(box.x + kNameAt, y++, line, Role::Dialog);
    }
    for (int row = 0; row < kChoices; ++row) {
        DrawChoice(canvas, pressables, {box.x + 1, box.y + kChoicesRow + row, box.width - 2, 1},
                   row);
    }
    y = box.y + kSamplesRow;
    for (const Sample& sample : kSamples) {
        canvas.Text(box.x + kNameAt, y, sample.name, Role::Dialog);
        int x = box.x + kValueAt;
        for (const Piece& piece : sample.pieces) {
            x = canvas.Text(x, y, piece.text, piece.role, piece.style);
        }
        ++y;
    }
    const zo::ui::Button button = {
        .label = "Continue", .form = zo::ui::ButtonForm::Flat, .focused = chosen_ == kContinue};
    const int x = box.x + (box.width - ButtonCells(button)) / 2;
    DrawButton(canvas, pressables, {x, box.y + kButtonRow}, button,
               [this] { shell_.CloseOverlay(); });
}

void TextModeCard::DrawChoice(Canvas& canvas, Pressables& pressables, const Rect& at, int row) {
    const DisplayChoice choice = kChoiceOf[row](shell_);
    const bool chosen = row == chosen_;
    const auto state = chosen ? zo::ui::RowState::Chosen : zo::ui::RowState::Plain;
    const zo::ui::Surface& surface = zo::ui::RowSurface(state, zo::ui::kOnDialog);
    pressables.Add(at, chosen ? std::string_view() : choice.explanation).focus = [this, row] {
        chosen_ = row;
    };
    const int x = at.x - 1;  // the box's
    canvas.Fill(at, U' ', surface.text);
    if (chosen) canvas.Put(x + kPointerAt, at.y, U'►', surface.text);
    canvas.Text(x + kNameAt, at.y, zo::ui::Label(choice.label), surface.text, surface.hot);
    DrawRadioRow(canvas, pressables, {x + kValueAt, at.y},
                 {.labels = choice.values,
                  .chosen = choice.chosen,
                  .least_cells = choice.least_cells,
                  .surface = surface},
                 [this, row](int value) { Choose(row, value); });
    if (row != kChoices - 1) return;
    const zo::ui::Grid& grid = shell_.Grid();
    canvas.Text(x + kGridAt, at.y, base::Format("%d x %d cells", grid.columns, grid.rows),
                surface.dim);
}

void TextModeCard::DescribeFrame(FrameRecord& record) const {
    record.title = "TEXT MODE";
    record.standing = kChoiceOf[chosen_ % kChoices](shell_).explanation;
    record.standing_alert = false;
    record.keys.assign(std::begin(kKeys), std::end(kKeys));
}

void TextModeCard::Choose(int row, int value) {
    const DisplayChoice choice = kChoiceOf[row](shell_);
    ChangeAloud(shell_, [&](Settings& settings) { choice.set(settings, value); });
}

bool TextModeCard::MoveKey(const KeyPress& key) {
    constexpr int kStops = kChoices + 1;
    if (const int step = zo::ui::TabStepOf(key); step != 0) {
        chosen_ = (chosen_ + kStops + step) % kStops;
    } else if (key.Is(Key::Up)) {
        chosen_ = std::max(chosen_ - 1, 0);
    } else if (key.Is(Key::Down)) {
        chosen_ = std::min(chosen_ + 1, kContinue);
    } else if (key.Is(Key::Home) || key.Is(Key::PageUp)) {
        chosen_ = 0;
    } else if (key.Is(Key::End) || key.Is(Key::PageDown)) {
        chosen_ = kContinue;
    } else {
        return false;
    }
    return true;
}

bool TextModeCard::Key(const KeyPress& key) {
    const char32_t letter = zo::ui::LetterOf(key);
    const bool on_button = chosen_ == kContinue;
    if (key.Is(Key::Enter) || key.Is(Key::Escape) || (on_button && letter == U' ')) {
        shell_.CloseOverlay();
        return true;
    }
    if (MoveKey(key)) return true;
    if (letter == U' ' && !on_button) {
        const DisplayChoice choice = kChoiceOf[chosen_](shell_);
        Choose(chosen_, (choice.chosen + 1) % static_cast<int>(choice.values.size()));
        return true;
    }
    const int step = zo::ui::StepOf(key);
    if (step == 0 || on_button) return LetterKey(letter);
    const DisplayChoice choice = kChoiceOf[chosen_](shell_);
    const int last = static_cast<int>(choice.values.size()) - 1;
    const int to = std::clamp(choice.chosen + step, 0, last);
    if (to != choice.chosen) Choose(chosen_, to);
    return true;
}

// The letters of the values choose, those of the rows go on to the next value.
bool TextModeCard::LetterKey(char32_t letter) {
    for (int row = 0; letter != 0 && row < kChoices; ++row) {
        const DisplayChoice choice = kChoiceOf[row](shell_);
        const int count = static_cast<int>(choice.values.size());
        std::optional<int> value =
            zo::ui::RadioLetter({.labels = choice.values, .chosen = choice.chosen},
                                {.key = Key::Character, .character = letter});
        if (zo::ui::Label(choice.label).Hotkey() == letter) value = (choice.chosen + 1) % count;
        if (!value) continue;
        chosen_ = row;
        Choose(row, *value);
        return true;
    }
    return false;
}

}  // namespace Kest
