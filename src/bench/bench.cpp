#include "bench/bench.h"

#include <algorithm>

#include "bench/coach.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::KeyPress;
using zo::ui::Paragraph;
using zo::ui::Role;

// The text is saved when so long nothing was typed, and at the latest so long after an edit.
constexpr double kIdleSeconds = 3;
constexpr double kLongestUnsavedSeconds = 20;

bool HasLane(const kp::LoadedTicket& loaded, Lane lane) {
    return std::ranges::count(LanesOf(loaded), lane) > 0;
}

std::string Rating(int difficulty) {
    std::string marks;
    for (int i = 1; i <= 5; ++i) marks += i <= difficulty ? "♦" : "·";
    return marks;
}

}  // namespace

Bench::Bench(Shell& shell, const kp::LoadedTicket& loaded)
    : Screen(shell),
      loaded_(loaded),
      run_(loaded),
      card_(loaded.ticket.machine),
      spec_(HasLane(loaded, Lane::Rx)),
      host_(HasLane(loaded, Lane::HostIn), HasLane(loaded, Lane::HostOut)),
      trace_(loaded),
      strip_([this](Command command) { Do(command); },
             [this](std::size_t test) { SelectTest(test); }) {
    context_ = loaded.ticket.id.substr(0, 4) + " " + loaded.ticket.title;
    detail_ = ", " + loaded.ticket.client;
    if (const kp::Shift* shift = shell_.Content().ShiftOf(loaded.ticket.id)) {
        place_ = "Shift " + std::to_string(shift->number) + " " + shift->title;
    }
    for (zo::ui::TextPane* text : {&ticket_, &hints_, &notes_}) {
        text->copy = [this](const std::string& utf8) { shell_.SetClipboardText(utf8); };
    }
    LinkEditor();
    trace_.cursor_moved = [this] { LookAtCursor(); };
    trace_.act = [this](Command command) { Do(command); };
}

void Bench::Entered() {
    SetStage();
    shell_.Progress().current = loaded_.ticket.id;
    shell_.SaveProgress();
    const auto& tickets = shell_.Progress().tickets;
    const auto record = tickets.find(loaded_.ticket.id);
    editor_.SetViKeys(shell_.Settings().vi_keys);
    slot_ = record == tickets.end() ? 1 : record->second.slot;
    SetFirmware(FirmwareIn(slot_));
    PlaceCaret();
    if (Coach() != nullptr && Coach()->bytes) trace_.ShowInFull();
    run_.SetSpeed(shell_.Settings().run_speed);
    FillTicket();
    FillHints();
    updated_at_ = shell_.Now();
    LayOut(shell_.Grid().columns, shell_.Grid().rows);
}

void Bench::Left() {
    SaveOrWarn();
}

void Bench::Covered() {
    if (run_.State() == RunState::Running) RunOrPause();
}

void Bench::Uncovered() {
    run_.SetSpeed(shell_.Settings().run_speed);
    SetStage();
    LookAtFirmware();
    FillTicket();
}

void Bench::SetStage() {
    stage_ = shell_.Unlocking().Stage();
    trace_.Allow({.cursor = stage_ >= StageOf(Command::CursorBack),
                  .zoom = stage_ >= StageOf(Command::ZoomIn)});
}

// Puts a text into the editor that is not the player's edit.
void Bench::SetFirmware(std::string_view text) {
    editor_.SetText(text);
    dirty_ = false;
    save_at_.reset();
    Assemble();
}

void Bench::Edited() {
    dirty_ = true;
    if (!save_at_) unsaved_since_ = shell_.Now();
    save_at_ = std::min(shell_.Now() + kIdleSeconds, unsaved_since_ + kLongestUnsavedSeconds);
    Assemble();
    Report();
}

void Bench::Assemble() {
    run_.SetFirmware(editor_.Text());
    burn_in_.reset();
    SetBreakpoints();
    LookAtFirmware();
    MarkErrors();
    trace_.ShowStart();
    MarkEditor();
    FillNotes();
}

// The run stands elsewhere and has said so.
void Bench::RunChanged() {
    MarkEditor();
    FillNotes();
    Report();
}

// The run has come to a halt on a tick, which the cursor goes to.
void Bench::RunStopped() {
    const kp::Tick tick = run_.CardTick();
    const bool shows = stage_ >= StageOf(Command::CursorBack) && tick > 0;
    trace_.SetCursor(shows ? std::optional(tick - 1) : std::nullopt);
    if (!shows) trace_.Follow(tick);
    if (run_.State() == RunState::Failed) panes_.Raise(Panel::Notes);
    RunChanged();
}

// The card, the editor and the notes show the cursor's tick.
void Bench::LookAtCursor() {
    run_.Look(trace_.Cursor());
    MarkEditor();
    FillNotes();
    shell_.RequestRedraw();
}

// A message that still shows must not hide what came after it.
void Bench::Report() {
    shell_.SetStatus(run_.Standing(), run_.StandingIsAlert() ? Alert::Yes : Alert::No);
}

void Bench::MarkEditor() {
    const RunState state = run_.ShownState();
    const bool goes_on = state == RunState::Running || state == RunState::Paused;
    editor_.Marks().next_line = goes_on ? run_.ShownLine() - 1 : -1;
    if (run_.State() != RunState::Running && run_.ShownLine() > 0) {
        editor_.RevealLine(run_.ShownLine() - 1);
    }
}

int Bench::HintsShown() const {
    const auto& tickets = shell_.Progress().tickets;
    const auto found = tickets.find(loaded_.ticket.id);
    const int shown = found == tickets.end() ? 0 : found->second.hints_revealed;
    return std::min(shown, static_cast<int>(loaded_.ticket.hints.size()));
}

void Bench::FillTicket() {
    const kp::Ticket& ticket = loaded_.ticket;
    std::vector<Paragraph> text;
    text.push_back(
        {.text = ticket.title, .role = Role::PanelBright, .right = Rating(ticket.difficulty)});
    text.push_back({.text = ticket.client, .role = Role::PanelDim});
    text.push_back({});
    text.push_back({.text = ticket.brief});
    AddChips(text);
    for (const std::string& paragraph : ticket.text) {
        text.push_back({});
        text.push_back({.text = paragraph});
    }
    if (!ticket.note.empty()) {
        text.push_back({});
        text.push_back({.text = ticket.note});
    }
    AddBinderLinks(text);
    ticket_.Set(std::move(text));
}

// The names of instructions that are new with this ticket.
void Bench::AddChips(std::vector<Paragraph>& text) {
    const kp::CoachEntry* entry = Coach();
    if (entry == nullptr || !entry->chips) return;
    const std::string names = NewInstructions(shell_.Content(), loaded_);
    if (names.empty()) return;
    text.push_back({});
    Paragraph& row = text.emplace_back();
    row.wrap = zo::ui::Wrap::Kept;
    for (std::size_t at = 0; at < names.size();) {
        const std::size_t end = names.find(' ', at + 1) + 1;
        row.spans.push_back({row.text.size(), row.text.size() + end - at, Role::Chip});
        row.text += names.substr(at, end - at) + " ";
        at = end;
    }
}

void Bench::AddBinderLinks(std::vector<Paragraph>& text) {
    if (stage_ < StageOf(Command::Binder) || !shell_.Offers(Place::Binder)) return;
    text.push_back({});
    for (const std::string& id : loaded_.ticket.binder) {
        const kp::BinderPage* page = shell_.Content().FindPage(id);
        if (page == nullptr) continue;
        text.push_back({.text = page->title,
                        .label = "►",
                        .label_role = Role::Link,
                        .links = {{.from = 0,
                                   .to = page->title.size(),
                                   .hint = "A binder page.",
                                   .act = [this, id] { OpenPage(id); }}}});
    }
}

void Bench::FillHints() {
    std::vector<Paragraph> text;
    for (int i = 0; i < HintsShown(); ++i) {
        if (i > 0) text.push_back({});
        text.push_back({.text = loaded_.ticket.hints[static_cast<std::size_t>(i)],
                        .label = std::to_string(i + 1) + "  "});
    }
    if (loaded_.ticket.hints.empty()) text.push_back({.text = "none", .role = Role::PanelDim});
    hints_.Set(std::move(text), zo::ui::TextPane::Place::Keep);
}

void Bench::FillNotes() {
    std::vector<Paragraph> text;
    if (!run_.VerdictText().empty()) {
        text.push_back({.text = run_.VerdictText(), .role = Role::Warn});
    }
    if (!run_.Explanation().empty()) text.push_back({.text = run_.Explanation()});
    if (const std::optional<TickRange> ticks = trace_.CursorTicks()) {
        for (std::string& note :
             NotesOf(run_.Trace(), run_.CalledForBytes(), loaded_.ticket.frame, *ticks)) {
            text.push_back({.text = std::move(note)});
        }
    }
    AddBurnIn(text);
    notes_.Set(std::move(text));
}

void Bench::Update(double now) {
    const double seconds = now - updated_at_;
    updated_at_ = now;
    editor_.SetViKeys(shell_.Settings().vi_keys);
    if (editor_.Update(now)) shell_.RequestRedraw();
    if (save_at_ && *save_at_ <= now) SaveOrWarn();
    if (BurnsIn()) AdvanceBurnIn();
    const RunState before = run_.State();
    if (before != RunState::Running && before != RunState::Verifying) return;
    run_.SetMotion(shell_.Settings().motion);
    run_.Advance(seconds);
    shell_.RequestRedraw();
    if (before == RunState::Verifying) {
        if (run_.State() != before) EndVerify();
        return;
    }
    trace_.Follow(run_.ShownTick());
    MarkEditor();
    SoundLine();
    if (run_.State() == RunState::Running) return;
    if (run_.State() == RunState::Paused) shell_.Sound().Play(Effect::Pause);
    SoundOutcome();
    RunStopped();
}

std::optional<double> Bench::NextFrameAt() const {
    std::optional<double> next = editor_.NextFrameAt();
    const auto or_at = [&next](double at) { next = next ? std::min(*next, at) : at; };
    if (save_at_) or_at(*save_at_);
    const bool moves = run_.State() == RunState::Running || run_.State() == RunState::Verifying;
    if (moves) or_at(updated_at_ + run_.SecondsToNextTick());
    if (BurnsIn()) or_at(updated_at_);
    return next;
}

bool Bench::IsOpen(const BenchKey& key) const {
    return stage_ >= key.stage || (key.command == Command::Menu && editor_.HasViKeys());
}

// Whether the key bar and the status line name a key now.
bool Bench::IsNamed(const BenchKey& key) const {
    if (!IsOpen(key) || !IsListed(key, shape_.columns, run_.FirstFailed().has_value())) {
        return false;
    }
    switch (key.command) {
        case Command::Binder:
            return shell_.Offers(Place::Binder);
        case Command::Board:
            return shell_.Offers(Place::Board);
        case Command::Menu:
            return shell_.Offers(Place::Pause);
        case Command::PauseOrMenu:
            return stage_ < StageOf(Command::Menu) && !editor_.HasViKeys() &&
                   (run_.State() == RunState::Running || shell_.Offers(Place::Pause));
        default:
            return true;
    }
}

void Bench::DescribeFrame(FrameRecord& record) const {
    record.title = "BENCH";
    record.context = context_;
    record.detail = detail_;
    record.place = place_;
    record.standing = run_.Standing();
    record.standing_alert = run_.StandingIsAlert();
    record.right.clear();
    if (editor_.HasViKeys()) {
        record.mode = editor_.CommandLine() ? editor_.Chip() : editor_.ModeName();
        const std::string pending = editor_.PendingKeys();
        if (!pending.empty()) record.mode += " " + pending;
    }
    if (const auto line = editor_.CommandLine()) record.entry = ":" + *line;
    for (const BenchKey& key : BenchKeys()) {
        if (!IsNamed(key)) continue;
        const bool running = run_.State() == RunState::Running;
        const bool pauses =
            running && (key.command == Command::RunOrPause || key.command == Command::PauseOrMenu);
        record.keys.push_back(
            {.key = key.key, .word = pauses ? "Pause" : key.word, .marked = PointsAt(key)});
        // Of the keys only those without a modifier, and not the breakpoint's, have a place there.
        const bool counts = key.key.key >= zo::ui::Key::F1 && key.key.key <= zo::ui::Key::F12 &&
                            key.key.with == zo::ui::Modifiers{} &&
                            key.command != Command::ToggleBreakpoint;
        if (!counts) continue;
        if (!record.right.empty()) record.right += " ";
        record.right += zo::ui::KeyName(key.key);
    }
}

bool Bench::Key(const KeyPress& key) {
    if (run_.State() == RunState::Verifying) {
        run_.FinishVerify();
        EndVerify();
        return true;
    }
    if (key.Is(zo::ui::Key::Escape) && editor_.WantsEscape()) return editor_.Key(key);
    if (const BenchKey* found = FindBenchKey(key)) {
        if (IsOpen(*found) && (!key.repeat || found->repeats)) Do(found->command);
        return true;
    }
    return KeyInPanel(key);
}

bool Bench::KeyInPanel(const KeyPress& key) {
    using zo::ui::Key;
    const Panel panel = panes_.Focused();
    if (panel == Panel::Firmware) {
        const bool used = editor_.Key(key);
        if (used) SoundKey(key);
        return used;
    }
    if (key.key == Key::Tab) {
        MovePanel(key.with.shift ? -1 : 1);
        return true;
    }
    if (key.IsControl(U'v') && TakesCard(shell_.ClipboardText())) return true;
    if (KeyOf(panel, key)) return true;
    if (key.Is(Key::Left)) return panes_.MoveTab(-1);
    if (key.Is(Key::Right)) return panes_.MoveTab(1);
    return false;
}

// What the panel itself makes of a key.
bool Bench::KeyOf(Panel panel, const KeyPress& key) {
    switch (panel) {
        case Panel::Ticket:
            return ticket_.Key(key);
        case Panel::Hints:
            if (!key.Is(zo::ui::Key::Enter)) return hints_.Key(key);
            ShowNextHint();
            return true;
        case Panel::Card:
            return card_.Key(key);
        case Panel::Spec:
            return spec_.Key(key);
        case Panel::Host:
            return host_.Key(key);
        case Panel::Strip:
            return strip_.Key(key);
        case Panel::Trace:
            return trace_.Key(key);
        case Panel::Notes:
            return notes_.Key(key);
        default:
            return false;
    }
}

bool Bench::Text(std::string_view utf8) {
    if (panes_.HasFocus(Panel::Trace)) return trace_.Text(utf8);
    if (TakesCard(utf8)) return true;  // as a terminal pastes
    if (!panes_.HasFocus(Panel::Firmware) || !editor_.Type(utf8)) return false;
    shell_.Sound().Play(Effect::Key, static_cast<std::uint8_t>(utf8[0]));
    return true;
}

}  // namespace Kest
