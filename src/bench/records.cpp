#include "bench/records.h"

#include <algorithm>

#include "base/format.h"
#include "base/line_diff.h"
#include "shell/shell.h"

namespace Kest {
namespace {

using zo::ui::Paragraph;
using zo::ui::Role;

constexpr int kWidth = 72;
constexpr int kRowsAbove = 2;  // of a change that is shown
constexpr zo::ui::KeyPress kNextChange = {.key = zo::ui::Key::Character, .character = U'n'};

Paragraph RowOf(const base::DiffRow& row) {
    const bool both = row.of == base::DiffRow::Of::Both;
    const bool added = row.of == base::DiffRow::Of::Second;
    Paragraph paragraph;
    paragraph.text = base::Format("%c %3d  ", static_cast<char>(row.of), row.number);
    paragraph.text += row.line;
    paragraph.role = both || added ? Role::Dialog : Role::DialogDim;
    paragraph.wrap = zo::ui::Wrap::Kept;
    if (!both) paragraph.spans.push_back({0, 1, added ? Role::ChipOk : Role::ChipWarn});
    return paragraph;
}

}  // namespace

Records::Records(Shell& shell, Contents contents)
    : Screen(shell), contents_(std::move(contents)), dialog_("RECORDS", {}, {.width = kWidth}) {
    dialog_.text.copy = [this](const std::string& text) { shell_.SetClipboardText(text); };
    std::vector<zo::ui::ButtonRow::Item> items;
    items.push_back({"~L~oad", "Into a free slot.", [this] {
                         shell_.CloseOverlay();
                         contents_.load(Shown());
                     }});
    items.push_back(
        {"~C~opy card", "As text to hand on.", [this] { contents_.copy_card(Shown()); }});
    if (contents_.records.size() > 1) {
        items.push_back({"~O~ther record", "Best lines, best ticks.", [this] { ShowOther(); }});
    }
    items.push_back({"Close", "Back to the bench.", [this] { shell_.CloseOverlay(); }});
    dialog_.buttons.Set(std::move(items));
    Fill();
}

void Records::Fill() {
    std::vector<Paragraph> text;
    text.push_back({.text = Shown().name + ": " + Shown().comes_to + ".", .role = Role::Dialog});
    const auto rows = base::DiffLines(contents_.slot_text, Shown().firmware);
    const bool same = std::ranges::all_of(
        rows, [](const base::DiffRow& row) { return row.of == base::DiffRow::Of::Both; });
    text.push_back(
        {.text = same ? "It is what " + contents_.slot_name + " holds."
                      : "+ stands in the record alone, - in " + contents_.slot_name + " alone.",
         .role = Role::DialogDim});
    text.push_back({});
    changes_.clear();
    change_ = 0;
    bool before = false;
    for (const base::DiffRow& row : rows) {
        const bool differs = row.of != base::DiffRow::Of::Both;
        // Each paragraph takes one row: they are short, or do not wrap.
        if (differs && !before) changes_.push_back(static_cast<int>(text.size()));
        before = differs;
        text.push_back(RowOf(row));
    }
    dialog_.text.Set(std::move(text));
}

void Records::ShowOther() {
    shown_ = (shown_ + 1) % contents_.records.size();
    Fill();
    shell_.RequestRedraw();
}

bool Records::ShowNextChange() {
    if (changes_.empty()) return false;
    dialog_.text.View().To(changes_[change_] - kRowsAbove);
    change_ = (change_ + 1) % changes_.size();
    shell_.RequestRedraw();
    return true;
}

void Records::Draw(zo::ui::Canvas& canvas, zo::ui::Pressables& pressables) {
    dialog_.Draw(canvas, pressables);
}

void Records::DescribeFrame(FrameRecord& record) const {
    record.title = dialog_.Title();
    record.right = dialog_.buttons.FocusedHint();
    record.keys.push_back({{}, "↑↓", "Scroll"});
    record.keys.push_back({{}, "←→", "Choose"});
    record.keys.push_back({{.key = zo::ui::Key::Enter}, "", "Press"});
    if (!changes_.empty()) record.keys.push_back({kNextChange, "", "Next change"});
    record.keys.push_back({{.key = zo::ui::Key::Escape}, "", "Close"});
}

bool Records::Key(const zo::ui::KeyPress& key) {
    if (key.Is(zo::ui::Key::Escape)) {
        shell_.CloseOverlay();
        return true;
    }
    if (key.Is(kNextChange.key) && key.character == kNextChange.character) return ShowNextChange();
    return dialog_.Key(key);
}

}  // namespace Kest
