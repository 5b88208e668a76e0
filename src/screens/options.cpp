#include "screens/options.h"

#include <algorithm>
#include <cstdlib>

#include "option_rows.h"
#include "ui/button.h"
#include "ui/key_grammar.h"
#include "ui/pane.h"

namespace Kest {
namespace {

using zo::ui::Canvas;
using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Label;
using zo::ui::Lines;
using zo::ui::Pressables;
using zo::ui::Rect;
using zo::ui::Role;

constexpr int kWideColumns = 142;
constexpr int kWideRows = 24;
constexpr int kNarrowRows = 22;
constexpr int kMostNarrowColumns = 100;
constexpr int kBarRows = 3;

// Columns of the box.
constexpr int kPointerAt = 1;
constexpr int kGroupAt = 3;
constexpr int kLabelAt = 12;
constexpr int kWideLabelAt = 13;
constexpr int kControlAt = 33;
constexpr int kExplanationAt = 73;

constexpr std::string_view kClose = "Close";
constexpr double kRestSeconds = 0.4;

constexpr zo::ui::KeyItem kKeys[] = {
    {.cap = "↑↓", .word = "Choose"},
    {.cap = "←→", .word = "Change"},
    {.key = {.key = Key::Character, .character = U' '}, .word = "On/Off"},
    {.key = {.key = Key::Enter}, .word = "Do"},
    {.key = {.key = Key::Escape}, .word = "Close"},
};

int Count() {
    return static_cast<int>(OptionRows().size());
}

const OptionRow& RowAt(int index) {
    return OptionRows()[static_cast<std::size_t>(index)];
}

}  // namespace

Options::Options(Shell& shell, std::string_view row)
    : Screen(shell), chosen_(std::clamp(std::atoi(std::string(row).c_str()), 1, Count()) - 1) {}

void Options::Entered() {
    volumes_ = VolumesNow();
}

Options::Volumes Options::VolumesNow() const {
    return {shell_.Settings().effects_volume, shell_.Settings().line_volume};
}

// Every step of a slider puts the tone off.
void Options::Update(double now) {
    if (VolumesNow() != volumes_) {
        volumes_ = VolumesNow();
        tone_at_ = now + kRestSeconds;
    }
    if (!tone_at_ || now < *tone_at_) return;
    tone_at_.reset();
    shell_.Sound().Play(Effect::TestTone);
}

// Where the pointer can stand.
int Options::Stops() const {
    return Count() + (wide_ ? 1 : 0);
}

void Options::Close() {
    shell_.CloseOverlay();
}

void Options::Draw(Canvas& canvas, Pressables& pressables) {
    wide_ = canvas.Columns() >= kWideColumns && canvas.Rows() >= kWideRows + kBarRows;
    chosen_ = std::min(chosen_, Stops() - 1);
    const int width = wide_ ? kWideColumns : std::min(canvas.Columns(), kMostNarrowColumns);
    const Rect box = zo::ui::OverlayRect(canvas.Columns(), canvas.Rows(), width,
                                         wide_ ? kWideRows : kNarrowRows);
    zo::ui::DrawOverlay(canvas, box, "OPTIONS");
    int y = box.y + 1;
    for (int index = 0; index < Count(); ++index) {
        if (index > 0 && !RowAt(index).group.empty()) {
            canvas.Separator(box, y++, Lines::Double, Role::DialogFrame);
        }
        DrawRow(canvas, pressables, {box.x + 1, y++, box.width - 2, 1}, index);
    }
    if (!wide_) return;
    canvas.Separator(box, y, Lines::Double, Role::DialogFrame);
    DrawClose(canvas, pressables, box);
}

void Options::DrawRow(Canvas& canvas, Pressables& pressables, const Rect& at, int index) {
    const OptionRow& row = RowAt(index);
    const bool chosen = index == chosen_;
    const auto state = chosen ? zo::ui::RowState::Chosen : zo::ui::RowState::Plain;
    const zo::ui::Surface& plain = zo::ui::RowSurface(state, zo::ui::kOnDialog);
    const zo::ui::Surface off = {plain.off, plain.off, plain.off, plain.off};
    const zo::ui::Surface& surface = IsAvailable(row, shell_) ? plain : off;
    const std::string explanation = ExplanationOf(row, shell_);

    const bool is_told = wide_ || chosen;
    zo::ui::Pressable& entry = pressables.Add(at, is_told ? std::string_view() : explanation);
    entry.focus = [this, index] { chosen_ = index; };
    const bool switches = row.choice == nullptr && row.kind != OptionKind::Speed;
    if (switches) entry.act = [this, &row] { DoOption(row, shell_); };

    const int x = at.x - 1;  // the box's
    canvas.Fill(at, U' ', surface.text);
    if (chosen) canvas.Put(x + kPointerAt, at.y, U'►', surface.text);
    canvas.Text(x + kGroupAt, at.y, row.group, plain.dim);
    canvas.Text(x + (wide_ ? kWideLabelAt : kLabelAt), at.y, Label(LabelOf(row, shell_)),
                surface.text, surface.hot);
    DrawOptionControl(canvas, pressables, {x + kControlAt, at.y}, row, shell_, surface);
    if (wide_) canvas.Text(x + kExplanationAt, at.y, explanation, surface.dim);
}

void Options::DrawClose(Canvas& canvas, Pressables& pressables, const Rect& box) {
    zo::ui::Button button = {
        .label = kClose, .form = zo::ui::ButtonForm::Flat, .focused = chosen_ == Count()};
    const int x = box.Right() - 3 - ButtonCells(button);
    DrawButton(canvas, pressables, {x, box.Bottom() - 2}, button, [this] { Close(); });
}

// The rows explain themselves where there is room; else the status line explains the chosen one.
void Options::DescribeFrame(FrameRecord& record) const {
    record.title = "OPTIONS";
    if (const auto* loaded = shell_.Content().FindTicket(shell_.Progress().current)) {
        record.place = loaded->ticket.title;
    }
    if (!wide_) {
        record.standing = ExplanationOf(RowAt(chosen_), shell_);
        record.standing_alert = false;
    }
    record.keys.assign(std::begin(kKeys), std::end(kKeys));
}

bool Options::MoveKey(const KeyPress& key) {
    const int last = Stops() - 1;
    if (const int step = zo::ui::TabStepOf(key); step != 0) {
        chosen_ = (chosen_ + Stops() + step) % Stops();
    } else if (key.Is(Key::Up)) {
        chosen_ = std::max(chosen_ - 1, 0);
    } else if (key.Is(Key::Down)) {
        chosen_ = std::min(chosen_ + 1, last);
    } else if (key.Is(Key::Home) || key.Is(Key::PageUp)) {
        chosen_ = 0;
    } else if (key.Is(Key::End) || key.Is(Key::PageDown)) {
        chosen_ = last;
    } else {
        return false;
    }
    return true;
}

bool Options::Key(const KeyPress& key) {
    if (key.Is(Key::Escape)) {
        Close();
        return true;
    }
    if (MoveKey(key)) return true;
    const char32_t letter = zo::ui::LetterOf(key);
    const bool presses = key.Is(Key::Enter) || letter == U' ';
    if (chosen_ == Count() && presses) {
        Close();
    } else if (chosen_ == Count()) {
        return LetterKey(letter);
    } else if (key.Is(Key::Enter)) {
        DoOption(RowAt(chosen_), shell_);
    } else if (letter == U' ') {
        SwitchOption(RowAt(chosen_), shell_);
    } else if (const int step = zo::ui::StepOf(key); step != 0) {
        StepOption(RowAt(chosen_), shell_, step);
    } else {
        return LetterKey(letter);
    }
    return true;
}

// No letter stands twice on the screen, so each works from every row.
bool Options::LetterKey(char32_t letter) {
    if (letter == 0) return false;
    for (int index = 0; index < Count(); ++index) {
        const OptionRow& row = RowAt(index);
        const bool own = Label(LabelOf(row, shell_)).Hotkey() == letter;
        if (!own && !ChooseByLetter(row, shell_, letter)) continue;
        chosen_ = index;
        if (own) DoOption(row, shell_);
        return true;
    }
    return false;
}

}  // namespace Kest
