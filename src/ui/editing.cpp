#include "editing.h"

#include <algorithm>
#include <string>

namespace zo::ui {
namespace {

std::u16string Blanks(int count) {
    return std::u16string(static_cast<std::size_t>(std::max(count, 0)), u' ');
}

// Where a position comes to stand when a stretch of its line before it is replaced.
void ShiftOnLine(TextPosition& at, TextPosition from, int old_length, int new_length) {
    if (at.line != from.line || at.column < from.column) return;
    at.column = std::max(at.column - old_length, from.column) + new_length;
}

// A replacement inside one line that leaves the selection on the characters it stands on.
void ReplaceInLine(EditState& state, TextPosition from, int length, std::u16string_view text) {
    state.document.Replace(from, {from.line, from.column + length}, text);
    const int added = static_cast<int>(text.size());
    ShiftOnLine(state.selection.caret, from, length, added);
    ShiftOnLine(state.selection.anchor, from, length, added);
    state.goal = state.selection.caret.column;
}

void Replace(EditState& state, TextPosition from, TextPosition to, std::u16string_view text) {
    PutCaret(state, state.document.Replace(from, to, text));
}

}  // namespace

void PutCaret(EditState& state, TextPosition at) {
    state.selection = Selection::At(at);
    state.goal = at.column;
    state.fresh_indent = false;
}

void InsertText(EditState& state, std::u16string_view text) {
    Replace(state, state.selection.From(), state.selection.To(), text);
}

void EraseSelection(EditState& state) {
    InsertText(state, {});
}

void BreakLine(EditState& state) {
    const TextBuffer& text = state.Text();
    TextPosition from = state.selection.From();
    TextPosition to = state.selection.To();
    const int indent = std::min(text.Indent(from.line), from.column);
    if (state.fresh_indent) from.column = 0;
    while (text.At(to) == u' ') ++to.column;
    Replace(state, from, to, u"\n" + Blanks(indent));
    state.fresh_indent = indent > 0;
}

void InsertTab(EditState& state) {
    InsertText(state, Blanks(kIndent - state.selection.From().column % kIndent));
}

void EraseBack(EditState& state) {
    if (!state.selection.Empty()) return EraseSelection(state);
    const bool kept = state.fresh_indent && state.Caret().column > 2;
    EraseBackTo(state, state.Text().Before(state.Caret()));
    state.fresh_indent = kept;
}

void EraseForward(EditState& state) {
    if (!state.selection.Empty()) return EraseSelection(state);
    EraseForwardTo(state, state.Text().After(state.Caret()));
    state.fresh_indent = false;
}

void EraseBackTo(EditState& state, TextPosition from) {
    if (from != state.Caret()) Replace(state, from, state.Caret(), {});
}

void EraseForwardTo(EditState& state, TextPosition to) {
    if (to != state.Caret()) Replace(state, state.Caret(), to, {});
}

void DropFreshIndent(EditState& state) {
    if (!state.fresh_indent) return;
    const TextPosition caret = state.Caret();
    const TextPosition start = {caret.line, 0};
    if (state.Text().Length(caret.line) == caret.column) Replace(state, start, caret, {});
    state.fresh_indent = false;
}

LineRange SelectedLines(const EditState& state) {
    const TextPosition from = state.selection.From();
    const TextPosition to = state.selection.To();
    const bool by_start_alone = to.line > from.line && to.column == 0;
    return {from.line, to.line - (by_start_alone ? 1 : 0)};
}

void IndentLines(EditState& state, LineRange lines, int by) {
    for (int line = lines.first; line <= lines.last; ++line) {
        const int indent = state.Text().Indent(line);
        const bool empty = state.Text().Length(line) == 0;
        const bool between = by < 0 && indent % kIndent != 0;
        const int stops = indent / kIndent + by + (between ? 1 : 0);
        const int wanted = empty ? 0 : std::max(stops * kIndent, 0);
        ReplaceInLine(state, {line, 0}, indent, Blanks(wanted));
    }
}

// A block of which every line of text is a comment is uncommented; else all its lines are
// commented, at the column where the leftmost text begins.
void ToggleComments(EditState& state, LineRange lines) {
    const TextBuffer& text = state.Text();
    int column = -1;
    bool all = true;
    for (int line = lines.first; line <= lines.last; ++line) {
        const int indent = text.Indent(line);
        if (indent == text.Length(line)) continue;
        column = column < 0 ? indent : std::min(column, indent);
        all &= text.At({line, indent}) == u';';
    }
    if (column < 0) return;
    for (int line = lines.first; line <= lines.last; ++line) {
        const int indent = text.Indent(line);
        if (indent == text.Length(line)) continue;
        if (all) {
            const bool blank = text.At({line, indent + 1}) == u' ';
            ReplaceInLine(state, {line, indent}, blank ? 2 : 1, {});
        } else {
            ReplaceInLine(state, {line, column}, 0, u"; ");
        }
    }
}

bool MoveLines(EditState& state, LineRange lines, int by) {
    const TextBuffer& text = state.Text();
    const int neighbour = by < 0 ? lines.first - 1 : lines.last + 1;
    if (neighbour < 0 || neighbour == text.LineCount()) return false;
    const Selection before = state.selection;
    const std::u16string passed = text.Line(neighbour);
    const TextPosition above = by < 0 ? text.EndOf(lines.last) : TextPosition{lines.first, 0};
    // The neighbour goes around the block, which keeps its marks.
    if (by < 0) {
        state.document.Replace(above, above, u"\n" + passed);
        state.document.Replace({neighbour, 0}, {neighbour + 1, 0}, {});
    } else {
        state.document.Replace(text.EndOf(lines.last), text.EndOf(neighbour), {});
        state.document.Replace(above, above, passed + u"\n");
    }
    state.selection = before;
    state.selection.caret.line += by;
    state.selection.anchor.line += by;
    return true;
}

void DuplicateLines(EditState& state, LineRange lines) {
    const TextBuffer& text = state.Text();
    const std::u16string block = text.Text({lines.first, 0}, text.EndOf(lines.last));
    const TextPosition end = text.EndOf(lines.last);
    const Selection before = state.selection;
    state.document.Replace(end, end, u"\n" + block);
    const int by = lines.last - lines.first + 1;
    state.selection = before;
    state.selection.caret.line += by;
    state.selection.anchor.line += by;
}

void EraseLines(EditState& state, LineRange lines) {
    const TextBuffer& text = state.Text();
    const int column = state.Caret().column;
    TextPosition from = {lines.first, 0};
    TextPosition to = {lines.last + 1, 0};
    if (to.line == text.LineCount()) {
        to = text.End();
        if (lines.first > 0) from = text.EndOf(lines.first - 1);
    }
    Replace(state, from, to, {});
    PutCaret(state, text.Clamped({lines.first, column}));
}

void InsertLines(EditState& state, std::u16string_view text) {
    const TextPosition start = {state.Caret().line, 0};
    const int column = state.Caret().column;
    const TextPosition behind = state.document.Replace(start, start, text);
    PutCaret(state, {behind.line, column});
}

}  // namespace zo::ui
