#include <algorithm>
#include <iterator>
#include <utility>

#include "bench/bench.h"
#include "bench/help_page.h"
#include "bench/results.h"
#include "shell/shell.h"

namespace Kest {

void Bench::Do(Command command) {
    struct Row {
        Command command;
        void (*act)(Bench& bench);
    };
    static constexpr Row kActs[] = {
        {Command::Binder, [](Bench& bench) { bench.OpenBinder(); }},
        {Command::ToggleCard, [](Bench& bench) { bench.ToggleCard(); }},
        {Command::RunOrPause, [](Bench& bench) { bench.RunOrPause(); }},
        {Command::Step, [](Bench& bench) { bench.Step(); }},
        {Command::StepBack, [](Bench& bench) { bench.StepBack(); }},
        {Command::RunToEnd, [](Bench& bench) { bench.RunToEnd(); }},
        {Command::Verify, [](Bench& bench) { bench.Verify(); }},
        {Command::Menu, [](Bench& bench) { bench.shell_.Open(Place::Pause); }},
        {Command::PauseOrMenu, [](Bench& bench) { bench.PauseOrMenu(); }},
        {Command::Reset, [](Bench& bench) { bench.Reset(); }},
        {Command::Save, [](Bench& bench) { bench.Save(); }},
        {Command::FirstSlot, [](Bench& bench) { bench.UseSlot(1); }},
        {Command::SecondSlot, [](Bench& bench) { bench.UseSlot(2); }},
        {Command::ThirdSlot, [](Bench& bench) { bench.UseSlot(3); }},
        {Command::PreviousTest, [](Bench& bench) { bench.TurnTest(-1); }},
        {Command::NextTest, [](Bench& bench) { bench.TurnTest(1); }},
        {Command::ToFailure, [](Bench& bench) { bench.ToFailure(); }},
        {Command::ToggleBreakpoint,
         [](Bench& bench) { bench.ToggleBreakpoint(bench.editor_.CaretAt().line); }},
        {Command::CursorBack, [](Bench& bench) { bench.trace_.MoveCursor(-1); }},
        {Command::CursorForward, [](Bench& bench) { bench.trace_.MoveCursor(1); }},
        {Command::ZoomIn, [](Bench& bench) { bench.trace_.ZoomBy(1); }},
        {Command::ZoomOut, [](Bench& bench) { bench.trace_.ZoomBy(-1); }},
        {Command::WholeTest, [](Bench& bench) { bench.trace_.ShowWhole(); }},
        {Command::Board, [](Bench& bench) { bench.Leave(); }},
        {Command::Records, [](Bench& bench) { bench.OpenRecords(); }},
        {Command::CompareRuns, [](Bench& bench) { bench.CompareRuns(); }},
        {Command::SlowerSpeed, [](Bench& bench) { bench.ChangeSpeed(-1); }},
        {Command::FasterSpeed, [](Bench& bench) { bench.ChangeSpeed(1); }},
        {Command::CycleSpeed, [](Bench& bench) { bench.CycleSpeed(); }},
        {Command::ShowTicket, [](Bench& bench) { bench.Show(Panel::Ticket); }},
        {Command::ShowHints, [](Bench& bench) { bench.Show(Panel::Hints); }},
        {Command::ShowSpec, [](Bench& bench) { bench.Show(Panel::Spec); }},
        {Command::ShowHost, [](Bench& bench) { bench.Show(Panel::Host); }},
        {Command::ShowNotes, [](Bench& bench) { bench.Show(Panel::Notes); }},
        {Command::ShowCard, [](Bench& bench) { bench.Show(Panel::Card); }},
        {Command::NextPanel, [](Bench& bench) { bench.MovePanel(1); }},
        {Command::PreviousPanel, [](Bench& bench) { bench.MovePanel(-1); }},
    };
    const auto row = std::ranges::find(kActs, command, &Row::command);
    if (row != std::end(kActs)) row->act(*this);
    SoundCommand(command);
    shell_.RequestRedraw();
}

void Bench::RunOrPause() {
    if (run_.State() == RunState::Running) {
        run_.Pause();
        shell_.Sound().Play(Effect::Pause);
        return RunStopped();
    }
    if (run_.State() != RunState::Paused) trace_.ShowStart();
    SkipLine();
    if (!run_.Run()) return Refused();
    shell_.Sound().Play(Effect::Run);
    trace_.SetCursor(std::nullopt);
    RunChanged();
}

void Bench::Step() {
    if (run_.State() != RunState::Paused && run_.State() != RunState::Running) trace_.ShowStart();
    SkipLine();
    if (!run_.Step()) return Refused();
    stepped_ = true;
    shell_.Sound().Play(Effect::Step);
    SoundLine();
    SoundOutcome();
    RunStopped();
}

void Bench::StepBack() {
    if (run_.State() == RunState::Running) run_.Pause();
    if (!run_.StepBack()) return;
    shell_.Sound().Play(Effect::Step);
    RunStopped();
}

void Bench::RunToEnd() {
    if (!run_.RunToEnd()) return Refused();
    shell_.Sound().Play(Effect::Run);
    SoundOutcome();
    RunStopped();
}

// The first test that failed is chosen and run again where it does not stand on the bench, and the
// cursor goes to its failure; from there to the tick before it.
void Bench::ToFailure() {
    const std::optional<std::size_t> failed = run_.FirstFailed();
    if (!failed) return shell_.SetStatus("No test has failed.");
    if (run_.TestIndex() != *failed) SelectTest(*failed);
    const bool stands_there =
        run_.State() == RunState::Failed && trace_.Cursor() == run_.Trace().failed;
    if (run_.State() != RunState::Failed && !run_.RunToEnd()) return Refused();
    RunStopped();
    const kp::Tick failure = run_.Trace().failed.value_or(0);
    trace_.SetCursor(stands_there ? failure - std::min<kp::Tick>(failure, 1) : failure);
    LookAtCursor();
}

void Bench::Reset() {
    run_.Reset();
    trace_.ShowStart();
    RunChanged();
}

// The firmware cannot run: the editor takes the focus, with the caret on the first error.
void Bench::Refused() {
    shell_.Sound().Play(Effect::Error);
    panes_.Focus(Panel::Firmware);
    if (!editor_.Marks().errors.empty()) {
        const zo::ui::EditorMarks::Error& error = editor_.Marks().errors.front();
        editor_.SetCaret({error.line, error.column});
    }
    RunChanged();
}

void Bench::Verify() {
    if (run_.State() == RunState::Verifying) return;
    if (!run_.BeginVerify()) return Refused();
    shell_.Sound().Play(Effect::Run);
    trace_.SetCursor(std::nullopt);
    RunChanged();
}

// What the player looks at stays as it is, also after a failure.
void Bench::EndVerify() {
    run_.FinishVerify();
    RunChanged();
    SaveOrWarn();
    const bool passed = run_.LastVerify()->AllPassed();
    shell_.Sound().Play(passed ? Effect::Closed : Effect::NotClosed);
    if (passed) Ship({});
}

// The history is a capture's; a player's is read.
void Bench::Ship(std::vector<Scores> history) {
    const kp::VerifyResult& verify = *run_.LastVerify();
    const std::string& id = loaded_.ticket.id;
    const ClosedTicket closed =
        shell_.CloseTicket({.ticket_id = id,
                            .lines = verify.lines,
                            .ticks = static_cast<std::int32_t>(verify.ticks),
                            .hints_revealed = shell_.Progress().tickets[id].hints_revealed,
                            .slot = slot_,
                            .now = shell_.CalendarSeconds()},
                           editor_.Text());
    const PassedDeck deck{.loaded = loaded_,
                          .verify = verify,
                          .closed = closed,
                          .stage_before = std::exchange(stage_, shell_.Unlocking().Stage()),
                          .columns = shape_.columns};
    BeginBurnIn();
    ResultsSummary summary = SumUp(shell_, deck);
    if (summary.history.empty()) summary.history = std::move(history);
    if (burn_in_) summary.burn_in = &*burn_in_;
    summary.open_miss = [this] { OpenMiss(); };
    summary.copy_card = [this] { CopyCard(editor_.Text()); };
    shell_.Push(std::make_unique<Results>(shell_, std::move(summary)));
}

void Bench::Save() {
    dirty_ = true;
    if (!SaveOrWarn()) return;
    shell_.Sound().Play(Effect::Save);
    shell_.SetStatus("Firmware saved.");
}

bool Bench::SaveOrWarn() {
    const base::Status saved = SaveWork();
    if (!saved) shell_.Alarm(saved.Message());
    return static_cast<bool>(saved);
}

// A verify that is under way counts, also when the player leaves before its last mark.
base::Status Bench::SaveWork() {
    if (run_.State() == RunState::Verifying) EndVerify();
    save_at_.reset();
    if (!dirty_) return {};
    base::Status saved = shell_.SaveFirmware(loaded_.ticket.id, slot_, editor_.Text());
    dirty_ = !saved;
    shell_.RequestRedraw();
    return saved;
}

// Text that cannot be saved keeps its slot on the bench.
void Bench::UseSlot(int slot) {
    if (slot == slot_ || !SaveOrWarn()) return;
    std::optional<zo::ui::EditorSheet>& kept = sheets_[static_cast<std::size_t>(slot - 1)];
    const bool first_time = !kept;
    zo::ui::EditorSheet before = editor_.Exchange(kept ? std::move(*kept) : zo::ui::EditorSheet());
    kept.reset();
    sheets_[static_cast<std::size_t>(slot_ - 1)] = std::move(before);
    slot_ = slot;
    if (first_time) editor_.SetText(FirmwareIn(slot));
    Assemble();
    if (first_time) PlaceCaret();
    shell_.Sound().Play(Effect::Slot);
    shell_.SetStatus("Firmware slot " + std::to_string(slot));
    shell_.Progress().tickets[loaded_.ticket.id].slot = slot;
    shell_.SaveProgress();
}

// The page on the word under the caret, else the ticket's first.
void Bench::OpenBinder() {
    const std::vector<std::string>& pages = loaded_.ticket.binder;
    std::string page;
    if (panes_.HasFocus(Panel::Firmware)) {
        const zo::ui::TextPosition caret = editor_.CaretAt();
        page = HelpPageAt(editor_.Buffer().Line(caret.line), caret.column);
    }
    if (shell_.Content().FindPage(page) == nullptr) page = pages.empty() ? "lc1" : pages.front();
    OpenPage(page);
}

void Bench::OpenPage(std::string_view page) {
    shell_.Open(Place::Binder, page);
}

// Before the first close there is no board to go to.
void Bench::Leave() {
    const bool has_board = stage_ > 0 && shell_.Offers(Place::Board);
    shell_.Open(has_board ? Place::Board : Place::Title, loaded_.ticket.id);
}

void Bench::ToggleBreakpoint(int line) {
    std::vector<int>& lines = editor_.Breakpoints();
    if (std::erase(lines, line) == 0) lines.push_back(line);
    SetBreakpoints();
    shell_.RequestRedraw();
}

// The editor counts lines from 0 and moves its breakpoints along with the text.
void Bench::SetBreakpoints() {
    std::vector<int> lines = editor_.Breakpoints();
    for (int& line : lines) ++line;
    run_.SetBreakpoints(std::move(lines));
}

void Bench::PauseOrMenu() {
    if (run_.State() == RunState::Running) {
        RunOrPause();
    } else {
        shell_.Open(Place::Pause);
    }
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
    const bool card_locked = panel == Panel::Card && stage_ < StageOf(Command::ToggleCard);
    if (is_tab && card_locked) return;
    panes_.Raise(panel);
    if (!is_tab || layout_.size == BenchSize::Wide) panes_.Focus(panel);
}

void Bench::SelectTest(std::size_t test) {
    if (run_.State() == RunState::Verifying) return;
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

void Bench::CompareRuns() {
    run_.SetCompare(!run_.Compares());
    shell_.SetStatus(run_.Compares() ? "TX and HOST OUT show the run before, dim."
                                     : "The run before is not shown.");
}

void Bench::CycleSpeed() {
    SetSpeed((run_.Speed() + 1) % static_cast<int>(kRunSpeeds.size()));
}

void Bench::ChangeSpeed(int by) {
    SetSpeed(std::clamp(run_.Speed() + by, 0, static_cast<int>(kRunSpeeds.size()) - 1));
}

void Bench::SetSpeed(int speed) {
    run_.SetSpeed(speed);
    shell_.ChangeSettings([speed](Settings& settings) { settings.run_speed = speed; });
}

void Bench::ShowNextHint() {
    if (HintsShown() == static_cast<int>(loaded_.ticket.hints.size())) return;
    shell_.Sound().Play(Effect::Hint);
    ++shell_.Progress().tickets[loaded_.ticket.id].hints_revealed;
    shell_.SaveProgress();
    FillHints();
    shell_.RequestRedraw();
}

void Bench::MovePanel(int by) {
    panes_.MoveFocus(by);
    if (panes_.HasFocus(Panel::Strip) && !strip_.HasControls()) panes_.MoveFocus(by);
}

}  // namespace Kest
