#include <algorithm>

#include "base/utf.h"
#include "bench/bench.h"

namespace Kest {
namespace {

std::string_view NameInWords(Panel panel) {
    constexpr std::string_view kNames[] = {"Firmware", "Ticket",   "Hints", "Card", "Specification",
                                           "Host",     "Controls", "Trace", "Notes"};
    static_assert(std::size(kNames) == kPanels);
    return kNames[static_cast<std::size_t>(panel)];
}

std::string Joined(const std::vector<std::string>& sentences) {
    std::string text;
    for (const std::string& sentence : sentences) text += (text.empty() ? "" : " ") + sentence;
    return text;
}

}  // namespace

std::optional<zo::ui::Rect> Bench::FocusedPane() const {
    const zo::ui::Rect& pane = layout_.Of(panes_.Focused());
    return pane.Empty() ? std::nullopt : std::optional(pane);
}

// With what the gutter and the row itself show beside the text.
std::string Bench::FirmwareLine(int line) const {
    std::string text = base::ToUtf8(editor_.Buffer().Line(line));
    if (text.find_first_not_of(" \t") == std::string::npos) text = "empty";
    const zo::ui::EditorMarks& marks = editor_.Marks();
    for (const zo::ui::EditorMarks::Error& error : marks.errors) {
        if (error.line == line) text += ". Error: " + error.message;
    }
    if (std::ranges::count(editor_.Breakpoints(), line) > 0) text += ". Breakpoint.";
    if (marks.next_line == line) text += ". Next line.";
    return text;
}

void Bench::Describe(Speech& speech) const {
    const Panel panel = panes_.Focused();
    speech.focus = "Bench, " + std::string(NameInWords(panel));
    if (panel == Panel::Firmware) {
        if (editor_.HasViKeys()) {
            speech.focus += ", " + TitleInWords(editor_.ModeName()) + " mode";
        }
        const int line = editor_.CaretAt().line;
        speech.rows.clear();
        speech.place = "Line " + std::to_string(line + 1) + " of " +
                       std::to_string(editor_.Buffer().LineCount());
        speech.line = FirmwareLine(line);
    } else if (panel == Panel::Strip || panel == Panel::Trace) {
        speech.rows.clear();
    }
    if (!coach_line_.empty()) speech.advice = "Coach: " + coach_line_;
    // Values that run along with a test would drown everything else.
    if (run_.State() == RunState::Running) speech.rows.clear();
    if (const std::optional<TickRange> ticks = trace_.CursorTicks()) {
        speech.note =
            Joined(NotesOf(run_.Trace(), run_.CalledForBytes(), loaded_.ticket.frame, *ticks));
        if (speech.note.empty()) speech.note = RangeText(*ticks);
    }
}

}  // namespace Kest
