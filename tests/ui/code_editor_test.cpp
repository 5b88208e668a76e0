#include "ui/code_editor.h"

#include <doctest/doctest.h>

#include "support/cases.h"
#include "support/keys.h"
#include "support/picture.h"
#include "ui/editor_case.h"
#include "ui/pane.h"

using namespace zo::ui;

namespace {

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

// Cases whose text, keys and outcome stand on one line; "message" is what the player is told.
void PlayCases(std::string_view where, bool vi_keys) {
    for (const support::Case& family : support::Cases(where)) {
        for (const support::Step& step : family) {
            INFO(step.where);
            REQUIRE(step.key == "keys");
            const auto c = editor_case::Read(step.value);
            CAPTURE(c.keys);
            CodeEditor editor;
            std::string said, clipboard;
            editor.links.say = [&](std::string_view sentence) { said = sentence; };
            editor.links.command = [&](std::string_view line) {
                said = editor_case::ShowBlanks(":" + std::string(line));
            };
            editor.links.clipboard = [&] { return clipboard; };
            editor.links.set_clipboard = [&](std::string_view utf8) { clipboard = utf8; };
            editor.SetViKeys(vi_keys);
            editor_case::Load(editor, c.in);
            editor_case::Send(editor, c.keys);
            CHECK(editor_case::Marked(editor) == c.out);
            CHECK(said == c.message);
        }
    }
}

}  // namespace

TEST_CASE("keys edit the text and move the caret") {
    PlayCases("ui/editor", false);
}

TEST_CASE("vi keys do what they do in vim") {
    PlayCases("vi/cases.txt", true);
}

TEST_CASE("vi keys do what the editor alone has") {
    PlayCases("ui/vi_keys.txt", true);
}

TEST_CASE("mode, keys pending and the line being typed are known, and Esc ends them one by one") {
    const struct {
        std::string_view keys, mode, chip, pending;
        std::optional<std::string> line;
        bool wants_escape;
    } cases[] = {
        {"", "NORMAL", "NORMAL", "", {}, false},
        {"2d", "NORMAL", "NORMAL", "2d", {}, true},
        {"2d3f", "NORMAL", "NORMAL", "2d3f", {}, true},
        {"2d<Esc>", "NORMAL", "NORMAL", "", {}, false},
        {"dq", "NORMAL", "NORMAL", "", {}, false},
        {"ia", "INSERT", "INSERT", "", {}, true},
        {"ia<Esc>", "NORMAL", "NORMAL", "", {}, false},
        {"v", "VISUAL", "VISUAL", "", {}, true},
        {"V3", "VISUAL LINE", "VISUAL", "3", {}, true},
        {"V3<Esc>", "VISUAL LINE", "VISUAL", "", {}, true},
        {"V3<Esc><Esc>", "NORMAL", "NORMAL", "", {}, false},
        {":w", "NORMAL", "COMMAND", "", "w", true},
        {":w<Backspace>", "NORMAL", "COMMAND", "", "", true},
        {":w<Backspace><Backspace>", "NORMAL", "NORMAL", "", {}, false},
        {":w<Esc>", "NORMAL", "NORMAL", "", {}, false},
        {"d/w", "NORMAL", "NORMAL", "d/", {}, true},
        {"d/w<Esc>", "NORMAL", "NORMAL", "", {}, false},
    };
    for (const auto& c : cases) {
        CAPTURE(c.keys);
        CodeEditor editor;
        editor.SetViKeys(true);
        editor.SetText("rx a\ntx a");
        editor_case::Send(editor, c.keys);
        CHECK(editor.ModeName() == c.mode);
        CHECK(editor.Chip() == c.chip);
        CHECK(editor.PendingKeys() == c.pending);
        CHECK(editor.CommandLine() == c.line);
        CHECK(editor.WantsEscape() == c.wants_escape);
        editor.SetViKeys(false);
        CHECK(editor.ModeName() == "EDIT");
        CHECK(editor.CaretAt() == editor.Selected().anchor);
    }
}

TEST_CASE("vi keys leave text alone that is read-only, and say so") {
    CodeEditor editor;
    int refused = 0;
    editor.links.refused = [&] { ++refused; };
    editor.SetText("rx a\ntx a");
    editor.SetViKeys(true);
    editor.SetReadOnly(true);
    constexpr std::string_view kChanges[] = {"x",  "dd", "ix", "oy<Esc>", "rz",       "J", "vd",
                                             ">>", "~",  "Vc", "yyp",     "<Ctrl+V>", "."};
    for (const std::string_view keys : kChanges) {
        CAPTURE(keys);
        editor_case::Send(editor, std::string(keys) + "<Esc><Esc>");
        CHECK(editor.Text() == "rx a\ntx a");
        CHECK(editor.ModeName() == "NORMAL");
    }
    CHECK(refused >= static_cast<int>(std::size(kChanges)) - 2);
}

TEST_CASE("pages of vi keys are as long as the text is high") {
    Bench bench(40, 12);
    std::string text;
    for (int line = 0; line < 99; ++line) text += "nop\n";
    bench.editor.SetText(text);
    bench.editor.SetViKeys(true);
    const struct {
        std::string_view keys;
        int line;
    } steps[] = {{"<Ctrl+D>", 5}, {"3<Ctrl+D>", 20}, {"<Ctrl+F>", 30},   {"2<Ctrl+B>", 10},
                 {"<Ctrl+U>", 5}, {"9<Ctrl+U>", 0},  {"99<Ctrl+D>", 99}, {"gg3<Ctrl+F>", 30},
                 {"ztL", 39},     {"H", 33},         {"M", 34},          {"2H", 31},
                 {"3L", 35},      {"<PgDn>", 45},    {"<PgUp>", 35}};
    for (const auto& step : steps) {
        CAPTURE(step.keys);
        bench.Draw();
        editor_case::Send(bench.editor, step.keys);
        CHECK(bench.editor.CaretAt().line == step.line);
    }
}

TEST_CASE("text from elsewhere is normalised, and nothing of it is lost") {
    const struct {
        std::string_view utf8;
        int column;
        std::u16string_view text;
    } cases[] = {
        {"a\r\nb\rc\nd", 0, u"a\nb\nc\nd"},
        {"\ta\tb", 2, u"      a       b"},
        {"ab\n\tc", 5, u"ab\n        c"},
        {"\xEF\xBB\xBFnop\x01\x7F\xC2\x85", 0, u"nop"},
        {std::string_view("a\0b", 3), 0, u"ab"},
        {"\xF0\x9F\x98\x80", 0, u"\U0001F600"},
        {"\xFF", 0, u"\uFFFD"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.utf8);
        CHECK((Normalised(c.utf8, c.column) == c.text));
    }
}

TEST_CASE("keys that are not the editor's are left to others") {
    CodeEditor editor;
    editor.SetText("a\nb");
    for (const char* name : {"F5", "Ctrl+S", "Alt+Left", "Ctrl+PgUp", "Esc", "x"}) {
        CAPTURE(name);
        CHECK_FALSE(editor.Key(fake::KeyNamed(name)));
    }
    CHECK(editor_case::Marked(editor) == "|a / b");
}

TEST_CASE("every edit is reported once, and a read-only text refuses it") {
    CodeEditor editor;
    int changes = 0;
    int refusals = 0;
    editor.links.changed = [&] { ++changes; };
    editor.links.refused = [&] { ++refusals; };
    editor_case::Load(editor, "|ab");
    CHECK(changes == 0);
    editor_case::Send(editor, "x<Backspace><Backspace><Right>");
    CHECK(changes == 2);
    editor.SetReadOnly(true);
    editor_case::Send(editor, "x<Del>");
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
        {"a\nb|\nc\nd", "<Enter>", {1, 4}},    {"a\n|b\nc\nd", "<Enter>", {2, 4}},
        {"|a\nb\nc\nd", "<Del><Del>", {0, 2}}, {"a\nb\nc|\nd", "<Del>", {1}},
        {"a\nb\nc\nd|", "<Enter>", {1, 3}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.before);
        CodeEditor editor;
        editor_case::Load(editor, c.before);
        editor.Breakpoints() = {1, 3};
        editor_case::Send(editor, c.keys);
        CHECK(editor.Breakpoints() == c.after);
    }
}

TEST_CASE("the gutter carries number, marks and the next line") {
    Bench bench(24, 6);
    bench.editor.SetText("nop\nfoo a\nhalt");
    bench.editor.Marks() = {.errors = {{1, 0, 3}}, .next_line = 2};
    bench.editor.Breakpoints() = {1, 2};
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
    editor_case::Send(bench.editor, "<Down><Down><Down><Down><Down><Down>");
    CHECK(bench.Draw().starts_with("   1  1\n"));
    editor_case::Send(bench.editor, "<Down>");
    CHECK(bench.Draw().starts_with("   2  2\n"));
    editor_case::Send(bench.editor, "<PgDn>");
    CHECK(bench.Draw().ends_with("  20  20\n"));
    CHECK(bench.editor.CaretAt().line == 16);
}

TEST_CASE("a long line scrolls sideways and says that it goes on") {
    Bench bench(20, 3);  // twelve columns of text
    bench.editor.SetText("abcdefghijklmnopqrstuvwxyz");
    CHECK(bench.Draw() == "   1  abcdefghijk»\n");
    for (int k = 0; k < 13; ++k) editor_case::Send(bench.editor, "<Right>");
    CHECK(bench.Draw() == "   1  «ijklmnopqr»\n");
    editor_case::Send(bench.editor, "<End>");
    CHECK(bench.Draw() == "   1  «qrstuvwxyz\n");
    CHECK(bench.frame.caret.x == 18);
}

TEST_CASE("a press puts the caret where it falls, or asks for a breakpoint") {
    Bench bench(24, 6);
    int pressed = -1;
    bench.editor.links.gutter_pressed = [&](int line) { pressed = line; };
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

TEST_CASE("a drag held outside the text goes on by time, as fast as it is far away") {
    Bench bench(24, 6);  // four rows
    std::string text;
    for (int line = 1; line <= 12; ++line) text += std::to_string(line) + "\n";
    bench.editor.SetText(text);
    bench.Draw();
    CHECK_FALSE(bench.editor.NextFrameAt());
    bench.pressables.Press({.at = {7, 1}});
    bench.pressables.Move({7, 4});
    CHECK_FALSE(bench.editor.NextFrameAt());
    bench.pressables.Move({7, 6});  // two rows below
    CHECK(bench.editor.CaretAt().line == 5);
    double now = 100;
    const auto wait = [&](double seconds) {
        bench.Draw();
        now += seconds;
        return bench.editor.Update(now);
    };
    CHECK_FALSE(wait(0));
    const std::optional<double> due = bench.editor.NextFrameAt();
    REQUIRE(due);
    CHECK(*due > now);
    CHECK_FALSE(wait((*due - now) / 2));
    now = *due;
    CHECK(wait(0));
    CHECK(bench.editor.CaretAt().line == 7);
    CHECK(wait(1));
    CHECK(bench.editor.CaretAt().line == 9);

    bench.pressables.Move({7, 3});
    CHECK_FALSE(bench.editor.NextFrameAt());
    bench.pressables.Move({7, 9});
    CHECK_FALSE(wait(1));
    CHECK_FALSE(wait(1));  // the text ends there, and so does the asking
    CHECK_FALSE(bench.editor.NextFrameAt());

    bench.pressables.Move({7, -2});
    CHECK_FALSE(wait(0));
    CHECK(wait(1));
    const TextPosition let_go = bench.editor.CaretAt();
    bench.pressables.Release({7, -2});
    CHECK_FALSE(bench.editor.NextFrameAt());
    CHECK_FALSE(wait(1));
    CHECK(bench.editor.CaretAt() == let_go);
    CHECK(bench.editor.Selected().anchor == TextPosition{0, 0});
}
