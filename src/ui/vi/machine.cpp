#include "vi/machine.h"

#include <algorithm>
#include <utility>

#include "base/utf.h"
#include "editing.h"
#include "vi/words.h"

namespace zo::ui::vi {
namespace {

std::u16string TextOf(Key key) {
    std::u16string text;
    base::AppendUtf16(text, key);
    return text;
}

}  // namespace

void Machine::Reset() {
    if (mode_ == Mode::Insert) FinishInsert();
    mode_ = Mode::Normal;
    pending_.clear();
    line_.reset();
    Place(Caret());
}

Wishes Machine::Type(Key key, View view) {
    view_ = view;
    if (line_) {
        LineKey(key);
    } else if (mode_ == Mode::Insert) {
        InsertKey(key);
    } else {
        CommandKey(key);
    }
    return std::exchange(wishes_, {});
}

void Machine::CommandKey(Key key) {
    if (key == kEscape) {
        if (pending_.empty()) EscapeVisual();
        pending_.clear();
        return;
    }
    // Del takes back a digit of a count.
    if (key == kDelete && !pending_.empty() && pending_.back() <= U'9' && pending_.back() >= U'0') {
        pending_.pop_back();
        return;
    }
    pending_ += key;
    Command command;
    switch (Parse(pending_, mode_, command)) {
        case Parsed::Incomplete:
            return;
        case Parsed::NeedsText:
            line_ = {key};
            return;
        case Parsed::Complete:
            Run(std::move(command));
            break;
        case Parsed::Unknown:
            break;
    }
    pending_.clear();
}

void Machine::Run(Command command) {
    if (read_only_ && command.Changes()) {
        wishes_.refused = true;
        LeaveVisual();
        return;
    }
    touched_ = false;
    const auto selected = Selection();
    const Size size = selected ? SizeOf(*selected) : Size{};
    if (!Execute(command)) return;
    if (command.Changes()) {
        if (command.act && command.act->erases_first) {
            command = {};
            command.op = RowOf(Operator::Delete);
        }
        last_change_ = Change{.command = command, .size = size, .typed = {}};
    }
    if (mode_ != Mode::Insert && touched_) state_.document.Leave(state_.selection);
}

bool Machine::Execute(Command& command) {
    if (IsVisual(mode_)) return ExecuteInVisual(command);
    if (command.op) return Operate(command);
    return command.motion ? Move(command) : command.act->perform(*this, command);
}

bool Machine::ExecuteInVisual(Command& command) {
    if (command.object) return SelectObject(command);
    if (command.motion) return Move(command);
    if (!command.TakesRegion()) return command.act->perform(*this, command);
    if (command.lines) mode_ = Mode::VisualLine;
    const Region region = *Selection();
    LeaveVisual();
    ActOn(command, region);
    return true;
}

// What an operator or another command makes of a selection.
void Machine::ActOn(const Command& command, const Region& region) {
    if (command.op) return Apply(command.op->op, region, command.Times());
    command.act->on_region(*this, command, region);
}

bool Machine::OpenCommandLine() {
    LeaveVisual();
    line_ = {U':'};
    return true;
}

// Typed lines: ":" commands and what to search for.

void Machine::LineKey(Key key) {
    std::u16string& text = line_->text;
    if (key == kEnter) {
        const TypedLine line = *std::exchange(line_, std::nullopt);
        Enter(line);
    } else if (key == kEscape || (key == kBackspace && text.empty())) {
        line_.reset();
        pending_.clear();
    } else if (key == kBackspace) {
        const bool pair = text.size() > 1 && base::IsLowHalf(text.back());
        text.resize(text.size() - (pair ? 2 : 1));
    } else if (key == Control('u')) {
        text.clear();
    } else if (IsText(key)) {
        base::AppendUtf16(text, key);
    }
}

void Machine::Enter(const TypedLine& line) {
    if (line.sign == U':') {
        wishes_.command = line.text;
        return;
    }
    Command command;
    Parse(std::exchange(pending_, {}), mode_, command);
    command.text = line.text;
    Run(std::move(command));
}

// Motions.

std::optional<Target> Machine::Seek(const Command& command, Asker asker) {
    if (command.motion->takes == Motion::Takes::Text) {
        TextSearch& search = searches_.text;
        if (!command.text.empty()) search = {.text = command.text};
        searches_.text_forward = command.motion->keys == U"/";
    }
    return command.motion->go({.text = Text(),
                               .from = Caret(),
                               .count = command.count,
                               .character = command.character,
                               .asker = asker,
                               .goal = state_.goal,
                               .view = view_,
                               .searches = searches_});
}

bool Machine::Move(const Command& command) {
    const auto target = Seek(command, IsVisual(mode_) ? Asker::Selection : Asker::Caret);
    if (!target) return false;
    Go(*target);
    return true;
}

void Machine::Go(const Target& target) {
    Place(target.at);
    if (target.goal != kOwnColumn) state_.goal = target.goal;
}

void Machine::Place(TextPosition at) {
    at = Text().Clamped(at);
    const bool behind = at.column > 0 && at.column == Text().Length(at.line);
    if (behind && mode_ == Mode::Normal) at = Text().Before(at);
    PutCaret(state_, at);
}

void Machine::PlaceAtText(int line) {
    line = std::clamp(line, 0, Text().LineCount() - 1);
    Place({line, Text().Indent(line)});
}

bool Machine::Page(const Command& command, int direction, bool whole) {
    const int half = std::max(view_.rows / 2, 1);
    const int by = direction * command.Times() * (whole ? 2 * half : half);
    const int line = std::clamp(Caret().line + by, 0, Text().LineCount() - 1);
    if (line == Caret().line) return false;
    wishes_.scroll = by;
    PlaceAtText(line);
    return true;
}

bool Machine::WishCaretRow(CaretRow row) {
    wishes_.caret_row = row;
    return true;
}

// Visual mode.

std::optional<Region> Machine::Selection() const {
    if (!IsVisual(mode_)) return std::nullopt;
    const auto [from, last] = std::minmax({visual_start_, Caret()});
    const bool lines = mode_ == Mode::VisualLine;
    if (!lines) {
        const TextPosition behind = Text().After(last);
        return Region{from, behind, false, false, last.line};
    }
    // What acts on the lines leaves the caret where it is only when that is above where they began.
    const bool stays = Caret().line < visual_start_.line;
    return Region{{from.line, stays ? from.column : 0}, last, true, false, last.line};
}

bool Machine::Select(vi::Mode mode) {
    if (mode_ == mode) return LeaveVisual(), true;
    if (!IsVisual(mode_)) visual_start_ = Caret();
    mode_ = mode;
    return true;
}

bool Machine::SelectAgain() {
    if (!last_visual_) return false;
    mode_ = last_visual_->mode;
    visual_start_ = Text().Clamped(last_visual_->start);
    Place(last_visual_->caret);
    return true;
}

bool Machine::SwapEnds() {
    Place(std::exchange(visual_start_, Caret()));
    return true;
}

void Machine::SelectTo(TextPosition from, TextPosition to) {
    if (mode_ == Mode::Insert) FinishInsert();
    pending_.clear();
    line_.reset();
    mode_ = Mode::Visual;
    visual_start_ = from;
    Place(to);
}

void Machine::LeaveVisual() {
    if (!IsVisual(mode_)) return;
    last_visual_ = {mode_, visual_start_, Caret()};
    mode_ = Mode::Normal;
    const int goal = state_.goal;
    Place(Caret());
    state_.goal = goal;
}

// By Esc, behind which j and k aim for the caret's column, whatever they aimed for before.
void Machine::EscapeVisual() {
    if (!IsVisual(mode_)) return;
    LeaveVisual();
    state_.goal = Caret().column;
}

std::optional<Extent> Machine::Find(const Command& command) const {
    const bool selecting = IsVisual(mode_);
    return command.object->find({.text = Text(),
                                 .caret = Caret(),
                                 .start = selecting ? visual_start_ : Caret(),
                                 .selecting = selecting,
                                 .by_lines = mode_ == Mode::VisualLine,
                                 .count = command.Times()});
}

bool Machine::SelectObject(const Command& command) {
    const auto extent = Find(command);
    if (!extent) return Place(Caret()), false;
    if (!extent->failed) mode_ = extent->reach == Reach::Lines ? Mode::VisualLine : Mode::Visual;
    visual_start_ = Text().Clamped(extent->start);
    Place(extent->caret);
    return true;
}

Machine::Size Machine::SizeOf(const Region& region) const {
    const auto [from, last] = std::minmax({visual_start_, Caret()});
    const int lines = last.line - from.line + 1;
    const int columns = lines > 1 ? last.column + 1 : last.column - from.column + 1;
    return {region.lines ? Mode::VisualLine : Mode::Visual, lines, columns,
            state_.goal == kLineEnd};
}

// As much text from the caret on as was selected when the change was made.
Region Machine::RegionOfSize(const Size& size) const {
    const TextPosition from = Caret();
    TextPosition last = {std::min(from.line + size.lines - 1, Text().LineCount() - 1), 0};
    const int start = size.lines > 1 ? 0 : from.column;
    last.column = size.to_line_end ? Text().Length(last.line) : start + size.columns - 1;
    const bool lines = size.mode == Mode::VisualLine;
    const auto [first, end] = std::minmax({from, Text().Clamped(last)});
    const TextPosition behind = lines ? end : Text().After(end);
    return {first, behind, lines, false, end.line};
}

void Machine::EraseSelected() {
    const auto selected = Selection();
    if (!selected) return;
    if (read_only_) {
        wishes_.refused = true;
        return;
    }
    touched_ = false;
    LeaveVisual();
    Delete(*selected);
    state_.document.Leave(state_.selection);
}

void Machine::CaretMoved() {
    pending_.clear();
    line_.reset();
    if (mode_ == Mode::Insert) {
        insertion_.repeatable = false;
        touched_ = false;
    } else {
        mode_ = Mode::Normal;
        Place(Caret());
    }
}

// Insert mode.

void Machine::StartInsert(TextPosition at, int times, bool opens_lines) {
    mode_ = Mode::Insert;
    const bool fresh = state_.fresh_indent && at == Caret();
    PutCaret(state_, at);
    state_.fresh_indent = fresh;
    const TextPosition start = {at.line, opens_lines ? 0 : at.column};
    insertion_ = {.times = times, .opens_lines = opens_lines, .start = start, .typed = {}};
}

void Machine::InsertKey(Key key) {
    if (key == kEscape) return FinishInsert();
    if (key < kFirstUnprintable) {
        // A key that found nothing to erase is no part of a repetition.
        const std::uint64_t before = state_.document.Revision();
        const TextPosition from = Caret();
        TypeKey(key);
        if (insertion_.moved) MoveStart(from);
        if (state_.document.Revision() != before) insertion_.typed += key;
        return;
    }
    // The cursor block moves the caret. What comes then is another step and no part of a
    // repetition.
    Command command;
    Parse(std::u32string(1, key), Mode::Normal, command);
    const auto target = Seek(command, Asker::Selection);  // may stand behind the last character
    if (!target) return;
    if (target->at.line != Caret().line) DropFreshIndent(state_);
    Go(*target);
    insertion_.moved = true;
    insertion_.repeatable = false;
    touched_ = false;
}

// Text is typed at another place than before, which is the start of the insertion from now on; but
// once something was typed, not farther to the right.
void Machine::MoveStart(TextPosition from) {
    insertion_.moved = false;
    if (!insertion_.typed.empty() && from.column > insertion_.start.column) {
        insertion_.start_stays = true;
    }
    const bool joined = Caret().line < from.line;
    if (!insertion_.start_stays) insertion_.start = joined ? Caret() : from;
}

void Machine::TypeKey(Key key) {
    Touch();
    const int lines = Text().LineCount();
    switch (key) {
        case kEnter:
            BreakLine(state_);
            break;
        case kBackspace:
            EraseBack(state_);
            break;
        case kDelete:
            EraseForward(state_);
            break;
        case kTab:
            InsertTab(state_);
            break;
        case Control('w'):
            EraseWordBack();
            break;
        case Control('u'):
            EraseLineBack();
            break;
        default:
            if (IsText(key)) InsertText(state_, TextOf(key));
            break;
    }
    // A line's start that was joined to the line above takes the start of the insertion along.
    const bool joined = Text().LineCount() < lines;
    if (joined && Caret().line < insertion_.start.line) insertion_.start = Caret();
}

// The blanks before the caret and the word before them.
void Machine::EraseWordBack() {
    const std::u16string& line = Text().Line(Caret().line);
    auto start = static_cast<std::size_t>(Caret().column);
    while (start > 0 && line[start - 1] == u' ') --start;
    if (start > 0) {
        const CharacterClass of = ClassOf(line[start - 1]);
        while (start > 0 && ClassOf(line[start - 1]) == of) --start;
    }
    EraseBackTo(static_cast<int>(start));
}

// The line before the caret but for its indent; in the indent, that too.
void Machine::EraseLineBack() {
    const int indent = Text().Indent(Caret().line);
    EraseBackTo(indent < Caret().column ? indent : 0);
}

// What was there before the insertion is erased by the next key alone. A line's start is joined to
// the line above.
void Machine::EraseBackTo(int column) {
    const TextPosition start = insertion_.start;
    const TextPosition caret = Caret();
    if (caret.column == 0) return EraseBack(state_);
    if (start.line == caret.line && start.column < caret.column) {
        column = std::max(column, start.column);
    }
    zo::ui::EraseBackTo(state_, {caret.line, column});
}

void Machine::Paste(std::u16string_view text) {
    if (read_only_) {
        wishes_.refused = true;
        return;
    }
    if (const auto selected = Selection()) {
        touched_ = false;
        LeaveVisual();
        Place(selected->from);
        Replace(selected->from, selected->to, {});
    }
    if (mode_ == Mode::Insert) {
        insertion_.repeatable = false;
    } else {
        touched_ = false;
    }
    const TextPosition end = Replace(Caret(), Caret(), text);
    touched_ = false;
    Place(end);
    state_.document.Leave(state_.selection);
}

void Machine::FinishInsert() {
    const int times = insertion_.repeatable ? insertion_.times : 1;
    for (int k = 1; k < times; ++k) {
        if (insertion_.opens_lines) TypeKey(kEnter);
        for (const Key key : insertion_.typed) TypeKey(key);
    }
    mode_ = Mode::Normal;
    EndTyping();
    state_.document.Leave(state_.selection);
    if (!last_change_) return;
    last_change_->typed = insertion_.typed;
    last_change_->repeatable = insertion_.repeatable;
}

// Typing ends: the caret goes back on the last character typed, and an indent that was not used
// goes. When a line was broken before its last character, that keeps the caret.
void Machine::EndTyping() {
    const TextPosition end = Caret();
    const bool at_last = state_.fresh_indent && end.column + 1 == Text().Length(end.line);
    const TextPosition beside = end.column > 0 && !at_last ? Text().Before(end) : end;
    DropFreshIndent(state_);
    const bool dropped = Caret() < end;
    Place(std::min(beside, Text().EndOf(end.line)));
    if (dropped) state_.goal = end.column;
}

void Machine::Touch() {
    if (!touched_) state_.document.Open(Selection::At(Caret()));
    touched_ = true;
}

TextPosition Machine::Replace(TextPosition from, TextPosition to, std::u16string_view text) {
    Touch();
    return state_.document.Replace(from, to, text);
}

void Machine::ChangeNothing() {
    Touch();
    state_.document.Replace(Caret(), Caret(), {});
}

}  // namespace zo::ui::vi
