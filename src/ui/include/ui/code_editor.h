#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cells/input.h"
#include "ui/completion.h"
#include "ui/document.h"
#include "ui/find_box.h"
#include "ui/scroll.h"

namespace zo::ui {

namespace vi {
class Machine;
struct Wishes;
}  // namespace vi

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
        std::string message = {};
    };
    std::vector<Error> errors = {};  // in the order of their lines
    int next_line = -1;              // that runs next, -1 for none
    std::string ghost = {};          // text suggested at the caret
};

// A line of help for what is being typed, with the part that is due.
struct TypingHint {
    std::string text = {};
    int from = 0;
    int length = 0;
};

// What the editor asks of its owner. Whatever is left out is not there.
struct EditorLinks {
    // Fills in the roles of a line's characters; what it leaves out is drawn in Role::Code.
    std::function<void(std::u16string_view line, std::vector<Span>& spans)> colour = {};
    // All that could be typed behind the start of a line.
    std::function<std::vector<CompletionItem>(std::u16string_view before)> complete = {};
    std::function<TypingHint(std::u16string_view line, int column)> describe = {};

    std::function<void()> changed = {};                 // after each edit by the player
    std::function<void(int line)> gutter_pressed = {};  // the pointer went down in the gutter
    std::function<void()> refused = {};                 // an edit of read-only text was tried
    std::function<void(std::string_view sentence)> say = {};
    std::function<void(std::string_view text)> command = {};  // a ":" line was entered

    std::function<std::string()> clipboard = {};
    std::function<void(std::string_view utf8)> set_clipboard = {};
    // What is selected here or elsewhere, for the middle button.
    std::function<std::string()> selection = {};
    std::function<void(std::string_view utf8)> set_selection = {};
};

// A text with its history, the caret and the marked lines: what is exchanged when the editor turns
// to another text and back.
struct EditorSheet {
    EditState state = {};
    int top = 0;  // the first line in sight
};

// A text editor in a pane: one character a cell, one line a row. It draws text, gutter, caret,
// scrollbar and its own find box, hints and completion; the pane's frame is its owner's.
class CodeEditor {
public:
    static constexpr int kGutter = 6;  // mark, three digits, the arrow, a blank

    CodeEditor();
    ~CodeEditor();
    CodeEditor(const CodeEditor&) = delete;
    CodeEditor& operator=(const CodeEditor&) = delete;

    EditorLinks links;

    void SetText(std::string_view utf8);  // the caret goes to the start; no change is reported
    std::string Text() const;
    const TextBuffer& Buffer() const { return state_.Text(); }
    // Turns to another text; the one before it comes back.
    EditorSheet Exchange(EditorSheet sheet);

    TextPosition CaretAt() const { return state_.Caret(); }
    const Selection& Selected() const { return state_.selection; }
    void SetCaret(TextPosition at);  // and brings it into sight
    void RevealLine(int line);       // without the caret
    void SetReadOnly(bool read_only);

    EditorMarks& Marks() { return marks_; }
    const EditorMarks& Marks() const { return marks_; }
    std::vector<int>& Breakpoints() { return state_.document.Marks(); }
    const std::vector<int>& Breakpoints() const { return state_.document.Marks(); }

    // Each returns whether the key or the text was used. Keys with Alt are not.
    bool Key(const KeyPress& key);
    bool Type(std::string_view utf8);
    // Text of any size and content, in the place of what is selected, as one step.
    void Paste(std::string_view utf8);

    // vi keys. The editor opens in Normal mode; switching applies at once.
    void SetViKeys(bool on);
    bool HasViKeys() const { return vi_ != nullptr; }
    std::string_view ModeName() const;  // "NORMAL" and so on; "EDIT" without vi keys
    std::string_view Chip() const;      // the same for the header, where a ":" line shows
    std::string PendingKeys() const;    // of a command that is not complete
    std::optional<std::string> CommandLine() const;  // what stands behind the ":" that is open
    // Esc would close something of the editor's or end a mode.
    bool WantsEscape() const;

    // A drag that is held outside the text goes on by time. Both take the frame clock's seconds;
    // the one tells when to come again, the other whether anything changed.
    std::optional<double> NextFrameAt() const;
    bool Update(double now);

    // `pane` is the framed box. The caret shows when focused.
    void Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused);

private:
    friend struct EditorKeys;

    // Edits of a kind that follow one another at one place are taken back together.
    enum class Edits : std::uint8_t { Apart, Typed, Erased };
    enum class Extend : bool { No, Yes };
    // Whether the caret must come into sight, and with how much around it. Under the pointer
    // nothing moves that need not.
    enum class Reveal : std::uint8_t { Nothing, CaretAlone, Caret };

    struct Range {
        TextPosition from, to;
    };

    // Keys (code_editor_keys.cpp).
    bool TextKey(const KeyPress& key);
    bool CompletionKey(const KeyPress& key);
    bool ViKey(const KeyPress& key);
    bool AskKey(const KeyPress& key);
    void TypePlain(std::string_view utf8);
    void TypeVi(char32_t key);
    void Grant(const vi::Wishes& wishes);
    void RunLine(std::u16string_view line);

    // Edits and moves.
    void Edit(Edits kind, const std::function<void()>& change);
    void MoveTo(TextPosition at, Extend extend);
    void MoveRows(int rows, Extend extend);
    void Undo();
    void Redo();
    void Copy();
    void Cut();
    void PasteClipboard();
    void PasteText(std::string_view utf8);
    void SetClipboard(Range range);
    void SelectAll();
    std::optional<Range> SelectedRange() const;
    // Does something to the lines of the selection, or to the caret's.
    void EditLines(const std::function<void(int first, int last)>& change);
    void Select(TextPosition from, TextPosition to);
    void ReportChange();
    void ReportSelection();
    void GoToError(int by);

    // Finding.
    void OpenFind();
    void FindBy(int by);
    void FindTyped();
    void CountMatches();
    void OpenLine();
    void GoToLine(std::string_view digits);
    void StopAsking();

    // Completing.
    void OfferCompletion(bool asked);
    void AcceptCompletion();
    int WordStart() const;

    // Drawing (code_editor_draw.cpp).
    void Follow();
    void DrawGutter(Canvas& canvas, const Rect& row, int line);
    void DrawLine(Canvas& canvas, const Rect& row, int line);
    void TintSelection(Canvas& canvas, const Rect& row, int line) const;
    void TintMatches(Canvas& canvas, const Rect& row, int line) const;
    int DrawFooter(Canvas& canvas, Pressables& pressables, const Rect& inner, bool focused);
    void DrawErrorBeside(Canvas& canvas, const Rect& row, int line) const;
    void DrawCaret(Canvas& canvas, bool focused);
    void DrawCompletion(Canvas& canvas, Pressables& pressables, const Rect& room);
    const EditorMarks::Error* ErrorOn(int line) const;
    bool FitsBeside(const EditorMarks::Error& error, int width) const;
    void AddPressables(Pressables& pressables, const Rect& area);
    void Press(const PointerPress& press);
    void Drag(Point at);
    void DragTo(Point at);
    void EndDrag();
    void PasteSelection(Point at);
    void ScrollSideways(int columns);
    TextPosition PositionAt(Point at) const;
    Range WordAt(TextPosition at) const;
    Range UnitAt(TextPosition at) const;
    std::u16string SearchShown() const;
    void DrawQuestion(Canvas& canvas, Pressables& pressables, const Rect& row, bool focused);
    int DrawNotes(Canvas& canvas, const Rect& inner) const;

    EditState state_;
    std::unique_ptr<vi::Machine> vi_;  // null without vi keys
    bool read_only_ = false;
    std::uint64_t reported_ = 0;  // the text's revision of which the owner knows
    Edits last_edits_ = Edits::Apart;
    TextPosition last_edit_end_;
    std::string copied_line_;         // that was copied with nothing selected
    int typing_line_ = -1;            // on which the player types just now
    Range drag_start_;                // what the press has selected that a drag extends
    int drag_clicks_ = 0;             // of that press, 0 when it was not on the text
    std::uint64_t dragged_text_ = 0;  // the revision that was pressed; a drag ends with it
    std::optional<Point> held_at_;    // of a drag, outside the text
    std::optional<double> drag_due_;  // when it goes on

    // What the row below the text asks for.
    enum class Asks : std::uint8_t { Nothing, Find, Line };
    Asks asks_ = Asks::Nothing;
    FindBox find_;
    TextField line_;
    TextPosition asked_at_;  // where the caret was when a line was asked for
    Completion completion_;

    Reveal reveal_ = Reveal::Caret;  // with the next frame
    int reveal_line_ = -1;
    Scroll rows_;
    int left_ = 0;  // the first column in sight
    Rect text_;     // where the text stands, as drawn last
    EditorMarks marks_;
    std::vector<Span> spans_;  // of the line being drawn
};

}  // namespace zo::ui
