#include "ui/code_editor.h"

#include <doctest/doctest.h>

#include "support/keys.h"
#include "support/picture.h"
#include "ui/pane.h"

using namespace zo::ui;

namespace {

// A text with its caret written as "|".
void Load(CodeEditor& editor, std::string marked) {
    const std::size_t bar = marked.find('|');
    marked.erase(bar, 1);
    editor.SetText(marked);
    TextBuffer before;
    before.Set(std::string_view(marked).substr(0, bar));
    editor.SetCaret(before.End());
}

std::string Marked(const CodeEditor& editor) {
    const TextBuffer& text = editor.Buffer();
    return text.Text({}, editor.CaretAt()) + "|" + text.Text(editor.CaretAt(), text.End());
}

void Send(CodeEditor& editor, std::string_view keys) {
    bool used = false;
    for (const InputEvent& event : fake::Keys(keys)) {
        if (const auto* key = std::get_if<KeyPress>(&event)) used = editor.Key(*key);
        const auto* text = std::get_if<TextInput>(&event);
        if (text && !used) editor.Type(text->text);
    }
}

struct Bench {
    CodeEditor editor;
    Frame frame;
    Pressables pressables;

    explicit Bench(int columns, int rows) : frame(fake::BlankFrame(columns, rows)) {}

    std::string Draw() {
        Canvas canvas(frame, 0);
        pressables.Clear();
        const Rect pane = {0, 0, frame.grid.columns, frame.grid.rows};
        DrawPane(canvas, pane, "", true);
        editor.Draw(canvas, pressables, pane, true);
        return fake::Text(frame, pane.Inner());
    }
};

}  // namespace

TEST_CASE("keys edit the text and move the caret") {
    const struct {
        const char* before;
        const char* keys;
        const char* after;
    } cases[] = {
        {"|", "rx a<Enter>tx a", "rx a\ntx a|"},
        {"ab|cd", "<Backspace>", "a|cd"},
        {"ab|cd", "<Del>", "ab|d"},
        {"|ab", "<Backspace>", "|ab"},
        {"ab|", "<Del>", "ab|"},
        {"ab\n|cd", "<Backspace>", "ab|cd"},
        {"ab|\ncd", "<Del>", "ab|cd"},
        {"a|b", "<Tab>x", "a   x|b"},
        {"    nop|", "<Enter>halt", "    nop\n    halt|"},
        {"  |  nop", "<Enter>", "  \n  |  nop"},
        {"ab\n|", "<Left><Left>", "a|b\n"},
        {"ab|\ncd", "<Right><Right>", "ab\nc|d"},
        {"|", "<Left><Up><Right><Down><Home><End>", "|"},
        {"long line|\nab\nlong line", "<Down><Down>", "long line\nab\nlong line|"},
        {"long line|\nab\nlong line", "<Down><Left><Down>", "long line\nab\nl|ong line"},
        {"ab\nc|d\nef", "<Ctrl+Home>x", "x|ab\ncd\nef"},
        {"ab\nc|d\nef", "<Ctrl+End>x", "ab\ncd\nefx|"},
        {"abc|d", "<Home>", "|abcd"},
        {"é|", "λ<Left><Backspace>", "|λ"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.before);
        CAPTURE(c.keys);
        CodeEditor editor;
        Load(editor, c.before);
        Send(editor, c.keys);
        CHECK(Marked(editor) == c.after);
    }
}

TEST_CASE("what is pasted keeps its lines, and tabs become blanks") {
    CodeEditor editor;
    Load(editor, "  x|y");
    editor.Paste("1\r\n\t2");
    CHECK(Marked(editor) == "  x1\n        2|y");
}

TEST_CASE("keys that are not the editor's are left to others") {
    CodeEditor editor;
    editor.SetText("a\nb");
    for (const char* name : {"F5", "Ctrl+S", "Alt+Left", "Ctrl+PgUp", "Shift+Tab", "Esc", "x"}) {
        CAPTURE(name);
        CHECK_FALSE(editor.Key(fake::KeyNamed(name)));
    }
    CHECK(Marked(editor) == "|a\nb");
}

TEST_CASE("every edit is reported once, and a read-only text refuses it") {
    CodeEditor editor;
    int changes = 0;
    int refusals = 0;
    editor.changed = [&] { ++changes; };
    editor.refused = [&] { ++refusals; };
    Load(editor, "|ab");
    CHECK(changes == 0);
    Send(editor, "x<Backspace><Backspace><Right>");
    CHECK(changes == 2);
    editor.SetReadOnly(true);
    Send(editor, "x<Del>");
    CHECK(editor.Text() == "ab");
    CHECK(changes == 2);
    CHECK(refusals == 2);
}

TEST_CASE("breakpoints stay with their lines") {
    const struct {
        const char* before;
        const char* keys;
        std::vector<int> after;  // of the lines b and d
    } cases[] = {
        {"a\nb|\nc\nd", "<Enter>", {1, 4}}, {"a\n|b\nc\nd", "<Enter>", {2, 4}},
        {"|a\nb\nc\nd", "<Del><Del>", {2}}, {"a\nb\nc|\nd", "<Del>", {1}},
        {"a\nb\nc\nd|", "<Enter>", {1, 3}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.before);
        CodeEditor editor;
        Load(editor, c.before);
        editor.Marks().breakpoints = {1, 3};
        Send(editor, c.keys);
        CHECK(editor.Marks().breakpoints == c.after);
    }
}

TEST_CASE("the gutter carries number, marks and the next line") {
    Bench bench(24, 6);
    bench.editor.SetText("nop\nfoo a\nhalt");
    bench.editor.Marks() = {.errors = {{1, 0, 3}}, .breakpoints = {1, 2}, .next_line = 2};
    CHECK(bench.Draw() == "   1  nop\n!  2  foo a\n•  3► halt\n\n");
    CHECK(bench.frame.At(7, 2).role == Role::CodeError);
    CHECK(bench.frame.At(10, 2).role == Role::Code);
    CHECK(bench.frame.At(1, 2).role == Role::Fault);
    CHECK(bench.frame.At(22, 3).role == Role::LineNext);
}

TEST_CASE("a caret that leaves the view takes it along and keeps its margin") {
    Bench bench(30, 12);  // ten rows
    std::string text;
    for (int line = 1; line <= 40; ++line) text += std::to_string(line) + "\n";
    bench.editor.SetText(text);
    bench.Draw();
    Send(bench.editor, "<Down><Down><Down><Down><Down><Down>");
    CHECK(bench.Draw().starts_with("   1  1\n"));
    Send(bench.editor, "<Down>");
    CHECK(bench.Draw().starts_with("   2  2\n"));
    Send(bench.editor, "<PgDn>");
    CHECK(bench.Draw().ends_with("  20  20\n"));
    CHECK(bench.editor.CaretAt().line == 16);
}

TEST_CASE("a long line scrolls sideways and says that it goes on") {
    Bench bench(20, 3);  // twelve columns of text
    bench.editor.SetText("abcdefghijklmnopqrstuvwxyz");
    CHECK(bench.Draw() == "   1  abcdefghijk»\n");
    for (int k = 0; k < 13; ++k) Send(bench.editor, "<Right>");
    CHECK(bench.Draw() == "   1  «ijklmnopqr»\n");
    Send(bench.editor, "<End>");
    CHECK(bench.Draw() == "   1  «qrstuvwxyz\n");
    CHECK(bench.frame.caret.x == 18);
}

TEST_CASE("a press puts the caret where it falls, or asks for a breakpoint") {
    Bench bench(24, 6);
    int pressed = -1;
    bench.editor.gutter_pressed = [&](int line) { pressed = line; };
    bench.editor.SetText("nop\nhalt");
    bench.Draw();
    bench.pressables.Press({.at = {9, 2}});
    CHECK(bench.editor.CaretAt() == TextPosition{1, 2});
    bench.pressables.Press({.at = {20, 4}});
    CHECK(bench.editor.CaretAt() == TextPosition{1, 4});
    bench.pressables.Press({.at = {2, 4}});
    CHECK(pressed == -1);
    bench.pressables.Press({.at = {2, 1}});
    CHECK(pressed == 0);
}
