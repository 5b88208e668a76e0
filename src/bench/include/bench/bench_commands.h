#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "cells/input.h"

namespace Kest {

// Everything that a key or a control of the bench does.
enum class Command : std::uint8_t {
    Binder,
    ToggleCard,
    RunOrPause,
    Step,
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

enum class Listed : std::uint8_t {
    Never,
    Always,
    BelowHundred,  // columns
    FromHundred,
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

// The stage from which a command is open.
int StageOf(Command command);

// Whether the key is worth naming on a bench of this width.
bool IsListed(const BenchKey& key, int columns);

}  // namespace Kest
