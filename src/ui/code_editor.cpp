#include "ui/code_editor.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/utf.h"
#include "editing.h"
#include "text_search.h"
#include "vi/machine.h"

namespace zo::ui {
namespace {

bool IsNamePart(char16_t c) {
    const bool letter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    return letter || (c >= u'0' && c <= u'9') || c == u'_' || c == u'.' || c > 127;
}

constexpr std::size_t kLeastOffered = 2;  // letters of a word that is completed unasked

}  // namespace

CodeEditor::CodeEditor() {
    find_.field.changed = [this] { FindTyped(); };
    find_.move = [this](int by) { FindBy(by); };
    find_.close = [this] { StopAsking(); };
    line_.changed = [this] { GoToLine(line_.Text()); };
}
CodeEditor::~CodeEditor() = default;

void CodeEditor::SetText(std::string_view utf8) {
    EditorSheet sheet;
    sheet.state.document.Set(Normalised(utf8));
    Exchange(std::move(sheet));
}

std::string CodeEditor::Text() const {
    return base::ToUtf8(std::u16string_view(Buffer().Text()));
}

EditorSheet CodeEditor::Exchange(EditorSheet sheet) {
    if (vi_) vi_->Reset();
    EditorSheet before = {std::move(state_), rows_.Top()};
    state_ = std::move(sheet.state);
    rows_.To(sheet.top);
    marks_ = {};
    asks_ = Asks::Nothing;
    completion_.Close();
    left_ = 0;
    typing_line_ = -1;
    drag_clicks_ = 0;
    last_edits_ = Edits::Apart;
    reveal_ = Reveal::Caret;
    reported_ = state_.document.Revision();
    if (vi_) vi_->Reset();
    return before;
}

void CodeEditor::SetReadOnly(bool read_only) {
    read_only_ = read_only;
    if (vi_) vi_->SetReadOnly(read_only);
}

void CodeEditor::SetCaret(TextPosition at) {
    MoveTo(Buffer().Clamped(at), Extend::No);
    if (vi_) vi_->CaretMoved();
}

void CodeEditor::RevealLine(int line) {
    reveal_line_ = line;
}

// Modes.

void CodeEditor::SetViKeys(bool on) {
    if (on == HasViKeys()) return;
    if (vi_) vi_->Reset();
    vi_.reset();
    completion_.Close();
    if (!on) return;
    vi_ = std::make_unique<vi::Machine>(state_);
    vi_->SetReadOnly(read_only_);
    vi_->Reset();
}

std::string_view CodeEditor::ModeName() const {
    if (!vi_) return "EDIT";
    constexpr std::string_view kNames[] = {"NORMAL", "INSERT", "VISUAL", "VISUAL LINE"};
    return kNames[static_cast<std::size_t>(vi_->Mode())];
}

std::string_view CodeEditor::Chip() const {
    if (CommandLine()) return "COMMAND";
    return vi_ && vi_->Mode() == vi::Mode::VisualLine ? "VISUAL" : ModeName();
}

std::string CodeEditor::PendingKeys() const {
    if (!vi_) return {};
    std::string shown;
    for (const char32_t key : vi_->Pending()) {
        if (vi::IsText(key)) base::AppendUtf8(shown, key);
    }
    return shown;
}

std::optional<std::string> CodeEditor::CommandLine() const {
    const vi::TypedLine* line = vi_ ? vi_->Line() : nullptr;
    if (!line || line->sign != U':') return std::nullopt;
    return base::ToUtf8(std::u16string_view(line->text));
}

bool CodeEditor::WantsEscape() const {
    return asks_ != Asks::Nothing || completion_.IsOpen() || (vi_ && vi_->WantsEscape());
}

// Edits and moves.

void CodeEditor::Edit(Edits kind, const std::function<void()>& change) {
    if (read_only_) {
        if (links.refused) links.refused();
        return;
    }
    Document& document = state_.document;
    const bool goes_on = kind != Edits::Apart && kind == last_edits_ &&
                         state_.selection == Selection::At(last_edit_end_);
    const std::uint64_t before = document.Revision();
    if (goes_on) {
        document.Continue();
    } else {
        document.Open(state_.selection);
    }
    change();
    reveal_ = Reveal::Caret;
    if (document.Revision() == before) return;
    document.Leave(state_.selection);
    last_edits_ = kind;
    last_edit_end_ = state_.Caret();
    typing_line_ = state_.Caret().line;
}

void CodeEditor::MoveTo(TextPosition at, Extend extend) {
    const TextPosition anchor = state_.selection.anchor;
    PutCaret(state_, at);
    if (extend == Extend::Yes) state_.selection.anchor = anchor;
    last_edits_ = Edits::Apart;
    completion_.Close();
    reveal_ = Reveal::Caret;
}

void CodeEditor::MoveRows(int rows, Extend extend) {
    const int goal = state_.goal;
    const int last = Buffer().LineCount() - 1;
    const int line = std::clamp(state_.Caret().line + rows, 0, last);
    MoveTo(Buffer().Clamped({line, std::min(goal, Buffer().Length(line))}), extend);
    state_.goal = goal;
}

void CodeEditor::Select(TextPosition from, TextPosition to) {
    if (from == to) return SetCaret(to);
    MoveTo(to, Extend::No);
    if (!vi_) {
        state_.selection.anchor = from;
    } else if (from < to) {
        vi_->SelectTo(from, Buffer().Before(to));
    } else {
        vi_->SelectTo(Buffer().Before(from), to);
    }
}

void CodeEditor::Undo() {
    if (read_only_) return Edit(Edits::Apart, [] {});
    if (const EditStep* step = state_.document.Undo()) {
        MoveTo(step->before.caret, Extend::No);
        state_.selection = step->before;
    }
}

void CodeEditor::Redo() {
    if (read_only_) return Edit(Edits::Apart, [] {});
    if (const EditStep* step = state_.document.Redo()) {
        MoveTo(step->after.caret, Extend::No);
        state_.selection = step->after;
    }
}

std::optional<CodeEditor::Range> CodeEditor::SelectedRange() const {
    if (vi_) {
        const auto selected = vi_->Selection();
        if (!selected) return std::nullopt;
        if (!selected->lines) return Range{selected->from, selected->to};
        const int behind = selected->to.line + 1;
        const bool last = behind == Buffer().LineCount();
        return Range{{selected->from.line, 0}, last ? Buffer().End() : TextPosition{behind, 0}};
    }
    if (state_.selection.Empty()) return std::nullopt;
    return Range{state_.selection.From(), state_.selection.To()};
}

void CodeEditor::EditLines(const std::function<void(int first, int last)>& change) {
    LineRange lines = SelectedLines(state_);
    if (const auto selected = vi_ ? vi_->Selection() : std::nullopt) {
        lines = {selected->from.line, selected->to.line};
        vi_->LeaveVisual();
    }
    Edit(Edits::Apart, [&] { change(lines.first, lines.last); });
}

void CodeEditor::SetClipboard(Range range) {
    const std::u16string text = Buffer().Text(range.from, range.to);
    links.set_clipboard(base::ToUtf8(std::u16string_view(text)));
}

// With nothing selected the caret's line is meant.
void CodeEditor::Copy() {
    if (!links.set_clipboard) return;
    copied_line_.clear();
    if (const auto range = SelectedRange()) {
        SetClipboard(*range);
        if (vi_) vi_->LeaveVisual();
    } else if (!vi_) {
        copied_line_ = base::ToUtf8(std::u16string_view(Buffer().Line(state_.Caret().line))) + "\n";
        links.set_clipboard(copied_line_);
    }
}

void CodeEditor::Cut() {
    if (read_only_) return Edit(Edits::Apart, [] {});
    const auto range = SelectedRange();
    if (vi_) {
        if (range && links.set_clipboard) SetClipboard(*range);
        return vi_->EraseSelected();
    }
    Copy();
    Edit(Edits::Apart, [&] {
        if (range) {
            EraseSelection(state_);
        } else {
            EraseLines(state_, SelectedLines(state_));
        }
    });
}

void CodeEditor::PasteClipboard() {
    if (links.clipboard) Paste(links.clipboard());
}

void CodeEditor::Paste(std::string_view utf8) {
    if (asks_ == Asks::Nothing) {
        PasteText(utf8);
    } else {
        Type(utf8);
    }
}

void CodeEditor::PasteText(std::string_view utf8) {
    if (read_only_) return Edit(Edits::Apart, [] {});
    const std::u16string text = Normalised(utf8, state_.selection.From().column);
    if (text.empty()) return;
    completion_.Close();
    const bool as_line = !vi_ && utf8 == copied_line_ && state_.selection.Empty();
    if (vi_) {
        vi_->Paste(text);
        reveal_ = Reveal::Caret;
    } else {
        Edit(Edits::Apart, [&] {
            if (as_line) {
                InsertLines(state_, text);
            } else {
                InsertText(state_, text);
            }
        });
    }
    ReportChange();
}

void CodeEditor::SelectAll() {
    Select({}, Buffer().End());
    reveal_ = Reveal::Nothing;
}

void CodeEditor::ReportChange() {
    const std::uint64_t revision = state_.document.Revision();
    if (revision == reported_) return;
    reported_ = revision;
    if (asks_ == Asks::Find) CountMatches();
    if (links.changed) links.changed();
}

void CodeEditor::ReportSelection() {
    const auto range = SelectedRange();
    if (!range || !links.set_selection) return;
    links.set_selection(base::ToUtf8(std::u16string_view(Buffer().Text(range->from, range->to))));
}

void CodeEditor::GoToError(int by) {
    if (marks_.errors.empty()) return;
    const TextPosition caret = state_.Caret();
    const auto behind = [&](const EditorMarks::Error& error) {
        return TextPosition{error.line, error.column} > caret;
    };
    const auto before = [&](const EditorMarks::Error& error) {
        return TextPosition{error.line, error.column} < caret;
    };
    const EditorMarks::Error* found = by > 0 ? &marks_.errors.front() : &marks_.errors.back();
    if (by > 0) {
        const auto next = std::ranges::find_if(marks_.errors, behind);
        if (next != marks_.errors.end()) found = &*next;
    } else {
        const auto previous = std::find_if(marks_.errors.rbegin(), marks_.errors.rend(), before);
        if (previous != marks_.errors.rend()) found = &*previous;
    }
    SetCaret({found->line, found->column});
}

// The name that a position is in; else the characters there that are none.
CodeEditor::Range CodeEditor::WordAt(TextPosition at) const {
    const std::u16string& line = Buffer().Line(at.line);
    std::size_t from = static_cast<std::size_t>(at.column);
    std::size_t to = from;
    if (line.empty()) return {at, at};
    if (from == line.size()) --from;
    const bool name = IsNamePart(line[from]);
    const bool blank = line[from] == u' ';
    const auto belongs = [&](char16_t c) { return IsNamePart(c) == name && (c == u' ') == blank; };
    while (from > 0 && belongs(line[from - 1])) --from;
    while (to < line.size() && belongs(line[to])) ++to;
    return {{at.line, static_cast<int>(from)}, {at.line, static_cast<int>(to)}};
}

// Finding. The find box looks for its text whatever the letters' case.

void CodeEditor::StopAsking() {
    asks_ = Asks::Nothing;
}

void CodeEditor::OpenFind() {
    completion_.Close();
    const auto range = SelectedRange();
    if (range && range->from.line == range->to.line) {
        find_.field.SetText(
            base::ToUtf8(std::u16string_view(Buffer().Text(range->from, range->to))));
    }
    asks_ = Asks::Find;
    CountMatches();
}

void CodeEditor::OpenLine() {
    completion_.Close();
    line_.SetText("");
    asked_at_ = state_.Caret();
    asks_ = Asks::Line;
}

void CodeEditor::FindBy(int by) {
    if (find_.field.Empty()) return OpenFind();
    const TextSearch search{.text = base::ToUtf16(find_.field.Text()), .any_case = true};
    const auto range = SelectedRange();
    const TextPosition from = range ? range->from : state_.Caret();
    const auto at = FindText(Buffer(), search, from, by > 0 ? Way::Forward : Way::Backward);
    if (!at) return;
    Select(*at, {at->line, at->column + static_cast<int>(search.text.size())});
    CountMatches();
}

// While the text is typed, the first match from the selection's start on is shown.
void CodeEditor::FindTyped() {
    const TextSearch search{.text = base::ToUtf16(find_.field.Text()), .any_case = true};
    const auto range = SelectedRange();
    const TextPosition from = range ? range->from : state_.Caret();
    const auto at = FindText(Buffer(), search, {from.line, from.column - 1}, Way::Forward);
    if (at) Select(*at, {at->line, at->column + static_cast<int>(search.text.size())});
    CountMatches();
}

void CodeEditor::CountMatches() {
    const TextSearch search{.text = base::ToUtf16(find_.field.Text()), .any_case = true};
    const auto range = SelectedRange();
    int count = 0, here = 0;
    for (int line = 0; line < Buffer().LineCount() && !search.text.empty(); ++line) {
        std::size_t from = 0;
        while (const auto at = NextMatch(Buffer().Line(line), search, from)) {
            ++count;
            if (range && range->from == TextPosition{line, *at}) here = count;
            from = static_cast<std::size_t>(*at) + search.text.size();
        }
    }
    find_.SetCount(count, here);
}

void CodeEditor::GoToLine(std::string_view digits) {
    int line = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), line);
    if (read.ec != std::errc() || line < 1) return;
    line = std::min(line, Buffer().LineCount()) - 1;
    SetCaret({line, Buffer().Indent(line)});
}

// Completing.

int CodeEditor::WordStart() const {
    const std::u16string& line = Buffer().Line(state_.Caret().line);
    std::size_t start = static_cast<std::size_t>(state_.Caret().column);
    while (start > 0 && IsNamePart(line[start - 1])) --start;
    return static_cast<int>(start);
}

void CodeEditor::OfferCompletion(bool asked) {
    completion_.Close();
    if (!links.complete || read_only_ || !state_.selection.Empty()) return;
    if (vi_ && vi_->Mode() != vi::Mode::Insert) return;
    const TextPosition caret = state_.Caret();
    const auto start = static_cast<std::size_t>(WordStart());
    const std::u16string_view line = Buffer().Line(caret.line);
    const auto column = static_cast<std::size_t>(caret.column);
    const bool in_word = column < line.size() && IsNamePart(line[column]);
    const std::u16string_view word = line.substr(start, column - start);
    if (!asked && (word.size() < kLeastOffered || in_word)) return;
    completion_.Offer(links.complete(line.substr(0, start)), base::ToUtf8(word), asked);
}

void CodeEditor::AcceptCompletion() {
    const std::u16string item = base::ToUtf16(completion_.Chosen().text);
    completion_.Close();
    const TextPosition caret = state_.Caret();
    const int start = WordStart();
    if (vi_) {
        for (int k = start; k < caret.column; ++k) TypeVi(vi::kBackspace);
        for (const char16_t c : item) TypeVi(c);
        return;
    }
    Edit(Edits::Apart, [&] {
        PutCaret(state_, state_.document.Replace({caret.line, start}, caret, item));
    });
}

}  // namespace zo::ui
