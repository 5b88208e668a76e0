#include "bench/bench_commands.h"

#include <algorithm>
#include <array>

namespace Kest {
namespace {

using zo::ui::Key;
using zo::ui::KeyPress;
using zo::ui::Modifiers;

constexpr Modifiers kControl{.shift = false, .control = true, .alt = false};
constexpr Modifiers kControlShift{.shift = true, .control = true, .alt = false};
constexpr Modifiers kShift{.shift = true, .control = false, .alt = false};
constexpr Modifiers kAlt{.shift = false, .control = false, .alt = true};

constexpr KeyPress Plain(Key key, Modifiers with = {}) {
    return {key, 0, with, false};
}
constexpr KeyPress Control(char32_t c) {
    return {Key::Character, c, kControl, false};
}
constexpr KeyPress Alt(char32_t c) {
    return {Key::Character, c, kAlt, false};
}

constexpr std::array kKeys = {
    // key, command, stage, word, listed, repeats
    BenchKey{Plain(Key::F1), Command::Binder, 1, "Binder", Listed::Always},
    BenchKey{Plain(Key::F2), Command::ToggleCard, 1, "Card", Listed::BelowHundred},
    BenchKey{Plain(Key::F5), Command::RunOrPause, 0, "Run", Listed::Always},
    BenchKey{Plain(Key::F6), Command::Step, 1, "Step", Listed::Always, true},
    BenchKey{Plain(Key::F7), Command::RunToEnd, 2, "Fast", Listed::Always},
    BenchKey{Plain(Key::F8), Command::Verify, 0, "Verify", Listed::Always},
    BenchKey{Plain(Key::F10), Command::Menu, 2, "Menu", Listed::Always},
    BenchKey{Plain(Key::Escape), Command::PauseOrMenu, 0, "Menu", Listed::Always},
    BenchKey{Plain(Key::F9), Command::ToggleBreakpoint, 1, "Break", Listed::FromHundred},
    BenchKey{Control(U'r'), Command::Reset, 1, "Reset", Listed::FromHundred},
    BenchKey{Control(U's'), Command::Save, 0, "Save", Listed::FromHundred},
    BenchKey{Alt(U'b'), Command::Board, 1, "Board", Listed::FromHundred},
    BenchKey{Plain(Key::F6, kShift), Command::StepBack, 1, "Back", Listed::FromHundred, true},
    BenchKey{Plain(Key::F8, kShift), Command::ToFailure, 0, "Failure", Listed::AfterFailure},
    BenchKey{Plain(Key::Enter, kControl), Command::Verify},
    BenchKey{Control(U'1'), Command::FirstSlot, 1},
    BenchKey{Control(U'2'), Command::SecondSlot, 1},
    BenchKey{Control(U'3'), Command::ThirdSlot, 1},
    BenchKey{Plain(Key::PageUp, kControl), Command::PreviousTest, 1, "", Listed::Never, true},
    BenchKey{Plain(Key::PageDown, kControl), Command::NextTest, 1, "", Listed::Never, true},
    BenchKey{Plain(Key::Left, kAlt), Command::CursorBack, 1, "", Listed::Never, true},
    BenchKey{Plain(Key::Right, kAlt), Command::CursorForward, 1, "", Listed::Never, true},
    BenchKey{Plain(Key::Up, kAlt), Command::ZoomIn, 2, "", Listed::Never, true},
    BenchKey{Plain(Key::Down, kAlt), Command::ZoomOut, 2, "", Listed::Never, true},
    BenchKey{Alt(U'r'), Command::Records, 1},
    BenchKey{Alt(U'p'), Command::CompareRuns, 1},
    BenchKey{Alt(U't'), Command::ShowTicket},
    BenchKey{Alt(U'h'), Command::ShowHints},
    BenchKey{Alt(U's'), Command::ShowSpec},
    BenchKey{Alt(U'o'), Command::ShowHost},
    BenchKey{Alt(U'n'), Command::ShowNotes},
    BenchKey{Alt(U'c'), Command::ShowCard},
    BenchKey{Plain(Key::Tab, kControl), Command::NextPanel, 0, "", Listed::Never, true},
    BenchKey{Plain(Key::Tab, kControlShift), Command::PreviousPanel, 0, "", Listed::Never, true},
};

// The right stick moves the trace's cursor and zooms.
constexpr std::array kPadKeys = {
    PadKey{zo::ui::PadButton::X, Plain(Key::F5)},
    PadKey{zo::ui::PadButton::Y, Plain(Key::F8)},
    PadKey{zo::ui::PadButton::LeftShoulder, Plain(Key::Tab, kControlShift)},
    PadKey{zo::ui::PadButton::RightShoulder, Plain(Key::Tab, kControl)},
    PadKey{zo::ui::PadButton::LeftTrigger, Plain(Key::PageUp, kControl)},
    PadKey{zo::ui::PadButton::RightTrigger, Plain(Key::PageDown, kControl)},
    PadKey{zo::ui::PadButton::RightStickLeft, Plain(Key::Left, kAlt)},
    PadKey{zo::ui::PadButton::RightStickRight, Plain(Key::Right, kAlt)},
    PadKey{zo::ui::PadButton::RightStickUp, Plain(Key::Up, kAlt)},
    PadKey{zo::ui::PadButton::RightStickDown, Plain(Key::Down, kAlt)},
};

constexpr LineCommand kLineCommands[] = {
    {"w", LineAct::Save},        {"wq", LineAct::SaveAndLeave}, {"x", LineAct::SaveAndLeave, false},
    {"q", LineAct::Leave},       {"r", LineAct::RunOrPause},    {"run", LineAct::RunOrPause},
    {"verify", LineAct::Verify}, {"help", LineAct::Help},       {"h", LineAct::Help, false},
};

}  // namespace

std::span<const LineCommand> LineCommands() {
    return kLineCommands;
}

std::span<const PadKey> BenchPadKeys() {
    return kPadKeys;
}

std::span<const BenchKey> BenchKeys() {
    return kKeys;
}

const BenchKey* FindBenchKey(const KeyPress& key) {
    KeyPress once = key;
    once.repeat = false;
    const auto found = std::ranges::find(kKeys, once, &BenchKey::key);
    return found == kKeys.end() ? nullptr : &*found;
}

int StageOf(Command command) {
    const auto found = std::ranges::find(kKeys, command, &BenchKey::command);
    return found == kKeys.end() ? 0 : found->stage;
}

bool IsListed(const BenchKey& key, int columns, bool failed) {
    switch (key.listed) {
        case Listed::Always:
            return true;
        case Listed::BelowHundred:
            return columns < 100;
        case Listed::FromHundred:
            return columns >= 100;
        case Listed::AfterFailure:
            return columns >= 100 && failed;
        case Listed::Never:
            break;
    }
    return false;
}

}  // namespace Kest
