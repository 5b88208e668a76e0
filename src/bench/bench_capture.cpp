#include "base/format.h"
#include "bench/bench.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Key;
using zo::ui::KeyPress;

// Firmware that does not assemble, whatever the card.
constexpr std::string_view kBroken =
    "; Two mistakes to find.\nagain: tx $1FFFF\n       jmp nowhere\n";

// The reference with its first output made twice, which is one byte too many for any ticket.
std::string WithOutputTwice(const std::string& reference) {
    std::size_t at = reference.find("tx ");
    if (at == std::string::npos) at = reference.find("hout ");
    if (at == std::string::npos) return reference;
    const std::size_t end = std::min(reference.find('\n', at), reference.size());
    return reference.substr(0, end) + "\n       " + reference.substr(at);
}

// A player's way to the reference's scores.
std::vector<Scores> SomeHistory(const kp::Reference& par) {
    const auto ticks = static_cast<std::int32_t>(par.ticks);
    std::vector<Scores> history;
    for (const auto& [lines, percent] :
         {std::pair(9, 140), std::pair(7, 128), std::pair(7, 119), std::pair(4, 131),
          std::pair(3, 112), std::pair(-1, 118), std::pair(5, 97), std::pair(0, 100)}) {
        history.push_back({par.lines + lines, ticks * percent / 100});
    }
    return history;
}

}  // namespace

// The states are reached with firmware that is never written to the player's files.
bool Bench::CaptureRequest(std::string_view request) {
    if (request == "empty") {
        SetFirmware("");
    } else if (request == "errors") {
        SetFirmware(kBroken);
        RunOrPause();
    } else if (request == "completing") {
        SetFirmware(loaded_.reference_text);
        UseEditor("mov ", {.key = Key::Character, .character = U' ', .with = {.control = true}});
    } else if (request == "finding") {
        SetFirmware(loaded_.reference_text);
        UseEditor("", {.key = Key::Character, .character = U'f', .with = {.control = true}});
        editor_.Type("tx");
    } else if (request == "selected") {
        SetFirmware(loaded_.reference_text);
        UseEditor("", {.key = Key::Up, .with = {.shift = true}});
        editor_.Key({.key = Key::Up, .with = {.shift = true}});
    } else if (request == "running") {
        SetFirmware(loaded_.reference_text);
        RunHalfWay();
    } else if (request == "paused") {
        SetFirmware(loaded_.reference_text);
        RunHalfWay();
        ToggleBreakpoint(run_.ShownLine() - 1);
        RunOrPause();
    } else if (request == "whole") {
        SetFirmware(loaded_.reference_text);
        RunToEnd();
        trace_.Measure(run_);
        trace_.ShowWhole();
    } else if (request == "compare") {
        SetFirmware(WithOutputTwice(loaded_.reference_text));
        RunToEnd();
        run_.SetCompare(true);
        SetFirmware(loaded_.reference_text);
        RunHalfWay();
    } else if (request == "failed") {
        SetFirmware(WithOutputTwice(loaded_.reference_text));
        run_.BeginVerify();
        run_.FinishVerify();
        RunToEnd();
    } else if (request == "passed") {
        SetFirmware(loaded_.reference_text);
        run_.BeginVerify();
        run_.FinishVerify();
        RunToEnd();
    } else if (request == "results") {
        SetFirmware(loaded_.reference_text);
        Verify();
        EndVerify();
        while (BurnsIn()) AdvanceBurnIn();
    } else if (request == "history") {
        SetFirmware(loaded_.reference_text);
        run_.BeginVerify();
        run_.FinishVerify();
        Ship(SomeHistory(loaded_.reference));
        while (BurnsIn()) AdvanceBurnIn();
    } else if (request == "records") {
        SetFirmware(WithOutputTwice(loaded_.reference_text));
        ShowRecords(
            {{"Best lines and ticks",
              base::Format("%d lines, %u ticks", loaded_.reference.lines, loaded_.reference.ticks),
              loaded_.reference_text}});
    } else {
        return false;
    }
    return true;
}

// Types on a new line below the third, and presses a key there.
void Bench::UseEditor(std::string_view typed, const KeyPress& key) {
    editor_.SetCaret({2, 1000});
    if (!typed.empty()) {
        editor_.Key({.key = zo::ui::Key::Enter});
        editor_.Type(typed);
    }
    editor_.Key(key);
}

// Leaves a test running so slowly that a picture taken seconds later still finds it at work.
void Bench::RunHalfWay() {
    RunOrPause();
    run_.SetSpeed(0);
    while (run_.State() == RunState::Running && run_.ShownTick() < run_.CalledFor().ticks / 2) {
        run_.Advance(run_.SecondsToNextTick());
    }
}

}  // namespace Kest
