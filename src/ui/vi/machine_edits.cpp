#include <algorithm>
#include <limits>
#include <span>
#include <vector>

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

std::optional<Region> Machine::RegionOf(const Command& command) {
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
        Go(*target);
        return std::nullopt;
    }
    const auto [from, to] = std::minmax({Caret(), target->at});
    return Between(from, to, target->reach, command.op->op);
}

// The text from one place to a later one. One that ends before a line's first character leaves that
// line alone; and from a line's first text on it takes the lines whole.
Region Machine::Between(TextPosition from, TextPosition last, Reach reach, Operator op) const {
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
    return {
        .from = from,
        .to = to,
        .lines = whole,
        .no_character = reach == Reach::Inclusive && from == to,
        .between_lines = reach == Reach::Exactly && !whole && from.column == 0 && to.column == 0};
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
    if (region.between_lines) yanked_ = Yanked{Text().Text(from, Text().Before(to)), true};
    Place(region.from);
}

void Machine::Delete(const Region& region) {
    if (Emptied()) return;
    if (!region.lines && region.from == region.to) {
        Place(region.from);
        if (!region.no_character) ChangeNothing();
        return;
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
        state_.document.SetNoLineLeft(true);
    }
    PlaceAtText(first);
}

// Of whole lines one is left, with its indent.
void Machine::ChangeText(const Region& region) {
    if (Emptied()) {
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
    const bool nothing = Emptied() || (!region.lines && region.from == region.to);
    Place(region.from);
    if (!IsText(character) || nothing) return;
    const TextPosition from = region.lines ? TextPosition{region.from.line, 0} : region.from;
    const TextPosition to = region.lines ? Text().EndOf(region.to.line) : region.to;
    std::u16string one;
    base::AppendUtf16(one, character);
    std::u16string text;
    for (TextPosition at = from; at < to; at = Text().After(at)) {
        text += Text().At(at) == 0 ? u"\n" : one;
    }
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

// How many there are to become one; none when a single line was to be joined to nothing.
int Machine::LinesToJoin(int first, int wanted) const {
    wanted = std::max(wanted, 2);
    const int there = Text().LineCount() - first;
    return wanted == 2 && there < 2 ? 0 : std::min(wanted, there);
}

bool Machine::JoinCounted(Command& command, bool tight) {
    const int line = Caret().line;
    const int lines = LinesToJoin(line, command.Times());
    if (lines == 0) return false;
    command.count = lines;
    Join(line, lines, tight);
    return true;
}

void Machine::JoinSelected(const Region& region, bool tight) {
    const int first = region.from.line;
    Place(region.from);
    const int lines = LinesToJoin(first, region.last_line - first + 1);
    if (lines > 0) Join(first, lines, tight);
}

// Lines become one, with a blank where they met unless there is reason for none.
void Machine::Join(int first, int lines, bool tight) {
    if (lines == 1) {
        ChangeNothing();
        state_.document.SetNoLineLeft(false);
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
    Place({first, column});
}

bool Machine::Put(int times, bool before) {
    if (!yanked_) return false;
    if (!yanked_->lines && yanked_->text.empty()) return ChangeNothing(), true;
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
    const bool was_emptied = Emptied();
    Delete(region);
    if (!put) return;
    const bool emptied = was_emptied || Emptied();
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
        CaretBehind(*step, redo);
        any = true;
    }
    return any;
}

namespace {

// An edit, and those behind it that go on within the line where it ended.
using Block = std::span<const Edit>;

std::vector<Block> BlocksOf(const EditStep& step) {
    std::vector<Block> blocks;
    const Edit* before = nullptr;
    for (const Edit& edit : step.edits) {
        const bool in_line = edit.OldEnd().line == edit.NewEnd().line;
        const bool goes_on = before && in_line && before->NewEnd().line == edit.from.line;
        if (goes_on) {
            blocks.back() = {blocks.back().data(), blocks.back().size() + 1};
        } else {
            blocks.push_back({&edit, 1});
        }
        before = &edit;
    }
    return blocks;
}

// The lines that a block put in the place of others: the first one that is not what it was, and
// how many there are from there on.
struct TouchedLines {
    int first;
    int count;
};

TouchedLines LinesOf(Block block, bool redo) {
    const Edit& edit = block.front();
    const std::u16string& now = redo ? edit.added : edit.removed;
    const std::u16string& was = redo ? edit.removed : edit.added;
    const auto lines_behind = [](const std::u16string& text) {
        return text.empty() || text.front() == u'\n';
    };
    const int breaks = static_cast<int>(std::ranges::count(now, u'\n'));
    const bool any = !now.empty() || !was.empty();
    const bool alone = block.size() == 1 || edit.NewEnd().line > edit.from.line;
    const bool spares_first =
        any && alone && edit.to_line_end && lines_behind(now) && lines_behind(was);
    if (spares_first) return {edit.from.line + 1, breaks};
    return {edit.from.line, breaks + 1};
}

}  // namespace

// The caret goes to the first line that changed; on the line where it stood before the command, or
// beside it, it goes back to where it stood.
void Machine::CaretBehind(const EditStep& step, bool redo) {
    const TextPosition before = step.before.caret;
    std::vector<Block> blocks = BlocksOf(step);
    if (!redo) std::ranges::reverse(blocks);
    int line = std::numeric_limits<int>::max();
    for (const Block block : blocks) {
        const TouchedLines touched = LinesOf(block, redo);
        if (touched.first > line) continue;
        const bool beside =
            before.line >= touched.first - 1 && before.line <= touched.first + touched.count;
        line = beside ? before.line : touched.first;
    }
    line = std::min(line, Text().LineCount() - 1);
    if (line == before.line + 1) line = before.line;
    if (line == before.line) return Place(before);
    PlaceAtText(line);
}

}  // namespace zo::ui::vi
