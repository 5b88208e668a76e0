#include "vi/machine.h"

#include <algorithm>
#include <utility>

#include "base/utf.h"
#include "editing.h"
#include "vi/words.h"

namespace zo::ui::vi {
namespace {

// The keys of the cursor block as those of Normal mode.
Key AsLetter(Key key) {
    constexpr std::pair<Key, Key> kLetters[] = {{kLeft, U'h'}, {kRight, U'l'}, {kUp, U'k'},
                                                {kDown, U'j'}, {kHome, U'0'},  {kEnd, U'$'}};
    const auto* found = std::ranges::find(kLetters, key, &std::pair<Key, Key>::first);
    return found == std::end(kLetters) ? key : found->second;
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
        if (pending_.empty()) LeaveVisual();
        pending_.clear();
        return;
    }
    pending_ += AsLetter(key);
    Command command;
    switch (Parse(pending_, mode_, command)) {
        case Parsed::Incomplete:
            return;
        case Parsed::NeedsText:
            line_ = {key};
            return;
        case Parsed::Complete:
            Run(command);
            break;
        case Parsed::Unknown:
            break;
    }
    pending_.clear();
}

void Machine::Run(const Command& command) {
    if (read_only_ && command.Changes()) {
        wishes_.refused = true;
        LeaveVisual();
        return;
    }
    touched_ = false;
    Change change{.command = command, .size = {}, .typed = {}};
    if (const auto selected = Selection()) change.size = SizeOf(*selected);
    if (!Execute(command)) return;
    if (command.Changes()) last_change_ = std::move(change);
    if (mode_ != Mode::Insert && touched_) state_.document.Leave(state_.selection);
}

bool Machine::Execute(const Command& command) {
    if (IsVisual(mode_)) return ExecuteInVisual(command);
    if (command.op) return Operate(command);
    return command.motion ? Move(command) : Perform(command);
}

bool Machine::ExecuteInVisual(const Command& command) {
    if (command.object) return SelectObject(command);
    if (command.motion) return Move(command);
    if (!command.op) return PerformInVisual(command);
    if (command.lines) mode_ = Mode::VisualLine;
    const Region region = *Selection();
    LeaveVisual();
    Apply(command.op->op, region, command.Times());
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
    Run(command);
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
    const int goal = state_.goal;
    const auto target = Seek(command, IsVisual(mode_) ? Asker::Selection : Asker::Caret);
    if (!target) return false;
    Place(target->at);
    if (target->goal == Goal::Keep) state_.goal = goal;
    if (target->goal == Goal::LineEnd) state_.goal = kLineEnd;
    return true;
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

// Visual mode.

std::optional<Machine::Selected> Machine::Selection() const {
    if (!IsVisual(mode_)) return std::nullopt;
    const auto [from, last] = std::minmax({visual_start_, Caret()});
    const bool lines = mode_ == Mode::VisualLine;
    if (!lines) return Selected{from, Text().After(last), false};
    // What acts on the lines leaves the caret where it is only when that is before their end.
    return Selected{{from.line, Caret() < visual_start_ ? from.column : 0}, last, true};
}

void Machine::StartVisual(vi::Mode mode) {
    if (!IsVisual(mode_)) visual_start_ = Caret();
    mode_ = mode;
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
    if (Caret().column < goal && goal == kLineEnd) state_.goal = goal;
}

bool Machine::SelectObject(const Command& command) {
    const auto [from, to] = std::minmax({visual_start_, Caret()});
    const auto extent = command.object->find({Text(), from, to, command.Times()});
    if (!extent || extent->empty) return false;
    mode_ = extent->lines ? Mode::VisualLine : Mode::Visual;
    visual_start_ = extent->lines ? TextPosition{extent->from.line, from.column} : extent->from;
    Place(extent->to);
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
Machine::Region Machine::RegionOfSize(const Size& size) const {
    const TextPosition from = Caret();
    TextPosition last = {std::min(from.line + size.lines - 1, Text().LineCount() - 1), 0};
    const int start = size.lines > 1 ? 0 : from.column;
    last.column = size.to_line_end ? Text().Length(last.line) : start + size.columns - 1;
    last = std::max(Text().Clamped(last), from);
    const bool lines = size.mode == Mode::VisualLine;
    return {from, lines ? last : Text().After(last), lines};
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
    insertion_ = {.times = times, .opens_lines = opens_lines, .start = at, .typed = {}};
}

void Machine::InsertKey(Key key) {
    if (key == kEscape) return FinishInsert();
    if (key < kFirstUnprintable) {
        // A key that found nothing to erase is no part of a repetition.
        const std::uint64_t before = state_.document.Revision();
        TypeKey(key);
        if (state_.document.Revision() != before) insertion_.typed += key;
        return;
    }
    // The cursor block moves the caret. What comes then is another step and no part of a
    // repetition.
    Command command;
    Parse(std::u32string(1, AsLetter(key)), Mode::Normal, command);
    const bool leaves_line = key == kUp || key == kDown;
    if (leaves_line) DropFreshIndent(state_);
    Asker asker = Asker::Selection;  // may stand behind the last character
    const int goal = state_.goal;
    const auto target = Seek(command, asker);
    if (!target) return;
    PutCaret(state_, target->at);
    if (target->goal == Goal::Keep) state_.goal = goal;
    insertion_.repeatable = false;
    touched_ = false;
}

void Machine::TypeKey(Key key) {
    Touch();
    emptied_ = false;
    switch (key) {
        case kEnter:
            return BreakLine(state_);
        case kBackspace:
            return EraseBack(state_);
        case kDelete:
            return EraseForward(state_);
        case kTab:
            return InsertTab(state_);
        case Control('w'):
            return EraseWordBack();
        case Control('u'):
            return EraseLineBack();
        default:
            break;
    }
    if (!IsText(key)) return;
    std::u16string text;
    base::AppendUtf16(text, key);
    InsertText(state_, text);
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
    const TextPosition caret = BesideTyped();
    DropFreshIndent(state_);
    mode_ = Mode::Normal;
    Place(std::min(caret, Text().EndOf(caret.line)));
    state_.document.Leave(state_.selection);
    if (replaying_ || !last_change_) return;
    last_change_->typed = insertion_.typed;
    last_change_->repeatable = insertion_.repeatable;
}

// Where the caret goes when typing ends: back on the last character typed. When a line was broken
// before its last character, that keeps the caret.
TextPosition Machine::BesideTyped() const {
    const TextPosition caret = Caret();
    const bool at_last = state_.fresh_indent && caret.column + 1 == Text().Length(caret.line);
    return caret.column > 0 && !at_last ? Text().Before(caret) : caret;
}

void Machine::Touch() {
    if (!touched_) state_.document.Open(Selection::At(Caret()));
    touched_ = true;
}

TextPosition Machine::Replace(TextPosition from, TextPosition to, std::u16string_view text) {
    Touch();
    emptied_ = false;
    return state_.document.Replace(from, to, text);
}

}  // namespace zo::ui::vi
