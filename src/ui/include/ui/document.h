#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ui/text_buffer.h"

namespace zo::ui {

// The caret, and the other end of what is selected; both at one place when nothing is.
struct Selection {
    TextPosition caret;
    TextPosition anchor;

    static Selection At(TextPosition caret) { return {caret, caret}; }
    bool Empty() const { return caret == anchor; }
    TextPosition From() const { return std::min(caret, anchor); }
    TextPosition To() const { return std::max(caret, anchor); }
    bool operator==(const Selection&) const = default;
};

struct Edit {
    TextPosition from;
    std::u16string removed;
    std::u16string added;
    bool to_line_end = false;  // nothing of its last line stood behind it

    TextPosition OldEnd() const { return EndOf(removed, from); }
    TextPosition NewEnd() const { return EndOf(added, from); }
};

// Edits that are taken back together, in the order in which they were made.
struct EditStep {
    std::vector<Edit> edits;
    Selection before;
    Selection after;
    bool no_line_left = false;  // all lines went, and the empty one stands for none
};

// A text with the history of its edits. Everything that changes the text goes through Replace, so
// undoing all leads back to the start, and redoing all to the end.
class Document {
public:
    const TextBuffer& Text() const { return text_; }
    // Another text, without a history.
    void Set(std::u16string_view text);

    // The next edit begins a new step, for which the selection was this one.
    void Open(const Selection& before);
    // Further edits go on with the last step, unless that was undone.
    void Continue() { open_ = redone_ == steps_.size() && !steps_.empty(); }
    // Where the last step leaves the caret; redoing it goes there.
    void Leave(const Selection& after);

    // Whether all lines were taken away, so that there is none to put others beside. It stays so
    // until an edit changes the text.
    bool NoLineLeft() const { return redone_ > 0 && steps_[redone_ - 1].no_line_left; }
    void SetNoLineLeft(bool none);

    // The position behind what was put in. An edit that changes nothing is still one.
    TextPosition Replace(TextPosition from, TextPosition to, std::u16string_view added);

    // The step that was taken back or made again, valid until the next edit; null without one.
    const EditStep* Undo();
    const EditStep* Redo();

    // Changes with the text, so that others know when to look again.
    std::uint64_t Revision() const { return revision_; }

    // Lines that are marked, such as for breakpoints, in no order. Marks move along with their
    // lines; those of lines that are joined to others go.
    std::vector<int>& Marks() { return marks_; }
    const std::vector<int>& Marks() const { return marks_; }

private:
    void Apply(TextPosition from, TextPosition to, std::u16string_view added);

    TextBuffer text_;
    std::vector<EditStep> steps_;
    std::size_t redone_ = 0;  // the steps before this one are in the text
    bool open_ = false;       // the last step takes further edits
    Selection before_;        // of the step that the next edit begins
    std::vector<int> marks_;
    std::uint64_t revision_ = 0;
};

// A text being edited, and where.
struct EditState {
    Document document;
    Selection selection;
    int goal = 0;               // the column that the next move up or down aims for
    bool fresh_indent = false;  // the caret stands behind an indent that came by itself

    const TextBuffer& Text() const { return document.Text(); }
    TextPosition Caret() const { return selection.caret; }
};

}  // namespace zo::ui
