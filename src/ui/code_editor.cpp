#include "ui/code_editor.h"

#include <algorithm>

#include "base/utf.h"

namespace zo::ui {

void CodeEditor::SetText(std::string_view utf8) {
    buffer_.Set(utf8);
    marks_ = {};
    left_ = 0;
    rows_.To(0);
    MoveTo({});
}

void CodeEditor::SetCaret(TextPosition at) {
    MoveTo(buffer_.Clamped(at));
}

void CodeEditor::RevealLine(int line) {
    reveal_line_ = line;
}

void CodeEditor::MoveTo(TextPosition at, Goal goal) {
    caret_ = at;
    if (goal == Goal::Forget) goal_column_ = at.column;
    reveal_ = true;
}

void CodeEditor::MoveLines(int by) {
    const int line = std::clamp(caret_.line + by, 0, buffer_.LineCount() - 1);
    MoveTo({line, std::min(goal_column_, buffer_.Length(line))}, Goal::Keep);
}

TextPosition CodeEditor::Before(TextPosition at) const {
    if (at.column > 0) return {at.line, at.column - 1};
    return at.line > 0 ? TextPosition{at.line - 1, buffer_.Length(at.line - 1)} : at;
}

TextPosition CodeEditor::After(TextPosition at) const {
    if (at.column < buffer_.Length(at.line)) return {at.line, at.column + 1};
    return at.line + 1 < buffer_.LineCount() ? TextPosition{at.line + 1, 0} : at;
}

bool CodeEditor::Key(const KeyPress& key) {
    if (key.with.alt) return false;
    return Move(key) || (!key.with.control && Edit(key));
}

bool CodeEditor::Move(const KeyPress& key) {
    const int line = caret_.line;
    const int page = std::max(rows_.Shown() - 1, 1);
    const bool whole = key.with.control;  // Home and End of the text, not of the line
    switch (key.key) {
        case Key::Left:
            MoveTo(Before(caret_));
            return true;
        case Key::Right:
            MoveTo(After(caret_));
            return true;
        case Key::Up:
            MoveLines(-1);
            return true;
        case Key::Down:
            MoveLines(1);
            return true;
        case Key::Home:
            MoveTo(whole ? TextPosition{} : TextPosition{line, 0});
            return true;
        case Key::End:
            MoveTo(whole ? buffer_.End() : TextPosition{line, buffer_.Length(line)});
            return true;
        case Key::PageUp:
            return !whole && (MoveLines(-page), true);
        case Key::PageDown:
            return !whole && (MoveLines(page), true);
        default:
            return false;
    }
}

bool CodeEditor::Edit(const KeyPress& key) {
    switch (key.key) {
        case Key::Enter:
            NewLine();
            return true;
        case Key::Backspace:
            Replace(Before(caret_), caret_, "");
            return true;
        case Key::Delete:
            Replace(caret_, After(caret_), "");
            return true;
        case Key::Tab:
            if (key.with.shift) return false;
            Type(std::string(static_cast<std::size_t>(kTab - caret_.column % kTab), ' '));
            return true;
        default:
            return false;
    }
}

bool CodeEditor::Type(std::string_view utf8) {
    Replace(caret_, caret_, utf8);
    return true;
}

// The new line starts where the text of the old one does.
void CodeEditor::NewLine() {
    const std::u32string& line = buffer_.Line(caret_.line);
    const auto caret = line.begin() + caret_.column;
    const auto text = std::find_if(line.begin(), caret, [](char32_t c) { return c != U' '; });
    Type("\n" + std::string(static_cast<std::size_t>(text - line.begin()), ' '));
}

void CodeEditor::Replace(TextPosition from, TextPosition to, std::string_view utf8) {
    if (from == to && utf8.empty()) return;
    if (read_only_) {
        if (refused) refused();
        return;
    }
    if (from != to) buffer_.Erase(from, to);
    const TextPosition end = utf8.empty() ? from : buffer_.Insert(from, utf8);
    MoveBreakpoints(from, to.line, end.line);
    MoveTo(end);
    if (changed) changed();
}

// Breakpoints stay with their lines: what stood behind the edit moves with the text, and those of
// lines that were joined to another go.
void CodeEditor::MoveBreakpoints(TextPosition from, int old_end, int new_end) {
    std::vector<int>& lines = marks_.breakpoints;
    std::erase_if(lines, [&](int line) { return line > from.line && line <= old_end; });
    for (int& line : lines) {
        const bool pushed_down = line == from.line && from.column == 0 && new_end > from.line;
        if (line > old_end || pushed_down) line += new_end - old_end;
    }
}

}  // namespace zo::ui
