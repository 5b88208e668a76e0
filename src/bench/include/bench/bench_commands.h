#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "cells/input.h"
#include "shell/screen.h"

namespace Kest {

// Everything that a key or a control of the bench does.
enum class Command : std::uint8_t {
    Binder,
    ToggleCard,
    RunOrPause,
    Step,
    StepBack,
    RunToEnd,
    Verify,
    Menu,
    PauseOrMenu,
    Reset,
    Save,
    FirstSlot,
    SecondSlot,
    ThirdSlot,
    PreviousTest,
    NextTest,
    ToFailure,
    ToggleBreakpoint,
    CursorBack,
    CursorForward,
    ZoomIn,
    ZoomOut,
    WholeTest,
    Board,
    Records,
    CompareRuns,
    SlowerSpeed,
    FasterSpeed,
    CycleSpeed,
    ShowTicket,
    ShowHints,
    ShowSpec,
    ShowHost,
    ShowNotes,
    ShowCard,
    NextPanel,
    PreviousPanel,
};

// The buttons above the lanes.
struct ZoomControl {
    Command command;
    std::string_view label;
    std::string_view hint;
};
inline constexpr std::array<ZoomControl, 3> kZoomControls = {{
    {Command::ZoomIn, "+", "Zoom in."},
    {Command::ZoomOut, "-", "Zoom out."},
    {Command::WholeTest, "Whole", "The whole test."},
}};

enum class Listed : std::uint8_t {
    Never,
    Always,
    BelowHundred,  // columns
    FromHundred,
    AfterFailure,  // from a hundred columns, while a test stands as failed
};

// One key of the bench: what it does, from which stage on, and how the key bar names it. Keys of
// stages not reached do nothing and are not listed.
struct BenchKey {
    zo::ui::KeyPress key;
    Command command;
    int stage = 0;
    std::string_view word = {};
    Listed listed = Listed::Never;
    bool repeats = false;  // a key that is held down goes on doing it
};

// In the order of the key bar.
std::span<const BenchKey> BenchKeys();
const BenchKey* FindBenchKey(const zo::ui::KeyPress& key);

enum class LineAct : std::uint8_t { Save, SaveAndLeave, Leave, RunOrPause, Verify, Help };

// What is typed behind a ":" with vi keys.
struct LineCommand {
    std::string_view name;
    LineAct act;
    bool in_binder = true;  // on the page of the vi keys
};
std::span<const LineCommand> LineCommands();

// The keys that the controller's buttons are on the bench.
std::span<const PadKey> BenchPadKeys();

// The stage from which a command is open.
int StageOf(Command command);

// Whether the key is worth naming on a bench of this width.
bool IsListed(const BenchKey& key, int columns, bool failed = false);

}  // namespace Kest
