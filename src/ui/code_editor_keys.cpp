#include <algorithm>

#include "base/utf.h"
#include "editing.h"
#include "ui/code_editor.h"
#include "vi/machine.h"
#include "vi/words.h"

namespace zo::ui {

// What keys do in the editor. The tables are the whole truth about its keys.
struct EditorKeys {
    using Act = void (*)(CodeEditor& editor, bool shift);
    enum Shift : std::uint8_t { Either, Without, With };

    struct Row {
        Key key;
        char32_t character;  // of Key::Character
        bool control;
        Shift shift;
        Act act;
        bool asking = false;  // also while the row below the text asks for something
    };

    static CodeEditor::Extend ExtendIf(bool shift) {
        return shift ? CodeEditor::Extend::Yes : CodeEditor::Extend::No;
    }
    static const TextBuffer& Text(const CodeEditor& editor) { return editor.Buffer(); }
    static TextPosition Caret(const CodeEditor& editor) { return editor.CaretAt(); }
    static int Page(const CodeEditor& editor) { return std::max(editor.rows_.Shown() - 1, 1); }

    static TextPosition WordRight(const CodeEditor& editor);
    static TextPosition WordLeft(const CodeEditor& editor);
    // To the text's start, or from there to the line's.
    static TextPosition SmartHome(const CodeEditor& editor);

    // A move without Shift from a selection goes to its end on that side.
    static void Step(CodeEditor& editor, bool shift, int by) {
        const Selection& selected = editor.state_.selection;
        const bool collapse = !shift && !selected.Empty();
        const TextPosition next =
            by < 0 ? (collapse ? selected.From() : Text(editor).Before(selected.caret))
                   : (collapse ? selected.To() : Text(editor).After(selected.caret));
        editor.MoveTo(next, ExtendIf(shift));
    }
    template <class Change>
    static void Edit(CodeEditor& editor, Change change) {
        editor.Edit(CodeEditor::Edits::Apart, change);
    }
    static void Indent(CodeEditor& editor, int by) {
        editor.EditLines([&](int first, int last) {
            IndentLines(editor.state_, {first, last}, by);
        });
    }
    static void Move(CodeEditor& editor, int by) {
        editor.EditLines([&](int first, int last) { MoveLines(editor.state_, {first, last}, by); });
    }
    static void Scroll(CodeEditor& editor, int rows) { editor.rows_.By(rows); }
    static void MovePage(CodeEditor& editor, int pages, bool shift) {
        editor.rows_.By(pages * Page(editor));
        editor.MoveRows(pages * Page(editor), ExtendIf(shift));
    }

    // Keys of moves and edits; with vi keys on only those that need no selection.
    static const Row kPlain[];
    // Keys that are the same with vi keys on.
    static const Row kAlways[];

    template <std::size_t size>
    static const Row* Find(const Row (&rows)[size], const KeyPress& key) {
        const auto found = std::ranges::find_if(rows, [&](const Row& row) {
            const bool shift = row.shift == Either || key.with.shift == (row.shift == With);
            return row.key == key.key && row.character == key.character &&
                   row.control == key.with.control && shift;
        });
        return found == std::end(rows) ? nullptr : &*found;
    }
    static const Row* FindPlain(const KeyPress& key);
    // The one that holds for an editor's mode.
    static const Row* Of(const CodeEditor& editor, const KeyPress& key);
};

TextPosition EditorKeys::WordRight(const CodeEditor& editor) {
    const vi::Walker walker(Text(editor), Caret(editor), vi::Words::Small);
    const TextPosition end = Text(editor).EndOf(Caret(editor).line);
    const TextPosition next = vi::NextWord(walker, 1, false).at;
    // The end of a line is a stop of its own.
    return Text(editor).Clamped(Caret(editor) < end ? std::min(next, end) : next);
}

TextPosition EditorKeys::WordLeft(const CodeEditor& editor) {
    const TextPosition start = {Caret(editor).line, 0};
    if (Caret(editor) == start) return Text(editor).Before(start);
    const vi::Walker walker(Text(editor), Caret(editor), vi::Words::Small);
    return Text(editor).Clamped(std::max(vi::PreviousWord(walker, 1).at, start));
}

TextPosition EditorKeys::SmartHome(const CodeEditor& editor) {
    const TextPosition caret = Caret(editor);
    const int text = Text(editor).Indent(caret.line);
    return {caret.line, caret.column == text ? 0 : text};
}

const EditorKeys::Row EditorKeys::kPlain[] = {
    {Key::Left, 0, false, Either, [](CodeEditor& e, bool shift) { Step(e, shift, -1); }},
    {Key::Right, 0, false, Either, [](CodeEditor& e, bool shift) { Step(e, shift, 1); }},
    {Key::Up, 0, false, Either,
     [](CodeEditor& e, bool shift) { e.MoveRows(-1, ExtendIf(shift)); }},
    {Key::Down, 0, false, Either,
     [](CodeEditor& e, bool shift) { e.MoveRows(1, ExtendIf(shift)); }},
    {Key::PageUp, 0, false, Either,
     [](CodeEditor& e, bool shift) { MovePage(e, -1, shift); }},
    {Key::PageDown, 0, false, Either,
     [](CodeEditor& e, bool shift) { MovePage(e, 1, shift); }},
    {Key::Home, 0, false, Either,
     [](CodeEditor& e, bool shift) { e.MoveTo(SmartHome(e), ExtendIf(shift)); }},
    {Key::End, 0, false, Either,
     [](CodeEditor& e, bool shift) {
         e.MoveTo(Text(e).EndOf(Caret(e).line), ExtendIf(shift));
         e.state_.goal = vi::kLineEnd;
     }},
    {Key::Home, 0, true, Either, [](CodeEditor& e, bool shift) { e.MoveTo({}, ExtendIf(shift)); }},
    {Key::End, 0, true, Either,
     [](CodeEditor& e, bool shift) { e.MoveTo(Text(e).End(), ExtendIf(shift)); }},
    {Key::Left, 0, true, Either,
     [](CodeEditor& e, bool shift) { e.MoveTo(WordLeft(e), ExtendIf(shift)); }},
    {Key::Right, 0, true, Either,
     [](CodeEditor& e, bool shift) { e.MoveTo(WordRight(e), ExtendIf(shift)); }},
    {Key::Up, 0, true, Without, [](CodeEditor& e, bool) { Scroll(e, -1); }},
    {Key::Down, 0, true, Without, [](CodeEditor& e, bool) { Scroll(e, 1); }},

    {Key::Enter, 0, false, Either,
     [](CodeEditor& e, bool) { Edit(e, [&] { BreakLine(e.state_); }); }},
    {Key::Backspace, 0, false, Either,
     [](CodeEditor& e, bool) {
         e.Edit(CodeEditor::Edits::Erased, [&] { EraseBack(e.state_); });
     }},
    {Key::Delete, 0, false, Without,
     [](CodeEditor& e, bool) {
         e.Edit(CodeEditor::Edits::Erased, [&] { EraseForward(e.state_); });
     }},
    {Key::Backspace, 0, true, Either,
     [](CodeEditor& e, bool) { Edit(e, [&] { EraseBackTo(e.state_, WordLeft(e)); }); }},
    {Key::Delete, 0, true, Either,
     [](CodeEditor& e, bool) { Edit(e, [&] { EraseForwardTo(e.state_, WordRight(e)); }); }},
    {Key::Tab, 0, false, Without,
     [](CodeEditor& e, bool) {
         if (e.state_.selection.From().line != e.state_.selection.To().line) return Indent(e, 1);
         e.Edit(CodeEditor::Edits::Typed, [&] { InsertTab(e.state_); });
     }},
    {Key::Tab, 0, false, With, [](CodeEditor& e, bool) { Indent(e, -1); }},
    {Key::Up, 0, true, With,
     [](CodeEditor& e, bool) { Move(e, -1); }},
    {Key::Down, 0, true, With,
     [](CodeEditor& e, bool) { Move(e, 1); }},
    {Key::Character, U'd', true, Without,
     [](CodeEditor& e, bool) {
         e.EditLines([&](int first, int last) { DuplicateLines(e.state_, {first, last}); });
     }},
    {Key::Character, U'k', true, With,
     [](CodeEditor& e, bool) {
         e.EditLines([&](int first, int last) { EraseLines(e.state_, {first, last}); });
     }},
    {Key::Character, U']', true, Without, [](CodeEditor& e, bool) { Indent(e, 1); }},
    {Key::Character, U'[', true, Without, [](CodeEditor& e, bool) { Indent(e, -1); }},
    {Key::Character, U'z', true, Without, [](CodeEditor& e, bool) { e.Undo(); }},
    {Key::Character, U'z', true, With, [](CodeEditor& e, bool) { e.Redo(); }},
    {Key::Character, U'y', true, Without, [](CodeEditor& e, bool) { e.Redo(); }},
    {Key::Character, U'a', true, Without, [](CodeEditor& e, bool) { e.SelectAll(); }},
    {Key::Character, U'f', true, Without,
     [](CodeEditor& e, bool) { e.OpenFind(); }, true},
};

const EditorKeys::Row EditorKeys::kAlways[] = {
    {Key::Character, U'c', true, Without, [](CodeEditor& e, bool) { e.Copy(); }, true},
    {Key::Insert, 0, true, Without, [](CodeEditor& e, bool) { e.Copy(); }, true},
    {Key::Character, U'x', true, Without, [](CodeEditor& e, bool) { e.Cut(); }},
    {Key::Delete, 0, false, With, [](CodeEditor& e, bool) { e.Cut(); }},
    {Key::Character, U'v', true, Without, [](CodeEditor& e, bool) { e.PasteClipboard(); }, true},
    {Key::Insert, 0, false, With, [](CodeEditor& e, bool) { e.PasteClipboard(); }, true},
    {Key::Character, U' ', true, Without, [](CodeEditor& e, bool) { e.OfferCompletion(true); }},
    {Key::Character, U'g', true, Without, [](CodeEditor& e, bool) { e.OpenLine(); }, true},
    {Key::F3, 0, false, Either, [](CodeEditor& e, bool shift) { e.FindBy(shift ? -1 : 1); }, true},
    {Key::F4, 0, false, Either, [](CodeEditor& e, bool shift) { e.GoToError(shift ? -1 : 1); },
     true},
    {Key::Character, U'/', true, Either,
     [](CodeEditor& e, bool) {
         e.EditLines([&](int first, int last) { ToggleComments(e.state_, {first, last}); });
     }},
};

const EditorKeys::Row* EditorKeys::FindPlain(const KeyPress& key) {
    return Find(kPlain, key);
}

const EditorKeys::Row* EditorKeys::Of(const CodeEditor& editor, const KeyPress& key) {
    const Row* row = Find(kAlways, key);
    return row || editor.vi_ ? row : Find(kPlain, key);
}

bool CodeEditor::Key(const KeyPress& key) {
    if (key.with.alt) return false;
    bool used = completion_.IsOpen() && CompletionKey(key);
    if (!used && asks_ != Asks::Nothing) {
        used = AskKey(key);
    } else if (!used) {
        used = TextKey(key);
    }
    ReportChange();
    if (used && key.with.shift) ReportSelection();
    return used;
}

bool CodeEditor::TextKey(const KeyPress& key) {
    const EditorKeys::Row* row = EditorKeys::Of(*this, key);
    if (!row) return vi_ && ViKey(key);
    const bool offered = completion_.IsOpen();
    completion_.Close();
    row->act(*this, key.with.shift);
    if (key.Is(zo::ui::Key::Backspace) && offered) OfferCompletion(false);
    return true;
}

bool CodeEditor::CompletionKey(const KeyPress& key) {
    if (key.with != Modifiers{}) return false;
    switch (key.key) {
        case Key::Up:
            completion_.Move(-1);
            return true;
        case Key::Down:
            completion_.Move(1);
            return true;
        case Key::Enter:
        case Key::Tab:
            AcceptCompletion();
            return true;
        case Key::Escape:
            completion_.Close();
            return !vi_;  // in Insert mode it ends the insertion too
        default:
            return false;
    }
}

// The row below the text has the keys, and leaves the text only those that do not change it.
bool CodeEditor::AskKey(const KeyPress& key) {
    const bool find = asks_ == Asks::Find;
    if (find && find_.Key(key)) return true;
    if (!find && (key.Is(Key::Escape) || key.Is(Key::Enter))) {
        if (key.Is(Key::Escape)) SetCaret(asked_at_);
        StopAsking();
        return true;
    }
    if (!find && line_.Key(key)) return true;
    const EditorKeys::Row* row = EditorKeys::Of(*this, key);
    if (row && row->asking) row->act(*this, key.with.shift);
    return row != nullptr;
}

bool CodeEditor::Type(std::string_view utf8) {
    if (asks_ == Asks::Find) return find_.Type(utf8);
    if (asks_ == Asks::Line) return line_.Type(utf8);
    if (vi_) {
        for (std::size_t at = 0; at < utf8.size();) {
            const char32_t c = base::NextCodePoint(utf8, at);
            if (vi::IsText(c)) TypeVi(c);
        }
    } else {
        TypePlain(utf8);
    }
    OfferCompletion(false);
    ReportChange();
    return true;
}

void CodeEditor::TypePlain(std::string_view utf8) {
    const std::u16string text = Normalised(utf8, state_.selection.From().column);
    if (!text.empty()) Edit(Edits::Typed, [&] { InsertText(state_, text); });
}

// vi keys.

namespace {

std::optional<vi::Key> ViCode(const KeyPress& key) {
    struct Code {
        Key key;
        vi::Key code;
    };
    constexpr Code kCodes[] = {
        {Key::Escape, vi::kEscape},
        {Key::Enter, vi::kEnter},
        {Key::Tab, vi::kTab},
        {Key::Backspace, vi::kBackspace},
        {Key::Delete, vi::kDelete},
        {Key::Left, vi::kLeft},
        {Key::Right, vi::kRight},
        {Key::Up, vi::kUp},
        {Key::Down, vi::kDown},
        {Key::Home, vi::kHome},
        {Key::End, vi::kEnd},
        {Key::PageUp, vi::Control('b')},
        {Key::PageDown, vi::Control('f')},
    };
    constexpr std::string_view kControls = "bdfhuwy[";
    if (key.key == Key::Character) {
        if (!key.with.control || key.with.shift || key.character > 127) return std::nullopt;
        const char letter = static_cast<char>(key.character);
        if (kControls.find(letter) == std::string_view::npos) return std::nullopt;
        return vi::Control(letter);
    }
    if (key.with.control) return std::nullopt;
    const auto* found = std::ranges::find(kCodes, key.key, &Code::key);
    return found == std::end(kCodes) ? std::nullopt : std::optional(found->code);
}

}  // namespace

bool CodeEditor::ViKey(const KeyPress& key) {
    const bool inserting = vi_->Mode() == vi::Mode::Insert && !vi_->Line();
    const bool page = key.key == Key::PageUp || key.key == Key::PageDown;
    const bool arrow_move =
        key.with.control && key.key >= Key::Home && key.key <= Key::Down && !page;
    // Moves that are no vi keys leave Insert mode on, and end Visual mode.
    if (arrow_move || (inserting && page && !key.with.control)) {
        const EditorKeys::Row* row =
            EditorKeys::FindPlain({key.key, 0, {.control = key.with.control}, false});
        if (!row) return false;
        row->act(*this, false);
        vi_->CaretMoved();
        return true;
    }
    if (inserting && (key.IsControl(U'n') || key.IsControl(U'p'))) {
        if (!completion_.IsOpen())
            OfferCompletion(true);
        else
            completion_.Move(key.character == U'n' ? 1 : -1);
        return true;
    }
    if (key.key == Key::Escape && !vi_->WantsEscape()) return false;
    const auto code = ViCode(key);
    if (!code) return false;
    const bool offered = completion_.IsOpen();
    completion_.Close();
    TypeVi(*code);
    if (offered && *code == vi::kBackspace) OfferCompletion(false);
    return true;
}

void CodeEditor::TypeVi(char32_t key) {
    const std::uint64_t before = state_.document.Revision();
    const TextPosition caret = state_.Caret();
    Grant(vi_->Type(key, {rows_.Top(), std::max(text_.height, 1)}));
    if (state_.document.Revision() != before) {
        typing_line_ = vi_->Mode() == vi::Mode::Insert ? state_.Caret().line : -1;
    }
    const bool same = caret == state_.Caret() && state_.document.Revision() == before;
    if (!same) reveal_ = Reveal::Caret;
}

void CodeEditor::Grant(const vi::Wishes& wishes) {
    if (wishes.refused && links.refused) links.refused();
    if (!wishes.say.empty() && links.say) links.say(wishes.say);
    if (wishes.scroll != 0) rows_.By(wishes.scroll);
    if (wishes.caret_row) {
        const int rows = std::max(text_.height, 1);
        const int above[] = {0, (rows - 1) / 2, rows - 1};
        rows_.To(state_.Caret().line - above[static_cast<std::size_t>(*wishes.caret_row)]);
        reveal_ = Reveal::Nothing;
    }
    if (wishes.command) RunLine(*wishes.command);
}

// The number of a line goes there; all else is the owner's.
void CodeEditor::RunLine(std::u16string_view line) {
    const bool number = !line.empty() && std::ranges::all_of(line, [](char16_t c) {
        return c >= u'0' && c <= u'9';
    });
    if (number) return GoToLine(base::ToUtf8(line));
    if (line == u"$") return SetCaret({Buffer().LineCount() - 1, 0});
    if (links.command) links.command(base::ToUtf8(line));
}

}  // namespace zo::ui
