#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bench/bench_commands.h"
#include "bench/bench_layout.h"
#include "bench/bench_run.h"
#include "bench/card_panel.h"
#include "bench/pane_stack.h"
#include "bench/records.h"
#include "bench/stream_panels.h"
#include "bench/strip.h"
#include "bench/trace_panel.h"
#include "save/firmware_files.h"
#include "save/records.h"
#include "session/burn_in.h"
#include "shell/screen.h"
#include "ui/code_editor.h"
#include "ui/frame_line.h"
#include "ui/text_pane.h"

namespace Kest {

// The bench on a ticket, or a screen that says that there is no such ticket.
std::unique_ptr<Screen> MakeBench(Shell& shell, std::string_view ticket_id);

// The screen on which a ticket is solved.
class Bench final : public Screen {
public:
    Bench(Shell& shell, const kp::LoadedTicket& loaded);

    std::string_view Name() const override { return "bench"; }
    void Entered() override;
    void Left() override;
    void Covered() override;
    void Uncovered() override;
    void Update(double now) override;
    std::optional<double> NextFrameAt() const override;
    void Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) override;
    void DescribeFrame(FrameRecord& record) const override;
    bool Key(const zo::ui::KeyPress& key) override;
    bool Text(std::string_view utf8) override;
    bool TakesFile(std::string_view name, std::string_view text) override;
    std::span<const PadKey> PadKeys() const override { return BenchPadKeys(); }
    std::optional<zo::ui::Rect> FocusedPane() const override;
    void Describe(Speech& speech) const override;
    std::optional<MusicScene> Music() const override;
    base::Status SaveWork() override;
    // "empty", "errors", "completing", "finding", "selected", "running", "paused", "failed",
    // "passed", "whole", "compare", "results", "history", "records".
    bool CaptureRequest(std::string_view request) override;

    const BenchRun& Run() const { return run_; }

private:
    bool IsOpen(const BenchKey& key) const;
    bool IsNamed(const BenchKey& key) const;

    // The editor and what it is linked to (bench_editor.cpp).
    void LinkEditor();
    void RunCommandLine(std::string_view line);
    void MarkErrors();
    std::string FirmwareIn(int slot);

    // The coach (bench_coach.cpp).
    const kp::CoachEntry* Coach() const;
    std::string OpeningText() const;
    void PlaceCaret();
    void LookAtFirmware();
    void BeCoached(const kp::CoachEntry& entry);
    void StopCoaching();
    void DrawCoach(zo::ui::Canvas& canvas) const;
    bool PointsAt(const BenchKey& key) const;

    // What commands do (bench_actions.cpp).
    void Do(Command command);
    void RunOrPause();
    void Step();
    void StepBack();
    void RunToEnd();
    void Reset();
    void Verify();
    void EndVerify();
    void Ship(std::vector<Scores> history);
    void ToFailure();
    void ToggleBreakpoint(int line);
    void SetBreakpoints();
    void OpenPage(std::string_view page);
    void Leave();
    void Save();
    void UseSlot(int slot);
    void OpenBinder();
    void PauseOrMenu();
    void ToggleCard();
    void Show(Panel panel);
    void SelectTest(std::size_t test);
    void TurnTest(int by);
    void CompareRuns();
    void CycleSpeed();
    void ChangeSpeed(int by);
    void SetSpeed(int speed);
    void ShowNextHint();
    void MovePanel(int by);

    // Fresh draws of the seeded tests (bench_burn_in.cpp).
    void BeginBurnIn();
    bool BurnsIn() const;
    void AdvanceBurnIn();
    void AddBurnIn(std::vector<zo::ui::Paragraph>& text);
    void OpenMiss();

    // Firmware from elsewhere (bench_cards.cpp).
    int FreeSlot();
    void OfferFirmware(const std::string& title, const std::string& found, std::string firmware,
                       bool doubtful);
    void LoadInto(int slot, const std::string& firmware);
    bool TakesCard(std::string_view text);
    void CopyCard(const std::string& firmware);
    void OpenRecords();
    void ShowRecords(std::vector<KeptRecord> records);

    // What is heard of it (bench_sounds.cpp).
    void SoundCommand(Command command);
    void SoundKey(const zo::ui::KeyPress& key);
    void SoundOutcome();
    void SoundLine();
    void SkipLine();

    // What follows from them.
    void SetStage();
    void Edited();
    void Assemble();
    void Refused();
    void RunChanged();
    void RunStopped();
    void LookAtCursor();
    void Report();
    void MarkEditor();
    void FillTicket();
    void AddChips(std::vector<zo::ui::Paragraph>& text);
    void AddBinderLinks(std::vector<zo::ui::Paragraph>& text);
    void FillHints();
    void FillNotes();
    void SetFirmware(std::string_view text);
    void RunHalfWay();
    void UseEditor(std::string_view typed, const zo::ui::KeyPress& key);
    bool SaveOrWarn();
    bool KeyInPanel(const zo::ui::KeyPress& key);
    bool KeyOf(Panel panel, const zo::ui::KeyPress& key);
    int HintsShown() const;

    std::string FirmwareLine(int line) const;

    // Drawing (bench_draw.cpp).
    void LayOut(int columns, int rows);
    void DrawFirmware(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables);
    void DrawSlots(zo::ui::FrameLine& line, zo::ui::Pressables& pressables);
    void DrawPanel(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, Panel panel);
    void DrawPanelFrame(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, Panel panel);
    void DrawTabs(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, Panel panel);
    void DrawHintButton(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables,
                        const zo::ui::Rect& pane);
    void TakeFocus(zo::ui::Pressables& pressables, Panel panel);

    const kp::LoadedTicket& loaded_;
    std::string context_, detail_, place_;  // of the top bar
    BenchRun run_;
    BenchShape shape_{.columns = 0, .rows = 0};  // no grid yet
    BenchLayout layout_;
    PaneStack panes_;
    zo::ui::CodeEditor editor_;
    zo::ui::TextPane ticket_;
    zo::ui::TextPane hints_;
    zo::ui::TextPane notes_;
    CardPanel card_;
    SpecPanel spec_;
    HostPanel host_;
    TracePanel trace_;
    Strip strip_;
    std::optional<kp::BurnIn> burn_in_;  // of the firmware that has closed the ticket
    int stage_ = 0;                      // of the unlocking
    int slot_ = 1;                       // of the firmware
    // The texts of the slots that were on the bench before, with their histories.
    std::array<std::optional<zo::ui::EditorSheet>, kFirmwareSlots> sheets_;
    // For the coach: what is known of the firmware, and what he says and points at.
    bool is_untouched_ = false;
    bool is_right_ = false;
    bool stepped_ = false;
    std::string coach_line_;
    bool marks_rom_ = false;
    bool marks_step_ = false;
    bool dirty_ = false;             // the text differs from its file
    std::size_t line_heard_ = 0;     // happenings of the run whose bytes have been heard
    double updated_at_ = 0;          // on the frame clock
    double unsaved_since_ = 0;       // the first edit since the last save was tried
    std::optional<double> save_at_;  // when the next one is due
};

}  // namespace Kest
