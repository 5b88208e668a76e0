#pragma once

#include <optional>
#include <string_view>

#include "ui/document.h"

// What typing and the keys of an editor do to a text, whatever mode the keys are in. Each function
// moves the caret along and leaves the steps of the history to its caller.
namespace zo::ui {

inline constexpr int kIndent = 4;

// Puts the caret down, with nothing selected.
void PutCaret(EditState& state, TextPosition at);

// In the place of what is selected, where something is.
void InsertText(EditState& state, std::u16string_view text);
void EraseSelection(EditState& state);
// The new line starts where the text of the old one does; blanks behind the break go, and an indent
// that was not used.
void BreakLine(EditState& state);
void InsertTab(EditState& state);  // blanks up to the next stop
void EraseBack(EditState& state);
void EraseForward(EditState& state);
// These take everything from a place on the caret's line, or the line's end, to the caret.
void EraseBackTo(EditState& state, TextPosition from);
void EraseForwardTo(EditState& state, TextPosition to);
// An indent that came by itself and was not used goes.
void DropFreshIndent(EditState& state);

// The lines that the selection touches; the last one not by its start alone.
struct LineRange {
    int first = 0;
    int last = 0;
};
LineRange SelectedLines(const EditState& state);

void IndentLines(EditState& state, LineRange lines, int by);  // in stops, negative to the left
void ToggleComments(EditState& state, LineRange lines);
// Moves lines up (-1) or down (1) past their neighbour; false at the text's ends.
bool MoveLines(EditState& state, LineRange lines, int by);
void DuplicateLines(EditState& state, LineRange lines);
// The caret keeps its column.
void EraseLines(EditState& state, LineRange lines);
// Puts whole lines, each with its end, above the caret's.
void InsertLines(EditState& state, std::u16string_view text);

}  // namespace zo::ui
