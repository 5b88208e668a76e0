#include "bench/bench.h"

#include <algorithm>

#include "bench/firmware_colours.h"
#include "bench/results.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::KeyPress;
using zo::ui::Paragraph;
using zo::ui::Role;

constexpr int kSlot = 1;

bool HasLane(const kp::LoadedTicket& loaded, Lane lane) {
    return std::ranges::count(LanesOf(loaded), lane) > 0;
}

std::string Rating(int difficulty) {
    std::string marks;
    for (int i = 1; i <= 5; ++i) marks += i <= difficulty ? "♦" : "·";
    return marks;
}

std::string SaveFailure(const base::Status& saved) {
    return "Firmware could not be saved: " + saved.Message();
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
    editor_.colour = ColourFirmware;
    editor_.changed = [this] { Edited(); };
}

void Bench::Entered() {
    shell_.Progress().current = loaded_.ticket.id;
    shell_.SaveProgress();
    const auto kept = shell_.LoadFirmware(loaded_.ticket.id, kSlot);
    SetFirmware(kept ? *kept : loaded_.ticket.starter);
    FillTicket();
    FillHints();
    updated_at_ = shell_.Now();
    LayOut(shell_.Grid().columns, shell_.Grid().rows);
}

void Bench::Left() {
    const base::Status saved = SaveIfDirty();
    if (!saved) shell_.SetStatus(SaveFailure(saved), Alert::Yes);
}

void Bench::Covered() {
    if (run_.State() == RunState::Running) RunOrPause();
}

int Bench::Stage() const {
    return shell_.Unlocking().Stage();
}

// Puts a text into the editor that is not the player's edit.
void Bench::SetFirmware(std::string_view text) {
    editor_.SetText(text);
    dirty_ = false;
    Assemble();
}

void Bench::Edited() {
    dirty_ = true;
    Assemble();
    Report();
}

void Bench::Assemble() {
    run_.SetFirmware(editor_.Text());
    std::vector<zo::ui::EditorMarks::Error>& errors = editor_.Marks().errors;
    errors.clear();
    for (const kp::AssemblyError& error : run_.Firmware().errors) {
        errors.push_back({error.line - 1, error.column - 1, error.length});
    }
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

// A message that still shows must not hide what came after it.
void Bench::Report() {
    shell_.SetStatus(run_.Standing(), run_.StandingIsAlert() ? Alert::Yes : Alert::No);
}

void Bench::MarkEditor() {
    const bool goes_on = run_.State() == RunState::Running || run_.State() == RunState::Paused;
    editor_.Marks().next_line = goes_on ? run_.ShownLine() - 1 : -1;
    if (run_.State() != RunState::Running && run_.ShownLine() > 0) {
        editor_.RevealLine(run_.ShownLine() - 1);
    }
}

void Bench::Do(Command command) {
    switch (command) {
        case Command::Binder:
            if (!loaded_.ticket.binder.empty()) {
                shell_.Open(Place::Binder, loaded_.ticket.binder.front());
            } else {
                shell_.Open(Place::Binder, "lc1");
            }
            break;
        case Command::ToggleCard:
            ToggleCard();
            break;
        case Command::RunOrPause:
            RunOrPause();
            break;
        case Command::Step:
            Step();
            break;
        case Command::RunToEnd:
            RunToEnd();
            break;
        case Command::Verify:
            Verify();
            break;
        case Command::Menu:
            OpenMenu();
            break;
        case Command::PauseOrMenu:
            if (run_.State() == RunState::Running) {
                RunOrPause();
            } else {
                OpenMenu();
            }
            break;
        case Command::Reset:
            Reset();
            break;
        case Command::Save:
            Save();
            break;
        case Command::PreviousTest:
            TurnTest(-1);
            break;
        case Command::NextTest:
            TurnTest(1);
            break;
        case Command::SlowerSpeed:
            ChangeSpeed(-1);
            break;
        case Command::FasterSpeed:
            ChangeSpeed(1);
            break;
        case Command::CycleSpeed:
            run_.SetSpeed((run_.Speed() + 1) % static_cast<int>(kRunSpeeds.size()));
            break;
        case Command::ShowTicket:
            Show(Panel::Ticket);
            break;
        case Command::ShowHints:
            Show(Panel::Hints);
            break;
        case Command::ShowSpec:
            Show(Panel::Spec);
            break;
        case Command::ShowHost:
            Show(Panel::Host);
            break;
        case Command::ShowNotes:
            Show(Panel::Notes);
            break;
        case Command::ShowCard:
            Show(Panel::Card);
            break;
        case Command::NextPanel:
            MovePanel(1);
            break;
        case Command::PreviousPanel:
            MovePanel(-1);
            break;
    }
    shell_.RequestRedraw();
}

void Bench::RunOrPause() {
    if (run_.State() == RunState::Running) {
        run_.Pause();
    } else {
        const bool anew = run_.State() != RunState::Paused;
        if (!run_.Run()) return Refused();
        if (anew) trace_.ShowStart();
    }
    RunChanged();
}

void Bench::Step() {
    if (run_.State() != RunState::Paused && run_.State() != RunState::Running) trace_.ShowStart();
    if (!run_.Step()) return Refused();
    trace_.Reveal(run_.ShownTick() - std::min<kp::Tick>(run_.ShownTick(), 1));
    if (run_.State() == RunState::Failed) panes_.Raise(Panel::Notes);
    RunChanged();
}

void Bench::RunToEnd() {
    if (!run_.RunToEnd()) return Refused();
    trace_.Follow(run_.ShownTick());
    if (run_.State() == RunState::Failed) panes_.Raise(Panel::Notes);
    RunChanged();
}

void Bench::Reset() {
    run_.Reset();
    trace_.ShowStart();
    RunChanged();
}

// The firmware cannot run: the editor takes the focus, with the caret on the first error.
void Bench::Refused() {
    panes_.Focus(Panel::Firmware);
    if (!editor_.Marks().errors.empty()) {
        const zo::ui::EditorMarks::Error& error = editor_.Marks().errors.front();
        editor_.SetCaret({error.line, error.column});
    }
    RunChanged();
}

void Bench::Verify() {
    const base::Status saved = SaveIfDirty();
    trace_.ShowStart();
    if (!run_.Verify()) return Refused();
    if (!run_.VerdictText().empty()) panes_.Raise(Panel::Notes);
    RunChanged();
    if (!saved) shell_.SetStatus(SaveFailure(saved), Alert::Yes);
    if (run_.LastVerify()->AllPassed()) Ship();
}

void Bench::Ship() {
    const PassedDeck deck{.loaded = loaded_,
                          .verify = *run_.LastVerify(),
                          .slot = kSlot,
                          .now = shell_.CalendarSeconds(),
                          .columns = shape_.columns,
                          .has_binder = shell_.Offers(Place::Binder)};
    ResultsSummary summary = CloseWith(shell_.Content(), shell_.Progress(), deck);
    shell_.SaveProgress();
    shell_.Push(std::make_unique<Results>(shell_, std::move(summary)));
}

void Bench::Save() {
    dirty_ = true;
    const base::Status saved = SaveIfDirty();
    if (saved) {
        shell_.SetStatus("Firmware saved.");
    } else {
        shell_.SetStatus(SaveFailure(saved), Alert::Yes);
    }
}

base::Status Bench::SaveIfDirty() {
    if (!dirty_) return {};
    base::Status saved = shell_.SaveFirmware(loaded_.ticket.id, kSlot, editor_.Text());
    if (saved) dirty_ = false;
    return saved;
}

base::Status Bench::SaveWork() {
    return SaveIfDirty();
}

void Bench::OpenMenu() {
    shell_.Open(Place::Pause);
}

void Bench::ToggleCard() {
    if (!panes_.IsTab(Panel::Card)) return;
    if (panes_.InFront(Panel::Card)) {
        panes_.Lower(Panel::Card);
    } else {
        panes_.Raise(Panel::Card);
    }
}

// Tabs of a side pane come to the front without taking the keys from the editor.
void Bench::Show(Panel panel) {
    if (layout_.Of(panel).Empty()) return;
    const bool is_tab = panes_.IsTab(panel);
    const bool card_locked = panel == Panel::Card && Stage() < StageOf(Command::ToggleCard);
    if (is_tab && card_locked) return;
    panes_.Raise(panel);
    if (!is_tab || layout_.size == BenchSize::Wide) panes_.Focus(panel);
}

void Bench::SelectTest(std::size_t test) {
    run_.SelectTest(test);
    trace_.ShowStart();
    RunChanged();
    shell_.RequestRedraw();
}

void Bench::TurnTest(int by) {
    const auto count = static_cast<int>(run_.TestCount());
    const int test = std::clamp(static_cast<int>(run_.TestIndex()) + by, 0, count - 1);
    if (test != static_cast<int>(run_.TestIndex())) SelectTest(static_cast<std::size_t>(test));
}

void Bench::ChangeSpeed(int by) {
    run_.SetSpeed(std::clamp(run_.Speed() + by, 0, static_cast<int>(kRunSpeeds.size()) - 1));
}

int Bench::HintsShown() const {
    const auto& tickets = shell_.Progress().tickets;
    const auto found = tickets.find(loaded_.ticket.id);
    const int shown = found == tickets.end() ? 0 : found->second.hints_revealed;
    return std::min(shown, static_cast<int>(loaded_.ticket.hints.size()));
}

void Bench::ShowNextHint() {
    if (HintsShown() == static_cast<int>(loaded_.ticket.hints.size())) return;
    ++shell_.Progress().tickets[loaded_.ticket.id].hints_revealed;
    shell_.SaveProgress();
    FillHints();
    shell_.RequestRedraw();
}

void Bench::MovePanel(int by) {
    panes_.MoveFocus(by);
    if (panes_.HasFocus(Panel::Strip) && !strip_.HasControls()) panes_.MoveFocus(by);
}

void Bench::FillTicket() {
    const kp::Ticket& ticket = loaded_.ticket;
    std::vector<Paragraph> text;
    text.push_back(
        {.text = ticket.title, .role = Role::PanelBright, .right = Rating(ticket.difficulty)});
    text.push_back({.text = ticket.client, .role = Role::PanelDim});
    text.push_back({});
    text.push_back({.text = ticket.brief});
    for (const std::string& paragraph : ticket.text) {
        text.push_back({});
        text.push_back({.text = paragraph});
    }
    if (!ticket.note.empty()) {
        text.push_back({});
        text.push_back({.text = ticket.note});
    }
    ticket_.Set(std::move(text));
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
    notes_.Set(std::move(text));
}

void Bench::Update(double now) {
    const double seconds = now - updated_at_;
    updated_at_ = now;
    if (run_.State() != RunState::Running) return;
    run_.Advance(seconds);
    trace_.Follow(run_.ShownTick());
    MarkEditor();
    if (run_.State() != RunState::Running) {
        if (run_.State() == RunState::Failed) panes_.Raise(Panel::Notes);
        RunChanged();
    }
    shell_.RequestRedraw();
}

std::optional<double> Bench::NextFrameAt() const {
    if (run_.State() != RunState::Running) return std::nullopt;
    return updated_at_ + run_.SecondsToNextTick();
}

bool Bench::IsOpen(const BenchKey& key) const {
    return Stage() >= key.stage;
}

// Whether the key bar and the status line name a key now.
bool Bench::IsNamed(const BenchKey& key) const {
    if (!IsOpen(key) || !IsListed(key, layout_.size == BenchSize::Narrow ? 80 : 100)) return false;
    switch (key.command) {
        case Command::Binder:
            return shell_.Offers(Place::Binder);
        case Command::Menu:
            return shell_.Offers(Place::Pause);
        case Command::PauseOrMenu:
            return run_.State() == RunState::Running ||
                   (shell_.Offers(Place::Pause) && Stage() < StageOf(Command::Menu));
        default:
            return true;
    }
}

void Bench::DescribeFrame(FrameRecord& record) const {
    const kp::Ticket& ticket = loaded_.ticket;
    record.title = "BENCH";
    record.context = ticket.id.substr(0, 4) + " " + ticket.title;
    record.detail = ", " + ticket.client;
    if (const kp::Shift* shift = shell_.Content().ShiftOf(ticket.id)) {
        record.place = "Shift " + std::to_string(shift->number) + " " + shift->title;
    }
    record.standing = run_.Standing();
    record.standing_alert = run_.StandingIsAlert();
    record.right.clear();
    for (const BenchKey& key : BenchKeys()) {
        if (!IsNamed(key)) continue;
        const bool running = run_.State() == RunState::Running;
        const bool pauses =
            running && (key.command == Command::RunOrPause || key.command == Command::PauseOrMenu);
        record.keys.push_back({key.key, "", pauses ? "Pause" : key.word});
        if (key.key.key < zo::ui::Key::F1 || key.key.key > zo::ui::Key::F12) continue;
        if (!record.right.empty()) record.right += " ";
        record.right += zo::ui::KeyName(key.key);
    }
}

bool Bench::Key(const KeyPress& key) {
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
        if (!key.IsControl(U'v')) return editor_.Key(key);
        editor_.Paste(shell_.ClipboardText());
        return true;
    }
    if (key.key == Key::Tab) {
        MovePanel(key.with.shift ? -1 : 1);
        return true;
    }
    switch (panel) {
        case Panel::Ticket:
            if (ticket_.Key(key)) return true;
            break;
        case Panel::Hints:
            if (key.Is(Key::Enter)) {
                ShowNextHint();
                return true;
            }
            if (hints_.Key(key)) return true;
            break;
        case Panel::Card:
            if (card_.Key(key)) return true;
            break;
        case Panel::Spec:
            if (spec_.Key(key)) return true;
            break;
        case Panel::Host:
            if (host_.Key(key)) return true;
            break;
        case Panel::Strip:
            if (strip_.Key(key)) return true;
            break;
        case Panel::Trace:
            if (trace_.Key(key)) return true;
            break;
        case Panel::Notes:
            if (notes_.Key(key)) return true;
            break;
        default:
            break;
    }
    if (key.Is(Key::Left)) return panes_.MoveTab(-1);
    if (key.Is(Key::Right)) return panes_.MoveTab(1);
    return false;
}

bool Bench::Text(std::string_view utf8) {
    return panes_.HasFocus(Panel::Firmware) && editor_.Type(utf8);
}

}  // namespace Kest
