#include <algorithm>
#include <cstdio>

#include "base/utf.h"
#include "base/wrap.h"
#include "text_search.h"
#include "ui/code_editor.h"
#include "ui/text_cells.h"
#include "vi/machine.h"

namespace zo::ui {
namespace {

constexpr int kRowMargin = 3;  // rows kept in sight around the caret
constexpr int kColumnMargin = 8;
constexpr int kSidewaysColumns = 4;  // a step of the wheel
constexpr char32_t kNoGlyph = U'?';
constexpr int kBeside = 2;             // cells between a line and the error's sentence
constexpr double kDragSeconds = 0.05;  // between two steps of a drag held outside the text
constexpr int kMostNoteRows = 2;       // of an error below the text

bool HasGlyph(char16_t c) {
    return c >= u' ' && (c < 0x7F || c > 0x9F) && !base::IsHighHalf(c) && !base::IsLowHalf(c);
}

// The classic look has a cell to draw the caret in, the modern one a line beside it. In the modes
// in which letters are commands it is a block.
CaretShape ShapeIn(Look look, bool commands) {
    if (commands) return CaretShape::Block;
    return look == Look::Classic ? CaretShape::LowerThird : CaretShape::Bar;
}

}  // namespace

void CodeEditor::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused) {
    const Rect inner = pane.Inner();
    if (inner.width <= kGutter || inner.height < 1) return;
    const int footer = DrawFooter(canvas, pressables, inner, focused);
    text_ = {inner.x + kGutter, inner.y, inner.width - kGutter, inner.height - footer};
    AddPressables(pressables, {inner.x, inner.y, inner.width, text_.height});
    Follow();
    const int end = std::min(rows_.Top() + text_.height, Buffer().LineCount());
    for (int line = rows_.Top(); line < end; ++line) {
        const Rect row = inner.Row(line - rows_.Top());
        DrawGutter(canvas, row, line);
        DrawLine(canvas, {text_.x, row.y, text_.width, 1}, line);
        if (line == marks_.next_line) canvas.Tint(row, Role::LineNext);
    }
    DrawCaret(canvas, focused);
    rows_.Draw(canvas, pressables, pane);
    pressables.Add(text_).wheel = [this](int steps, const Modifiers& with) {
        if (!with.shift) return rows_.Wheel(steps);
        ScrollSideways(-steps * kSidewaysColumns);
    };
    const Rect above_notes = {inner.x, inner.y, inner.width, text_.height};
    if (completion_.IsOpen()) DrawCompletion(canvas, pressables, above_notes);
}

// Brings the caret, or the line that was asked for, into sight.
void CodeEditor::Follow() {
    rows_.Measure(Buffer().LineCount(), text_.height);
    if (reveal_line_ >= 0) {
        rows_.Reveal(reveal_line_, kRowMargin);
    } else if (reveal_ != Reveal::Nothing) {
        const bool alone = reveal_ == Reveal::CaretAlone;
        const TextPosition caret = state_.Caret();
        rows_.Reveal(caret.line, alone ? 0 : kRowMargin);
        const int margin = alone ? 0 : std::min(kColumnMargin, (text_.width - 1) / 2);
        const int least = std::max(caret.column - margin, 0);
        const int most = std::min(caret.column + margin, Buffer().Length(caret.line));
        left_ = std::clamp(left_, std::max(most + 1 - text_.width, 0), least);
    }
    reveal_ = Reveal::Nothing;
    reveal_line_ = -1;
}

const EditorMarks::Error* CodeEditor::ErrorOn(int line) const {
    const auto found = std::ranges::lower_bound(marks_.errors, line, {}, &EditorMarks::Error::line);
    return found != marks_.errors.end() && found->line == line ? &*found : nullptr;
}

void CodeEditor::DrawGutter(Canvas& canvas, const Rect& row, int line) {
    const std::vector<int>& breakpoints = state_.document.Marks();
    const Role role = line == state_.Caret().line ? Role::GutterHere : Role::Gutter;
    char number[16];
    std::snprintf(number, sizeof number, "%4d", line + 1);
    canvas.Text(row.x, row.y, number, role);
    if (ErrorOn(line)) {
        canvas.Put(row.x, row.y, U'!', Role::Fault);
    } else if (std::ranges::count(breakpoints, line) > 0) {
        canvas.Put(row.x, row.y, U'•', Role::MarkBreak);
    }
    if (line == marks_.next_line) canvas.Put(row.x + 4, row.y, U'►', role);
}

void CodeEditor::DrawLine(Canvas& canvas, const Rect& row, int line) {
    const std::u16string& text = Buffer().Line(line);
    const int length = Buffer().Length(line);
    const Canvas::Clip clip(canvas, row);
    const int shift = row.x - left_;  // from a column of the text to one of the screen
    for (int column = left_; column < std::min(length, left_ + row.width); ++column) {
        const char16_t c = text[static_cast<std::size_t>(column)];
        const bool known = HasGlyph(c);
        canvas.Put(shift + column, row.y, known ? c : kNoGlyph,
                   known ? Role::Code : Role::PanelDim);
    }
    spans_.clear();
    if (links.colour) links.colour(text, spans_);
    for (const EditorMarks::Error* error = ErrorOn(line);
         error && error != marks_.errors.data() + marks_.errors.size() && error->line == line;
         ++error) {
        spans_.push_back({error->column, error->length, Role::CodeError});
    }
    for (const Span& span : spans_) {
        canvas.Tint({shift + span.column, row.y, span.length, 1}, span.role);
    }
    TintMatches(canvas, row, line);
    TintSelection(canvas, row, line);
    if (left_ > 0 && length > 0) canvas.Put(row.x, row.y, U'«', Role::PanelDim);
    if (length > left_ + row.width) canvas.Put(row.Right() - 1, row.y, U'»', Role::PanelDim);
    DrawErrorBeside(canvas, row, line);
}

// The sentence stands behind the line where there is room for all of it.
bool CodeEditor::FitsBeside(const EditorMarks::Error& error, int width) const {
    const int behind = Buffer().Length(error.line) - left_ + kBeside;
    return behind >= kBeside && behind + 2 + Cells(error.message) <= width;
}

void CodeEditor::DrawErrorBeside(Canvas& canvas, const Rect& row, int line) const {
    const EditorMarks::Error* error = ErrorOn(line);
    if (!error || error->message.empty() || !FitsBeside(*error, row.width)) return;
    const int x = row.x + Buffer().Length(line) - left_ + kBeside;
    canvas.Text(x, row.y, "! " + error->message, Role::CodeNote);
    canvas.Put(x, row.y, U'!', Role::Fault);
}

void CodeEditor::TintSelection(Canvas& canvas, const Rect& row, int line) const {
    const auto range = SelectedRange();
    if (!range || line < range->from.line || line > range->to.line) return;
    const int from = line == range->from.line ? range->from.column : 0;
    const bool goes_on = line < range->to.line;  // the line's end is selected, too
    const int to = goes_on ? Buffer().Length(line) + 1 : range->to.column;
    canvas.Tint({row.x - left_ + from, row.y, to - from, 1}, Role::EditSel);
}

std::u16string CodeEditor::SearchShown() const {
    if (asks_ == Asks::Find) return base::ToUtf16(find_.field.Text());
    const vi::TypedLine* typed = vi_ ? vi_->Line() : nullptr;
    return typed && typed->sign != U':' ? typed->text : std::u16string();
}

void CodeEditor::TintMatches(Canvas& canvas, const Rect& row, int line) const {
    const TextSearch search{.text = SearchShown(), .any_case = asks_ == Asks::Find};
    if (search.text.empty()) return;
    const auto length = static_cast<int>(search.text.size());
    std::size_t from = 0;
    while (const auto at = NextMatch(Buffer().Line(line), search, from)) {
        if (*at >= left_ + row.width) return;
        canvas.Tint({row.x - left_ + *at, row.y, length, 1}, Role::Find);
        from = static_cast<std::size_t>(*at + length);
    }
}

// Below the text stand a question or what is to be said about the caret's line. Returns the rows
// that they take.
int CodeEditor::DrawFooter(Canvas& canvas, Pressables& pressables, const Rect& inner,
                           bool focused) {
    const vi::TypedLine* typed = vi_ ? vi_->Line() : nullptr;
    if (asks_ == Asks::Nothing && (!typed || typed->sign == U':')) return DrawNotes(canvas, inner);
    DrawQuestion(canvas, pressables, inner.Row(inner.height - 1), focused);
    return 1;
}

void CodeEditor::DrawQuestion(Canvas& canvas, Pressables& pressables, const Rect& row,
                              bool focused) {
    if (asks_ == Asks::Find) return find_.Draw(canvas, pressables, row, focused);
    canvas.Fill(row, U' ', Role::Panel);
    if (asks_ == Asks::Line) {
        const int x = canvas.Text(row.x, row.y, " Line ", Role::PanelDim);
        return line_.Draw(canvas, pressables, {x, row.y, row.Right() - 1 - x, 1}, focused);
    }
    const vi::TypedLine& typed = *vi_->Line();
    TextField field;
    field.SetText(base::ToUtf8(std::u16string_view(typed.text)));
    canvas.Put(row.x + 1, row.y, typed.sign, Role::PanelDim);
    field.Draw(canvas, pressables, {row.x + 2, row.y, row.width - 3, 1}, focused);
}

// A hint on the line that is being typed; else the error on the caret's line when there is no room
// for it behind the line.
int CodeEditor::DrawNotes(Canvas& canvas, const Rect& inner) const {
    const int most = std::min(inner.height / 3, kMostNoteRows);
    if (most < 1) return 0;
    const int line = state_.Caret().line;
    if (typing_line_ == line && links.describe) {
        const TypingHint hint = links.describe(Buffer().Line(line), state_.Caret().column);
        if (!hint.text.empty()) {
            const Rect row = inner.Row(inner.height - 1);
            canvas.Fill(row, U' ', Role::Panel);
            canvas.Field({row.x + 1, row.y, row.width - 2, 1}, hint.text, Role::PanelDim);
            canvas.Tint({row.x + 1 + hint.from, row.y, hint.length, 1}, Role::PanelBright);
            return 1;
        }
    }
    const EditorMarks::Error* error = ErrorOn(line);
    if (!error || error->message.empty() || FitsBeside(*error, inner.width - kGutter)) return 0;
    std::vector<std::string> rows = base::WrapEven(error->message, inner.width - 4);
    if (static_cast<int>(rows.size()) > most) {
        rows.resize(static_cast<std::size_t>(most));
        rows.back() += " »";
    }
    const auto count = static_cast<int>(rows.size());
    for (int k = 0; k < count; ++k) {
        const Rect row = inner.Row(inner.height - count + k);
        canvas.Fill(row, U' ', Role::Fault);
        if (k == 0) canvas.Put(row.x + 1, row.y, U'!', Role::Fault);
        canvas.Text(row.x + 3, row.y, rows[static_cast<std::size_t>(k)], Role::Fault);
    }
    return count;
}

void CodeEditor::DrawCaret(Canvas& canvas, bool focused) {
    const TextPosition caret = state_.Caret();
    const int y = text_.y + caret.line - rows_.Top();
    const int x = text_.x + caret.column - left_;
    const Canvas::Clip clip(canvas, text_);
    if (Buffer().Length(caret.line) == 0) canvas.Text(x, y, marks_.ghost, Role::Ghost);
    const bool elsewhere = asks_ != Asks::Nothing || (vi_ && vi_->Line());
    if (!focused || elsewhere) return;
    const bool commands = vi_ && vi_->Mode() != vi::Mode::Insert;
    canvas.SetCaret(x, y, ShapeIn(canvas.CurrentLook(), commands));
}

void CodeEditor::DrawCompletion(Canvas& canvas, Pressables& pressables, const Rect& room) {
    const Point word = {text_.x + WordStart() - left_, text_.y + state_.Caret().line - rows_.Top()};
    if (!room.Contains(word)) return;
    completion_.Draw(canvas, pressables, room, word, [this] { AcceptCompletion(); });
}

// The pointer.

TextPosition CodeEditor::PositionAt(Point at) const {
    const int line = std::clamp(rows_.Top() + at.y - text_.y, 0, Buffer().LineCount() - 1);
    return Buffer().Clamped({line, left_ + at.x - text_.x});
}

void CodeEditor::AddPressables(Pressables& pressables, const Rect& area) {
    Pressable& text = pressables.Add(area);
    text.press = [this](const PointerPress& press) { Press(press); };
    text.drag = [this](Point at) { Drag(at); };
    text.released = [this] { EndDrag(); };
    if (!pressables.Pressed(area)) EndDrag();
    text.middle = [this](Point at) { PasteSelection(at); };
}

// What a press selects: a place, a word or a line.
CodeEditor::Range CodeEditor::UnitAt(TextPosition at) const {
    if (drag_clicks_ < 2) return {at, at};
    if (drag_clicks_ == 2) return WordAt(at);
    const bool last = at.line + 1 == Buffer().LineCount();
    return {{at.line, 0}, last ? Buffer().End() : TextPosition{at.line + 1, 0}};
}

void CodeEditor::Press(const PointerPress& press) {
    StopAsking();
    completion_.Close();
    last_edits_ = Edits::Apart;
    drag_clicks_ = 0;
    const int line = rows_.Top() + press.at.y - text_.y;
    if (press.at.x < text_.x) {
        if (links.gutter_pressed && line < Buffer().LineCount()) links.gutter_pressed(line);
        return;
    }
    drag_clicks_ = press.clicks;
    dragged_text_ = state_.document.Revision();
    if (press.clicks < 2 && press.with.shift) {
        drag_start_ = {state_.selection.anchor, state_.selection.anchor};
        return Drag(press.at);
    }
    drag_start_ = UnitAt(PositionAt(press.at));
    Select(drag_start_.from, drag_start_.to);
    reveal_ = Reveal::CaretAlone;
    ReportSelection();
}

void CodeEditor::Drag(Point at) {
    DragTo(at);
    if (text_.Contains(at)) {
        EndDrag();
    } else {
        held_at_ = at;
    }
}

void CodeEditor::EndDrag() {
    held_at_.reset();
    drag_due_.reset();
}

std::optional<double> CodeEditor::NextFrameAt() const {
    return held_at_ ? drag_due_.value_or(0) : std::optional<double>();
}

bool CodeEditor::Update(double now) {
    if (!held_at_ || (drag_due_ && now < *drag_due_)) return false;
    const bool goes_on = drag_due_.has_value();
    drag_due_ = now + kDragSeconds;
    if (!goes_on) return false;
    const TextPosition caret = state_.Caret();
    DragTo(*held_at_);
    if (state_.Caret() != caret) return true;
    EndDrag();
    return false;
}

// From what was pressed to where the pointer is, on either side.
void CodeEditor::DragTo(Point at) {
    if (drag_clicks_ == 0 || dragged_text_ != state_.document.Revision()) return;
    const Range to = UnitAt(PositionAt(at));
    if (to.from < drag_start_.from) {
        Select(drag_start_.to, to.from);
    } else {
        Select(drag_start_.from, std::max(to.to, drag_start_.to));
    }
    reveal_ = Reveal::CaretAlone;
    ReportSelection();
}

void CodeEditor::PasteSelection(Point at) {
    if (!links.selection || at.x < text_.x) return;
    StopAsking();
    SetCaret(PositionAt(at));
    PasteText(links.selection());
}

void CodeEditor::ScrollSideways(int columns) {
    int longest = 0;
    for (int line = 0; line < Buffer().LineCount(); ++line) {
        longest = std::max(longest, Buffer().Length(line));
    }
    left_ = std::clamp(left_ + columns, 0, std::max(longest + 1 - text_.width, 0));
}

}  // namespace zo::ui
