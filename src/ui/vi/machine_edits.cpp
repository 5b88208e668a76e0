#include <algorithm>
#include <limits>

#include "base/utf.h"
#include "editing.h"
#include "vi/machine.h"
#include "vi/words.h"

namespace zo::ui::vi {
namespace {

// No command makes a text longer than this, however it is counted.
constexpr std::size_t kMostCharacters = 1 << 24;

std::u16string Repeated(std::u16string_view text, int times) {
    const std::size_t most = kMostCharacters / std::max<std::size_t>(text.size(), 1);
    std::u16string repeated;
    for (std::size_t k = std::min(static_cast<std::size_t>(times), most); k > 0; --k) {
        repeated += text;
    }
    return repeated;
}

Asker AskerOf(Operator op) {
    if (op == Operator::Change) return Asker::ChangeOperator;
    return op == Operator::Delete ? Asker::DeleteOperator : Asker::Operator;
}

char16_t InCase(char16_t c, Operator op) {
    const bool lower = (c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
    const bool upper = (c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    constexpr char16_t kCaseBit = 0x20;
    if (lower && op != Operator::LowerCase) return static_cast<char16_t>(c - kCaseBit);
    if (upper && op != Operator::UpperCase) return static_cast<char16_t>(c + kCaseBit);
    return c;
}

}  // namespace

// Operators.

bool Machine::Operate(const Command& command) {
    const auto region = RegionOf(command);
    if (!region) return false;
    Apply(command.op->op, *region, 1);
    return true;
}

std::optional<Machine::Region> Machine::RegionOf(const Command& command) {
    if (command.lines) {
        const int last = Caret().line + command.Times() - 1;
        if (last > Caret().line && Caret().line + 1 == Text().LineCount()) return std::nullopt;
        // On one line, most operators leave the caret at the line's text.
        const bool stays = last > Caret().line || command.op->op == Operator::Yank;
        const int column = stays ? Caret().column : std::min(Caret().column, Text().Indent(last));
        return Region{{Caret().line, column}, {std::min(last, Text().LineCount() - 1), 0}, true};
    }
    if (command.object) {
        const auto extent = Find(command);
        if (extent && !extent->failed) {
            return Between(extent->start, extent->caret, extent->reach, command.op->op);
        }
        Place(extent ? extent->caret : Caret());
        return std::nullopt;
    }
    const auto target = Seek(command, AskerOf(command.op->op));
    if (!target) return std::nullopt;
    if (target->failed) {
        Place(target->at);
        SetGoal(target->goal, state_.goal);
        return std::nullopt;
    }
    const auto [from, to] = std::minmax({Caret(), target->at});
    return Between(from, to, target->reach, command.op->op);
}

// The text from one place to a later one. One that ends before a line's first character leaves that
// line alone; and from a line's first text on it takes the lines whole.
Machine::Region Machine::Between(TextPosition from, TextPosition last, Reach reach,
                                 Operator op) const {
    if (reach == Reach::Lines) return {from, last, true};
    const auto in_indent = [&] { return from.column <= Text().Indent(from.line); };
    TextPosition to = last;
    if (reach == Reach::Inclusive && last.column < Text().Length(last.line)) {
        to = Text().After(last);
    } else if (reach == Reach::Exclusive && to.line > from.line && to.column == 0) {
        to = Text().EndOf(to.line - 1);
        if (in_indent()) return {from, to, true};
    }
    const bool blank_behind =
        Text().Line(to.line).find_first_not_of(u' ', static_cast<std::size_t>(to.column)) ==
        std::u16string::npos;
    const bool whole = op == Operator::Delete && to.line > from.line && blank_behind && in_indent();
    return {from, to, whole, reach == Reach::Inclusive && from == to};
}

void Machine::Apply(Operator op, const Region& region, int times) {
    switch (op) {
        case Operator::Delete:
            return Delete(region);
        case Operator::Change:
            return ChangeText(region);
        case Operator::Yank:
            return Yank(region);
        case Operator::Indent:
        case Operator::Outdent:
            return ShiftLines(region, op == Operator::Indent ? times : -times);
        case Operator::SwapCase:
        case Operator::LowerCase:
        case Operator::UpperCase:
            return MapCase(op, region);
    }
}

void Machine::ShiftLines(const Region& region, int by) {
    const bool by_start_alone =
        !region.lines && region.to.line > region.from.line && region.to.column == 0;
    Place(region.from);
    Touch();
    IndentLines(state_, {region.from.line, region.to.line - (by_start_alone ? 1 : 0)}, by);
    PlaceAtText(region.from.line);
}

void Machine::Yank(const Region& region) {
    const TextPosition from = region.lines ? TextPosition{region.from.line, 0} : region.from;
    const TextPosition to = region.lines ? Text().EndOf(region.to.line) : region.to;
    yanked_ = Yanked{Text().Text(from, to), region.lines};
    Place(region.from);
}

void Machine::Delete(const Region& region) {
    if (emptied_) return;
    if (!region.lines && region.from == region.to) {
        if (!region.no_character) ChangeNothing();
        return Place(region.from);
    }
    Yank(region);
    if (!region.lines) {
        Replace(region.from, region.to, {});
        return Place(region.from);
    }
    const int first = region.from.line;
    const int behind = region.to.line + 1;
    if (behind < Text().LineCount()) {
        Replace({first, 0}, {behind, 0}, {});
    } else if (first > 0) {
        Replace(Text().EndOf(first - 1), Text().End(), {});
    } else {
        Replace({0, 0}, Text().End(), {});
        emptied_ = true;
    }
    PlaceAtText(first);
}

// Of whole lines one is left, with its indent.
void Machine::ChangeText(const Region& region) {
    if (emptied_) {
        ChangeNothing();
        return StartInsert(Caret(), 1);
    }
    if (!region.lines) {
        if (region.no_character) {
            Yank(region);
            ChangeNothing();
        }
        Delete(region);
        return StartInsert(region.from, 1);
    }
    Yank(region);
    const int line = region.from.line;
    const TextPosition start = {line, Text().Indent(line)};
    // Undoing it puts the caret on the first of the lines that go whole.
    if (region.to.line > line) PutCaret(state_, {line + 1, region.from.column});
    Replace(start, Text().EndOf(region.to.line), {});
    PutCaret(state_, start);
    state_.fresh_indent = start.column > 0;
    StartInsert(start, 1);
}

void Machine::MapCase(Operator op, const Region& region) {
    Place(region.from);
    if (region.lines) {
        MapCase(op, {region.from.line, 0}, Text().EndOf(region.to.line));
    } else {
        MapCase(op, region.from, region.to);
    }
}

void Machine::MapCase(Operator op, TextPosition from, TextPosition to) {
    std::u16string text = Text().Text(from, to);
    std::ranges::transform(text, text.begin(), [op](char16_t c) { return InCase(c, op); });
    Replace(from, to, text);
}

// The other commands.

bool Machine::Perform(const Command& command) {
    const TextPosition caret = Caret();
    const int times = command.Times();
    switch (command.act->act) {
        case Act::Insert:
            return StartInsert(caret, times), true;
        case Act::Append:
            return StartInsert(std::min(Text().After(caret), Text().EndOf(caret.line)), times),
                   true;
        case Act::InsertAtText:
            return StartInsert({caret.line, Text().Indent(caret.line)}, times), true;
        case Act::AppendAtEnd:
            return StartInsert(Text().EndOf(caret.line), times), true;
        case Act::OpenBelow:
            return OpenLine(command, true);
        case Act::OpenAbove:
            return OpenLine(command, false);
        case Act::Replace:
            return ReplaceCharacters(command);
        case Act::SwapCase:
            return SwapCase(times);
        case Act::Join:
            return Join(caret.line, command.count, false);
        case Act::JoinTight:
            return Join(caret.line, command.count, true);
        case Act::Put:
            return Put(times, false);
        case Act::PutBefore:
            return Put(times, true);
        case Act::Repeat:
            return Repeat(command.count);
        case Act::Undo:
            return UndoSteps(times, false);
        case Act::Redo:
            return UndoSteps(times, true);
        case Act::Select:
            return StartVisual(Mode::Visual), true;
        case Act::SelectLines:
            return StartVisual(Mode::VisualLine), true;
        case Act::SelectAgain:
            if (!last_visual_) return false;
            mode_ = last_visual_->mode;
            visual_start_ = Text().Clamped(last_visual_->start);
            return Place(last_visual_->caret), true;
        case Act::SwapEnds:
            return false;
        case Act::CommandLine:
            line_ = {U':'};
            return true;
        case Act::HalfPageDown:
            return Page(command, 1, false);
        case Act::HalfPageUp:
            return Page(command, -1, false);
        case Act::PageDown:
            return Page(command, 1, true);
        case Act::PageUp:
            return Page(command, -1, true);
        case Act::CaretToTop:
            wishes_.caret_row = CaretRow::Top;
            return true;
        case Act::CaretToMiddle:
            wishes_.caret_row = CaretRow::Middle;
            return true;
        case Act::CaretToBottom:
            wishes_.caret_row = CaretRow::Bottom;
            return true;
    }
    return false;
}

bool Machine::PerformInVisual(const Command& command) {
    const Act act = command.act->act;
    switch (act) {
        case Act::Select:
        case Act::SelectLines: {
            const vi::Mode mode = act == Act::Select ? Mode::Visual : Mode::VisualLine;
            if (mode_ == mode) return LeaveVisual(), true;
            mode_ = mode;
            return true;
        }
        case Act::SwapEnds: {
            const TextPosition start = visual_start_;
            visual_start_ = Caret();
            return Place(start), true;
        }
        case Act::Replace:
        case Act::Join:
        case Act::JoinTight:
        case Act::Put:
        case Act::PutBefore: {
            const Region region = *Selection();
            LeaveVisual();
            ActOn(command, region);
            return true;
        }
        case Act::CommandLine:
            LeaveVisual();
            return Perform(command);
        default:
            return Perform(command);
    }
}

// What an operator or another command makes of a selection.
void Machine::ActOn(const Command& command, const Region& region) {
    if (command.op) return Apply(command.op->op, region, command.Times());
    const Act act = command.act->act;
    if (act == Act::Replace) return ReplaceSelected(region, command.character);
    if (act == Act::Put || act == Act::PutBefore) {
        return PutOver(region, command.Times(), act == Act::PutBefore);
    }
    Place(region.from);
    Join(region.from.line, region.last_line - region.from.line + 1, act == Act::JoinTight);
}

bool Machine::OpenLine(const Command& command, bool below) {
    const int line = Caret().line;
    const int indent = Text().Indent(line);
    const std::u16string blanks(static_cast<std::size_t>(indent), u' ');
    const TextPosition at = below ? Text().EndOf(line) : TextPosition{line, 0};
    Replace(at, at, below ? u"\n" + blanks : blanks + u"\n");
    const TextPosition start = {below ? line + 1 : line, indent};
    PutCaret(state_, start);
    state_.fresh_indent = indent > 0;
    StartInsert(start, command.Times(), true);
    return true;
}

bool Machine::ReplaceCharacters(const Command& command) {
    const TextPosition from = Caret();
    TextPosition to = from;
    for (int k = command.Times(); k > 0; --k) {
        if (to.column == Text().Length(to.line)) return false;
        to = Text().After(to);
    }
    if (command.character == kEnter) {
        Touch();
        state_.selection = {to, from};
        BreakLine(state_);
        EndTyping();
        return true;
    }
    if (!IsText(command.character)) return false;
    std::u16string one;
    base::AppendUtf16(one, command.character);
    const TextPosition end = Replace(from, to, Repeated(one, command.Times()));
    return Place(Text().Before(end)), true;
}

void Machine::ReplaceSelected(const Region& region, char32_t character) {
    if (!IsText(character)) return;
    const TextPosition from = region.lines ? TextPosition{region.from.line, 0} : region.from;
    const TextPosition to = region.lines ? Text().EndOf(region.to.line) : region.to;
    std::u16string one;
    base::AppendUtf16(one, character);
    std::u16string text;
    for (TextPosition at = from; at < to; at = Text().After(at)) {
        text += Text().At(at) == 0 ? u"\n" : one;
    }
    Place(region.from);
    Replace(from, to, text);
    Place(from);
}

bool Machine::SwapCase(int times) {
    const TextPosition from = Caret();
    TextPosition to = from;
    for (; times > 0 && to.column < Text().Length(to.line); --times) to = Text().After(to);
    if (from == to) return false;
    MapCase(Operator::SwapCase, from, to);
    return Place(to), true;
}

// Lines become one, with a blank where they met unless there is reason for none.
bool Machine::Join(int first, int lines, bool tight) {
    const int rest = Text().LineCount() - first;
    if (lines <= 2 && rest < 2) return false;
    lines = std::min(std::max(lines, 2), rest);
    if (lines == 1) {
        ChangeNothing();
        emptied_ = false;
    }
    int column = 0;
    int joined_from = 0;  // where the line begins that was joined last
    for (int k = 1; k < lines; ++k) {
        const TextPosition end = Text().EndOf(first);
        column = end.column;
        if (tight) {
            Replace(end, {first + 1, 0}, {});
            continue;
        }
        const TextPosition start = {first + 1, Text().Indent(first + 1)};
        const char16_t next = Text().At(start);
        const bool blank_there = column > joined_from && Text().At({first, column - 1}) == u' ';
        const bool blank = column > 0 && !blank_there && next != 0 && next != u')';
        joined_from = Replace(end, start, blank ? u" " : u"").column;
    }
    return Place({first, column}), true;
}

bool Machine::Put(int times, bool before) {
    if (!yanked_) return false;
    if (!yanked_->lines && yanked_->text.empty()) return true;
    const std::u16string& text = yanked_->text;
    const TextPosition caret = Caret();
    if (yanked_->lines) {
        const int line = before ? caret.line : caret.line + 1;
        if (before) {
            Replace({line, 0}, {line, 0}, Repeated(text + u"\n", times));
        } else {
            const TextPosition end = Text().EndOf(caret.line);
            Replace(end, end, Repeated(u"\n" + text, times));
        }
        return PlaceAtText(line), true;
    }
    const TextPosition at =
        before ? caret : std::min(Text().After(caret), Text().EndOf(caret.line));
    const TextPosition end = Replace(at, at, Repeated(text, times));
    const bool one_line = end.line == at.line;
    return Place(one_line ? Text().Before(end) : at), true;
}

// What was there is yanked in its turn, unless it is to be kept. In the place of lines, characters
// become lines too, and lines in the place of characters part the line that they come into.
void Machine::PutOver(const Region& region, int times, bool keep) {
    const std::optional<Yanked> put = yanked_;
    const bool last_line = region.lines && region.to.line + 1 == Text().LineCount();
    const bool was_emptied = emptied_;
    Delete(region);
    if (!put) return;
    const bool emptied = was_emptied || emptied_;
    const std::optional<Yanked> taken = yanked_;
    yanked_ = {put->text, put->lines || region.lines};
    if (put->lines && !region.lines) {
        Replace(region.from, region.from, u"\n");
        Place(region.from);
        Put(times, false);
    } else if (emptied) {
        Put(times, true);
    } else {
        const bool line_end = !region.lines && region.from == Text().EndOf(region.from.line);
        Put(times, !last_line && !line_end);
    }
    yanked_ = keep ? put : taken;
    // The line that stood for no lines at all.
    const int last = Text().LineCount() - 1;
    if (emptied && last > 0 && Text().Length(last) == 0) {
        Replace(Text().EndOf(last - 1), Text().End(), {});
    }
}

bool Machine::Repeat(int count) {
    if (!last_change_) return false;
    if (!last_change_->repeatable) {
        wishes_.say = "Repeat unavailable for this insertion";
        return false;
    }
    if (read_only_) {
        wishes_.refused = true;
        return false;
    }
    Change change = *last_change_;
    if (change.size.mode == Mode::Normal) {
        if (count > 0) change.command.count = count;
        if (Execute(change.command)) last_change_ = change;
    } else {
        Region region = RegionOfSize(change.size);
        if (change.command.lines) region.to = {region.last_line, 0};
        region.lines |= change.command.lines;
        ActOn(change.command, region);
    }
    if (mode_ == Mode::Insert) {
        for (const Key key : change.typed) InsertKey(key);
        FinishInsert();
    }
    return true;
}

// History.

bool Machine::UndoSteps(int times, bool redo) {
    bool any = false;
    Place(Caret());
    for (; times > 0; --times) {
        const EditStep* step = redo ? state_.document.Redo() : state_.document.Undo();
        if (!step) break;
        emptied_ = false;
        CaretBehind(*step, redo);
        any = true;
    }
    return any;
}

namespace {

// The lines that an edit put in the place of others: the first one, and how many there are now.
struct TouchedLines {
    int first;
    int count;
};

TouchedLines LinesOf(const Edit& edit, bool redo) {
    const std::u16string& now = redo ? edit.added : edit.removed;
    const std::u16string& was = redo ? edit.removed : edit.added;
    const auto starts = [](const std::u16string& text) {
        return text.empty() || text.front() == u'\n';
    };
    const auto ends = [](const std::u16string& text) {
        return text.empty() || text.back() == u'\n';
    };
    const int breaks = static_cast<int>(std::ranges::count(now, u'\n'));
    const bool any = !now.empty() || !was.empty();
    if (any && starts(now) && starts(was)) return {edit.from.line + 1, breaks};
    if (any && edit.from.column == 0 && ends(now) && ends(was)) return {edit.from.line, breaks};
    return {edit.from.line, breaks + 1};
}

}  // namespace

// The caret goes to the first line that changed; on the line where it stood before the command, or
// beside it, it goes back to where it stood. An edit within the line where the one before it ended
// goes on with that one.
void Machine::CaretBehind(const EditStep& step, bool redo) {
    const TextPosition before = step.before.caret;
    int line = std::numeric_limits<int>::max();
    bool back = false;
    const auto goes_on = [&](const Edit& edit) {
        const bool first = &edit == &step.edits.front();
        const bool in_line = edit.OldEnd().line == edit.NewEnd().line;
        return !first && in_line && (&edit - 1)->NewEnd().line == edit.from.line;
    };
    const auto look_at = [&](const Edit& edit) {
        if (goes_on(edit)) return;
        const TouchedLines touched = LinesOf(edit, redo);
        if (touched.first > line) return;
        if (before.line >= touched.first - 1 && before.line <= touched.first + touched.count) {
            line = before.line;
            back = true;
        } else {
            line = touched.first;
            back = false;
        }
    };
    if (redo) {
        std::for_each(step.edits.begin(), step.edits.end(), look_at);
    } else {
        std::for_each(step.edits.rbegin(), step.edits.rend(), look_at);
    }
    if (line == before.line + 1) line = before.line;
    if (line >= Text().LineCount()) return Place({Text().LineCount() - 1, 0});
    if (back || line == before.line) return Place({line, before.column});
    PlaceAtText(line);
}

}  // namespace zo::ui::vi
