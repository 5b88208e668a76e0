#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cells/input.h"
#include "ui/scroll.h"
#include "ui/text_buffer.h"

namespace zo::ui {

// A stretch of one line in one role.
struct Span {
    int column = 0;
    int length = 0;
    Role role = Role::Code;
};

// What the editor's owner knows about the text. Lines count from 0.
struct EditorMarks {
    struct Error {
        int line = 0;
        int column = 0;
        int length = 0;
    };
    std::vector<Error> errors = {};
    std::vector<int> breakpoints = {};  // the editor moves them along with their lines
    int next_line = -1;                 // that runs next, -1 for none
    std::string ghost = {};             // text suggested at the caret
};

// A text editor in a pane: one character a cell, one line a row. It draws text, gutter, caret and
// scrollbar; the pane's frame is its owner's.
class CodeEditor {
public:
    static constexpr int kGutter = 6;  // mark, three digits, the arrow, a blank
    static constexpr int kTab = 4;

    void SetText(std::string_view utf8);  // the caret goes to the start; no change is reported
    std::string Text() const { return buffer_.Text(); }
    const TextBuffer& Buffer() const { return buffer_; }

    TextPosition CaretAt() const { return caret_; }
    void SetCaret(TextPosition at);  // and brings it into sight
    void RevealLine(int line);       // without the caret
    void SetReadOnly(bool read_only) { read_only_ = read_only; }

    EditorMarks& Marks() { return marks_; }
    // Fills in the roles of a line's characters; what it leaves out is drawn in Role::Code.
    std::function<void(std::u32string_view line, std::vector<Span>& spans)> colour;
    std::function<void()> changed;                 // after each edit by the player
    std::function<void(int line)> gutter_pressed;  // the pointer went down in the gutter
    std::function<void()> refused;                 // an edit of read-only text was tried

    // What the keyboard does. Keys with Alt and unknown keys with Ctrl are not used.
    bool Key(const KeyPress& key);
    bool Type(std::string_view utf8);
    void Paste(std::string_view utf8) { Type(utf8); }

    // `pane` is the framed box. The caret shows when focused.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused);

private:
    enum class Goal : std::uint8_t { Forget, Keep };

    bool Move(const KeyPress& key);
    bool Edit(const KeyPress& key);
    void MoveTo(TextPosition at, Goal goal = Goal::Forget);
    void MoveLines(int by);
    TextPosition Before(TextPosition at) const;  // the position itself at the text's start
    TextPosition After(TextPosition at) const;   // and at its end
    void NewLine();
    // The one way in which the player changes the text.
    void Replace(TextPosition from, TextPosition to, std::string_view utf8);
    void MoveBreakpoints(TextPosition from, int old_end, int new_end);

    void Follow();
    void DrawGutter(Canvas& canvas, const Rect& row, int line);
    void DrawLine(Canvas& canvas, const Rect& row, int line);
    void DrawCaret(Canvas& canvas, bool focused);
    void Press(Point at);

    TextBuffer buffer_;
    TextPosition caret_;
    int goal_column_ = 0;  // that Up and Down aim for
    bool read_only_ = false;
    bool reveal_ = true;  // the caret must come into sight with the next frame
    int reveal_line_ = -1;
    Scroll rows_;
    int left_ = 0;  // the first column in sight
    Rect text_;     // where the text stands, as drawn last
    EditorMarks marks_;
    std::vector<Span> spans_;  // of the line being drawn
};

}  // namespace zo::ui
