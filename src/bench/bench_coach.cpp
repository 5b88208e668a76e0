#include <algorithm>

#include "bench/bench.h"
#include "bench/coach.h"
#include "bench/coach_keys.h"
#include "shell/shell.h"
#include "small_text.h"

namespace Kest {
namespace {

using zo::ui::Role;

struct LaneMark {
    std::string_view mark;  // as the coach's file names it
    Lane lane;
};
constexpr LaneMark kLaneMarks[] = {
    {"spec-tx", Lane::SpecTx},
    {"tx", Lane::Tx},
    {"rx", Lane::Rx},
    {"host-in", Lane::HostIn},
    {"host-out", Lane::HostOut},
    {"spec-out", Lane::SpecOut},
};

std::optional<Lane> LaneNamed(std::string_view mark) {
    const auto* const row = std::ranges::find(kLaneMarks, mark, &LaneMark::mark);
    return row == std::end(kLaneMarks) ? std::nullopt : std::optional(row->lane);
}

}  // namespace

// The ticket's coach while there is one to listen to: until the ticket is closed.
const kp::CoachEntry* Bench::Coach() const {
    const std::string& id = loaded_.ticket.id;
    const bool wanted = shell_.Settings().Coaches() && !shell_.Progress().IsClosed(id);
    return wanted ? shell_.Content().CoachOn(id) : nullptr;
}

// What a slot holds before the player has written anything.
std::string Bench::OpeningText() const {
    std::string text;
    if (const kp::CoachEntry* entry = Coach()) {
        for (const std::string& line : entry->lines) text += line + "\n";
    }
    return text + loaded_.ticket.starter;
}

// On a coached ticket the caret opens where the player is to write.
void Bench::PlaceCaret() {
    if (Coach() == nullptr || !is_untouched_) return;
    const zo::ui::TextBuffer& text = editor_.Buffer();
    for (int line = 0; line < text.LineCount(); ++line) {
        if (text.Length(line) == 0) return editor_.SetCaret({line, 0});
    }
}

// To be called when the text is another.
void Bench::LookAtFirmware() {
    const bool coached = Coach() != nullptr;
    is_untouched_ = coached && editor_.Text() == OpeningText();
    is_right_ = coached && run_.WouldPass();
}

// What the coach says and points at, for the frame that is drawn.
void Bench::BeCoached(const kp::CoachEntry& entry) {
    const bool has_course = !entry.steps.empty();
    const bool two = run_.TestCount() > 1;
    std::string& ghost = editor_.Marks().ghost;
    ghost = is_untouched_ ? GhostOf(entry, loaded_) : std::string();
    const bool blank = editor_.Buffer().Length(editor_.CaretAt().line) == 0;
    coach_line_ = CoachLine(
        entry, {.stage = stage_,
                .tests = run_.TestCount(),
                .has_instructions = !run_.Firmware().instructions.empty(),
                .is_right = is_right_,
                .first_passed = run_.Mark(0) == TestMark::Passed,
                .second_chosen = run_.TestIndex() == 1,
                .second_run = two && run_.Mark(1) != TestMark::None,
                .stepped = stepped_,
                .commands = editor_.ModeName() == "NORMAL",
                .card_hidden = layout_.size == BenchSize::Narrow && !panes_.InFront(Panel::Card),
                .ghost = blank ? std::string_view(ghost) : std::string_view()});
    // A first ticket's course points at one thing at a time.
    const bool points = !has_course || !NamesAnyKey(coach_line_);
    trace_.SetMark(points ? LaneNamed(entry.mark) : std::nullopt);
    card_.SetMarks(points ? CardMarks{entry.register_name, entry.limit} : CardMarks{});
    marks_rom_ = points && entry.limit == "rom";
    marks_step_ = points && entry.step && stage_ >= StageOf(Command::Step);
    strip_.SetMark(marks_step_ ? std::optional(Command::Step) : std::nullopt);
}

void Bench::StopCoaching() {
    coach_line_.clear();
    editor_.Marks().ghost.clear();
    trace_.SetMark(std::nullopt);
    card_.SetMarks({});
    strip_.SetMark(std::nullopt);
    marks_rom_ = marks_step_ = false;
}

void Bench::DrawCoach(zo::ui::Canvas& canvas) const {
    const zo::ui::Rect& row = layout_.coach;
    if (row.Empty()) return;
    const bool speaks = !coach_line_.empty();
    canvas.Fill(row, U' ', speaks ? Role::Coach : Role::Panel);
    if (speaks) canvas.Text(row.x + 1, row.y, "COACH │ " + coach_line_, Role::Coach);
}

// Whether the coach points at a key of the key bar.
bool Bench::PointsAt(const BenchKey& key) const {
    if (coach_line_.empty()) return false;
    return (marks_step_ && key.command == Command::Step) ||
           NamesKey(coach_line_, zo::ui::KeyName(key.key));
}

}  // namespace Kest
