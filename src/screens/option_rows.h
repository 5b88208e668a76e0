#pragma once

#include <span>
#include <string>
#include <string_view>

#include "display_choices.h"
#include "shell/shell.h"
#include "ui/canvas.h"
#include "ui/pressables.h"
#include "ui/surface.h"

namespace Kest {

// What a row lets the player do.
enum class OptionKind : std::uint8_t {
    Check,
    Volume,  // a check box and a slider
    Choice,  // values side by side
    Tube,    // a check box that only some monitors have a use for
    Coaching,
    Speed,
    Song,
    Command,
};

struct OptionRow {
    std::string_view group;  // named by its first row
    std::string_view label;  // with its hotkey; a choice has its own
    OptionKind kind;
    std::string_view explanation = {};
    bool Settings::*on = nullptr;
    float Settings::*volume = nullptr;
    DisplayChoice (*choice)(const Shell& shell) = nullptr;
    void (*command)(Shell& shell) = nullptr;
};

// In groups, from top to bottom.
std::span<const OptionRow> OptionRows();

std::string_view LabelOf(const OptionRow& row, const Shell& shell);
std::string ExplanationOf(const OptionRow& row, const Shell& shell);
bool IsAvailable(const OptionRow& row, const Shell& shell);

// What Left and Right do: the next value; stops at the ends.
void StepOption(const OptionRow& row, Shell& shell, int by);
// What Space does.
void SwitchOption(const OptionRow& row, Shell& shell);
// What Enter and the row's letter do: they switch, go on to the next value and around, or do what
// the row is there for.
void DoOption(const OptionRow& row, Shell& shell);
// What a letter of one of the row's values does; false when it has none with this letter.
bool ChooseByLetter(const OptionRow& row, Shell& shell, char32_t letter);

void DrawOptionControl(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables, zo::ui::Point at,
                       const OptionRow& row, Shell& shell, const zo::ui::Surface& surface);

}  // namespace Kest
