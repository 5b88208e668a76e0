#include "ui/document.h"

namespace zo::ui {

void Document::Set(std::u16string_view text) {
    text_.Set(text);
    steps_.clear();
    redone_ = 0;
    open_ = false;
    before_ = {};
    marks_.clear();
    ++revision_;
}

void Document::Open(const Selection& before) {
    before_ = before;
    open_ = false;
}

void Document::Leave(const Selection& after) {
    if (redone_ > 0) steps_[redone_ - 1].after = after;
}

void Document::SetNoLineLeft(bool none) {
    if (redone_ > 0) steps_[redone_ - 1].no_line_left = none;
}

TextPosition Document::Replace(TextPosition from, TextPosition to, std::u16string_view added) {
    if (!open_) {
        steps_.resize(redone_);
        steps_.push_back({{}, before_, before_, NoLineLeft()});
        redone_ = steps_.size();
        open_ = true;
    }
    Edit& edit = steps_.back().edits.emplace_back(
        Edit{from, text_.Text(from, to), std::u16string(added), to == text_.EndOf(to.line)});
    if (edit.removed == edit.added) return to;
    Apply(from, to, added);
    steps_.back().no_line_left = false;
    return edit.NewEnd();
}

void Document::Apply(TextPosition from, TextPosition to, std::u16string_view added) {
    ++revision_;
    const TextPosition end = text_.Replace(from, to, added);
    const bool from_start = from.column == 0 && end.column == 0;
    const bool takes_line = from_start && to.line > from.line && to.column == 0 && end == from;
    const bool pushes_line = from_start && to.line == from.line && end.line > from.line;
    const bool keeps_last = to.column == 0 && end.column == 0;
    std::erase_if(marks_, [&](int line) {
        if (line == from.line) return takes_line;
        return line > from.line && (line < to.line || (line == to.line && !keeps_last));
    });
    for (int& line : marks_) {
        if (line > from.line || pushes_line) line += line < from.line ? 0 : end.line - to.line;
    }
}

const EditStep* Document::Undo() {
    open_ = false;
    if (redone_ == 0) return nullptr;
    const EditStep& step = steps_[--redone_];
    for (auto edit = step.edits.rbegin(); edit != step.edits.rend(); ++edit) {
        Apply(edit->from, edit->NewEnd(), edit->removed);
    }
    return &step;
}

const EditStep* Document::Redo() {
    open_ = false;
    if (redone_ == steps_.size()) return nullptr;
    const EditStep& step = steps_[redone_++];
    for (const Edit& edit : step.edits) Apply(edit.from, edit.OldEnd(), edit.added);
    return &step;
}

}  // namespace zo::ui
