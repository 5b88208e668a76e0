#include <algorithm>
#include <cstdio>

#include "ui/code_editor.h"

namespace zo::ui {
namespace {

constexpr int kRowMargin = 3;  // rows kept in sight around the caret
constexpr int kColumnMargin = 8;
constexpr char32_t kNoGlyph = U'?';

bool HasGlyph(char32_t c) {
    return c >= U' ' && (c < 0x7F || c > 0x9F) && c <= 0xFFFF;
}

// The classic look has a cell to draw the caret in, the modern one a line beside it.
CaretShape ShapeIn(Look look) {
    return look == Look::Classic ? CaretShape::LowerThird : CaretShape::Bar;
}

}  // namespace

void CodeEditor::Draw(Canvas& canvas, Pressables& pressables, const Rect& pane, bool focused) {
    const Rect inner = pane.Inner();
    text_ = {inner.x + kGutter, inner.y, inner.width - kGutter, inner.height};
    if (text_.Empty()) return;
    Follow();
    const int end = std::min(rows_.Top() + inner.height, buffer_.LineCount());
    for (int line = rows_.Top(); line < end; ++line) {
        const Rect row = inner.Row(line - rows_.Top());
        DrawGutter(canvas, row, line);
        DrawLine(canvas, {text_.x, row.y, text_.width, 1}, line);
        if (line == marks_.next_line) canvas.Tint(row, Role::LineNext);
    }
    DrawCaret(canvas, focused);
    pressables.Add(inner).press = [this](const PointerPress& press) { Press(press.at); };
    rows_.Draw(canvas, pressables, pane);
}

// Brings the caret, or the line that was asked for, into sight.
void CodeEditor::Follow() {
    rows_.Measure(buffer_.LineCount(), text_.height);
    if (reveal_line_ >= 0) {
        rows_.Reveal(reveal_line_, kRowMargin);
    } else if (reveal_) {
        rows_.Reveal(caret_.line, kRowMargin);
        const int margin = std::min(kColumnMargin, (text_.width - 1) / 2);
        const int least = std::max(caret_.column - margin, 0);
        const int most = std::min(caret_.column + margin, buffer_.Length(caret_.line));
        left_ = std::clamp(left_, std::max(most + 1 - text_.width, 0), least);
    }
    reveal_ = false;
    reveal_line_ = -1;
}

void CodeEditor::DrawGutter(Canvas& canvas, const Rect& row, int line) {
    const bool wrong = std::any_of(marks_.errors.begin(), marks_.errors.end(),
                                   [&](const EditorMarks::Error& e) { return e.line == line; });
    const bool stops = std::count(marks_.breakpoints.begin(), marks_.breakpoints.end(), line) > 0;
    const Role role = line == caret_.line ? Role::GutterHere : Role::Gutter;
    char number[16];
    std::snprintf(number, sizeof number, "%4d", line + 1);
    canvas.Text(row.x, row.y, number, role);
    if (wrong) {
        canvas.Put(row.x, row.y, U'!', Role::Fault);
    } else if (stops) {
        canvas.Put(row.x, row.y, U'•', Role::MarkBreak);
    }
    if (line == marks_.next_line) canvas.Put(row.x + 4, row.y, U'►', role);
}

void CodeEditor::DrawLine(Canvas& canvas, const Rect& row, int line) {
    const std::u32string& text = buffer_.Line(line);
    const int length = buffer_.Length(line);
    const Canvas::Clip clip(canvas, row);
    const int shift = row.x - left_;  // from a column of the text to one of the screen
    for (int column = left_; column < std::min(length, left_ + row.width); ++column) {
        const char32_t c = text[static_cast<std::size_t>(column)];
        const bool known = HasGlyph(c);
        canvas.Put(shift + column, row.y, known ? c : kNoGlyph,
                   known ? Role::Code : Role::PanelDim);
    }
    spans_.clear();
    if (colour) colour(text, spans_);
    for (const EditorMarks::Error& error : marks_.errors) {
        if (error.line == line) spans_.push_back({error.column, error.length, Role::CodeError});
    }
    for (const Span& span : spans_) {
        canvas.Tint({shift + span.column, row.y, span.length, 1}, span.role);
    }
    if (left_ > 0 && length > 0) canvas.Put(row.x, row.y, U'«', Role::PanelDim);
    if (length > left_ + row.width) canvas.Put(row.Right() - 1, row.y, U'»', Role::PanelDim);
}

void CodeEditor::DrawCaret(Canvas& canvas, bool focused) {
    const int y = text_.y + caret_.line - rows_.Top();
    const int x = text_.x + caret_.column - left_;
    const Canvas::Clip clip(canvas, text_);
    if (buffer_.Length(caret_.line) == 0) canvas.Text(x, y, marks_.ghost, Role::Ghost);
    if (focused) canvas.SetCaret(x, y, ShapeIn(canvas.CurrentLook()));
}

void CodeEditor::Press(Point at) {
    const int line = rows_.Top() + at.y - text_.y;
    if (at.x >= text_.x) {
        SetCaret({line, left_ + at.x - text_.x});
    } else if (gutter_pressed && line < buffer_.LineCount()) {
        gutter_pressed(line);
    }
}

}  // namespace zo::ui
