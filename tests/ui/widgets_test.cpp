#include "ui/widgets.h"

#include <doctest/doctest.h>

#include "support/keys.h"
#include "support/picture.h"
#include "ui/list.h"
#include "ui/text_pane.h"

using namespace zo::ui;

namespace {

struct Stage {
    Frame frame;
    Pressables pressables;

    explicit Stage(int columns = 80, int rows = 25, Look look = Look::Classic)
        : frame(fake::BlankFrame(columns, rows, look)) {}
    Canvas Pen() { return {frame, 0}; }
    void Click(Point at) {
        pressables.Press({.at = at});
        pressables.Release(at);
    }
};

}  // namespace

TEST_CASE("a label gives its hotkey, and the tildes take no cells") {
    CHECK(Label("E~x~it to DOS").Hotkey() == U'x');
    CHECK(Label("LC~D~").Hotkey() == U'd');
    CHECK(Label("LC~D~").Cells() == 3);
    CHECK(Label("Cancel").Hotkey() == 0);
    CHECK(Label("a ~ b").Cells() == 5);
}

TEST_CASE("drawing outside the clip is dropped, and a small grid keeps the least layout") {
    Stage stage(20, 5);
    Canvas canvas = stage.Pen();
    CHECK(canvas.Columns() == 80);
    CHECK(canvas.Rows() == 25);
    canvas.Text(17, 1, "abcdef", Role::Panel);
    canvas.Text(-2, 2, "abcdef", Role::Panel);
    canvas.Box({15, 3, 40, 9}, Lines::Double, Role::FrameActive);
    CHECK(fake::Text(stage.frame) ==
          "\n                 abc\ncdef\n               ╔════\n               ║\n");
}

TEST_CASE("a field that does not fit ends in the more mark") {
    Stage stage;
    Canvas canvas = stage.Pen();
    CHECK(canvas.Field({0, 0, 6, 1}, "abcdef", Role::Panel));
    CHECK_FALSE(canvas.Field({0, 1, 6, 1}, "abcdefg", Role::Panel));
    CHECK(fake::Row(stage.frame, 0) == "abcdef");
    CHECK(fake::Row(stage.frame, 1) == "abcde»");
}

TEST_CASE("a frame's line drops whole what does not fit") {
    const struct {
        int width;
        std::string_view picture;
    } cases[] = {
        {46, "╔═ FIRMWARE ═ EDIT  Assembled  ROM 33 of 40 ═╗"},
        {43, "╔═ FIRMWARE ═ EDIT ════════ ROM 33 of 40 ═╗"},
        {27, "╔═ FIRMWARE ═ EDIT ═══════╗"},
        {9, "╔═══════╗"},
    };
    for (const auto& c : cases) {
        Stage stage;
        Canvas canvas = stage.Pen();
        FrameLine top = DrawPane(canvas, {0, 0, c.width, 4}, "FIRMWARE", true);
        top.LeftTitle("EDIT", Role::Chip);
        top.Right(" ROM 33 of 40 ", Role::PanelDim);
        top.Right(" Assembled ", Role::PanelDim, 0);
        CHECK(fake::Row(stage.frame, 0) == c.picture);
    }
}

TEST_CASE("a button shows its state and acts on release inside") {
    Stage stage;
    int acts = 0;
    const auto draw = [&](const Button& button) {
        Canvas canvas = stage.Pen();
        stage.pressables.Clear();
        DrawButton(canvas, stage.pressables, {0, 0}, button, [&] { ++acts; });
        return fake::Row(stage.frame, 0);
    };
    const Button reset = {.label = "Reset", .form = ButtonForm::Compact};
    Button focused = reset;
    focused.focused = true;
    Button unavailable = reset;
    unavailable.enabled = false;
    CHECK(draw(reset) == "[Reset]");
    CHECK(draw(focused) == "►Reset◄");
    CHECK(draw(unavailable) == "·Reset·");
    stage.Click({1, 0});
    CHECK(acts == 0);

    draw(reset);
    stage.pressables.Press({.at = {1, 0}});
    draw(reset);
    CHECK(stage.frame.At(0, 0).role == Role::ButtonPress);
    stage.pressables.Move({1, 3});
    draw(reset);
    CHECK(stage.frame.At(0, 0).role == Role::Button);
    stage.pressables.Release({1, 3});
    CHECK(acts == 0);
    stage.pressables.Press({.at = {1, 0}});
    stage.pressables.Release({6, 0});
    CHECK(acts == 1);
    draw(reset);
    CHECK(stage.frame.At(0, 0).role == Role::ButtonHot);
}

TEST_CASE("what is drawn while the list is closed answers nothing") {
    Stage stage;
    Canvas canvas = stage.Pen();
    int acts = 0;
    const Button run = {.label = "Run", .hint = "Runs."};
    stage.pressables.Move({1, 0});
    stage.pressables.SetOpen(false);
    DrawButton(canvas, stage.pressables, {0, 0}, run, [&] { ++acts; });
    stage.pressables.SetOpen(true);
    CHECK(stage.frame.At(0, 0).role == Role::Button);
    CHECK(stage.pressables.Hint().empty());
    stage.Click({1, 0});
    CHECK(acts == 0);
}

TEST_CASE("a row of buttons moves its focus and knows its letters") {
    const struct {
        const char* keys;
        const char* pressed;
    } cases[] = {{"<Enter>", "a"},
                 {"<Right><Enter>", "b"},
                 {"<Left><Enter>", "a"},
                 {"<Tab><Tab><Tab><Enter>", "a"},
                 {"<Shift+Tab><Enter>", "c"},
                 {"k", "b"},
                 {"<Alt+K>", "b"},
                 {"c", "c"},
                 {"<Right><Space>", "b"},
                 {"z", ""}};
    for (const auto& c : cases) {
        CAPTURE(c.keys);
        std::string pressed;
        ButtonRow row;
        row.Set({{.label = "~N~ext ticket", .act = [&] { pressed += "a"; }},
                 {.label = "~K~eep editing", .act = [&] { pressed += "b"; }},
                 {.label = "Cancel", .act = [&] { pressed += "c"; }}});
        for (const InputEvent& event : fake::Keys(c.keys)) {
            if (const auto* key = std::get_if<KeyPress>(&event)) row.Key(*key);
        }
        CHECK(pressed == c.pressed);
    }
}

TEST_CASE("the key bar presses keys and leaves out what does not fit whole") {
    const KeyItem items[] = {{.key = fake::KeyNamed("F1"), .word = "Binder"},
                             {.key = fake::KeyNamed("F5"), .word = "Run"},
                             {.key = {}, .cap = "↑↓", .word = "Choose"},
                             {.key = fake::KeyNamed("F8"), .word = "Verify", .enabled = false}};
    Stage stage;
    Canvas canvas = stage.Pen();
    std::string pressed;
    const std::function<void(const KeyPress&)> press = [&](const KeyPress& key) {
        pressed += KeyName(key);
    };
    DrawKeyBar(canvas, stage.pressables, items, press);
    CHECK(fake::Row(stage.frame, 24) == " F1 Binder  F5 Run  ↑↓ Choose  F8 Verify");
    for (const int x : {2, 14, 22, 33}) stage.Click({x, 24});
    CHECK(pressed == "F1F5");

    const std::vector<KeyItem> many(7, KeyItem{.key = fake::KeyNamed("F1"), .word = "Twelve12"});
    DrawKeyBar(canvas, stage.pressables, many, press);
    CHECK(fake::Row(stage.frame, 24) ==
          " F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12");
}

TEST_CASE("the top bar gives up the name, then the detail, then the place") {
    constexpr const char* kLong = "4-03 A title that is quite a bit longer than titles are";
    constexpr const char* kVeryLong =
        "1234567890123456789012345678901234567890123456789012345678901234567890123456789";
    const struct {
        int columns;
        TopBar bar;
        std::string_view row;
    } cases[] = {
        {80,
         {"BENCH", "4-03 Retry Budget", ", Instrument logger", "Shift 4 Delivery"},
         " BENCH │ 4-03 Retry Budget, Instrument logger                  Shift 4 Delivery"},
        {106,
         {"BENCH", "4-03 Retry Budget", ", Instrument logger", "Shift 4 Delivery"},
         " VANTOR KEST │ BENCH │ 4-03 Retry Budget, Instrument logger                         "
         "     Shift 4 Delivery"},
        {80,
         {"BENCH", kLong, ", Instrument logger", "Shift 4"},
         " BENCH │ 4-03 A title that is quite a bit longer than titles are        Shift 4"},
        {80,
         {"BENCH", kVeryLong, "", "Shift 4"},
         " BENCH │ 123456789012345678901234567890123456789012345678901234567890123456789»"},
    };
    for (const auto& c : cases) {
        Stage stage(c.columns, 25);
        Canvas canvas = stage.Pen();
        DrawTopBar(canvas, c.bar);
        CHECK(fake::Row(stage.frame, 0) == c.row);
    }
}

TEST_CASE("the parts of the status line give way to each other") {
    constexpr std::string_view kVerdict =
        "Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame 2, check byte 1; the specification "
        "calls for $5D (']').";
    constexpr std::string_view kFull =
        "Almost as long as its row, so that the keys at its right end have to go: 75.";
    const struct {
        StatusLine line;
        std::string_view rows;
    } cases[] = {
        {{.message = "Paused at tick 64.", .right = "F5 F8"},
         "\n Paused at tick 64.                                                       F5 F8\n"},
        {{.mode = "NORMAL 2d", .message = "Firmware saved.", .right = "F5 F8"},
         "\n NORMAL 2d │ Firmware saved.                                              F5 F8\n"},
        {{.message = kVerdict, .alert = true, .right = "F5 F8"},
         " ! Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame\n"
         " 2, check byte 1; the specification calls for $5D (']').\n"},
        {{.message = kFull, .right = "F5 F8"},
         "\n Almost as long as its row, so that the keys at its right end have to go: 75.\n"},
        {{.message = kVerdict, .hint = "One instruction.", .right = "F5 F8"},
         "\n Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame 2, ch»  One instruction.\n"},
        {{.message = "", .hint = "One instruction.", .right = "F5 F8"},
         "\n                                                               One instruction.\n"},
    };
    for (const auto& c : cases) {
        Stage stage;
        Canvas canvas = stage.Pen();
        DrawStatusLine(canvas, c.line);
        CHECK(fake::Text(stage.frame, {0, 22, 80, 2}) == c.rows);
    }
}

TEST_CASE("a message of more than three rows says that it goes on") {
    Stage stage;
    Canvas canvas = stage.Pen();
    std::string message;
    for (int k = 0; k < 80; ++k) message += "word ";
    DrawStatusLine(canvas, {.message = message});
    CHECK(fake::Row(stage.frame, 23).ends_with("word »"));
    CHECK(fake::Row(stage.frame, 21).ends_with("word"));
    CHECK(fake::Row(stage.frame, 20).empty());
}

TEST_CASE("a text pane wraps, scrolls and shows where it stands") {
    Stage stage;
    TextPane pane;
    pane.Set({{.text = "Retry Budget", .role = Role::PanelBright, .right = "♦♦♦··"},
              {},
              {.text = "Keep the message in RAM while it is on its way.", .label = "1  "},
              {.text = "Last line"}});
    const Rect box = {0, 0, 32, 7};
    const auto draw = [&] {
        Canvas canvas = stage.Pen();
        stage.pressables.Clear();
        DrawPane(canvas, box, "TICKET", false);
        pane.Draw(canvas, stage.pressables, box);
        return fake::Text(stage.frame, box);
    };
    CHECK(draw() ==
          "┌─ TICKET ─────────────────────┐\n"
          "│ Retry Budget           ♦♦♦·· │\n"
          "│                              │\n"
          "│ 1  Keep the message in RAM   │\n"
          "│    while it is on its way.   │\n"
          "│ Last line                    │\n"
          "└──────────────────────────────┘\n");
    std::vector<Paragraph> rows;
    for (const char* row : {"1", "2", "3", "4", "5", "6", "7", "8"}) rows.push_back({.text = row});
    pane.Set(rows);
    CHECK(draw() ==
          "┌─ TICKET ─────────────────────┐\n"
          "│ 1                            ▲\n"
          "│ 2                            █\n"
          "│ 3                            ░\n"
          "│ 4                            ░\n"
          "│ 5                            ▼\n"
          "└──────────────────────────────┘\n");
    stage.pressables.Wheel({5, 3}, -1, {});
    CHECK(draw().find("│ 8                            ▼") != std::string::npos);
    stage.pressables.Press({.at = {31, 1}});
    CHECK(pane.View().Top() == 2);
    CHECK(pane.Key(fake::KeyNamed("Home")));
    CHECK(pane.View().Top() == 0);
}

TEST_CASE("a thumb follows the pointer that drags it") {
    Stage stage;
    Scroll scroll;
    scroll.Measure(100, 20);
    const auto draw = [&] {
        Canvas canvas = stage.Pen();
        stage.pressables.Clear();
        scroll.Draw(canvas, stage.pressables, {0, 0, 10, 22});
    };
    draw();
    stage.pressables.Press({.at = {9, 2}});
    stage.pressables.Move({30, 40});
    CHECK(scroll.Top() == 80);
    draw();
    stage.pressables.Move({9, 1});
    CHECK(scroll.Top() == 0);
    stage.pressables.Release({9, 1});
    draw();
    stage.pressables.Press({.at = {9, 15}});
    CHECK(scroll.Top() == 19);
}

TEST_CASE("a list keeps its chosen row in sight and opens it on a second click") {
    Stage stage;
    List list;
    list.SetCount(9);
    int opened = -1;
    list.open = [&] { opened = list.Chosen(); };
    const auto draw = [&] {
        Canvas canvas = stage.Pen();
        stage.pressables.Clear();
        const auto row = [](Canvas& pen, const Rect& at, int index, Role role) {
            pen.Text(at.x, at.y, "row " + std::to_string(index), role);
        };
        list.Draw(canvas, stage.pressables, {0, 0, 12, 6}, true, Role::Panel, row);
        return fake::Text(stage.frame, {1, 1, 10, 4});
    };
    CHECK(draw() == "►row 0\n row 1\n row 2\n row 3\n");
    list.Key(fake::KeyNamed("PgDn"));
    CHECK(draw() == " row 1\n row 2\n►row 3\n row 4\n");
    list.Key(fake::KeyNamed("End"));
    list.Key(fake::KeyNamed("Down"));
    CHECK(draw() == " row 5\n row 6\n row 7\n►row 8\n");
    stage.pressables.Press({.at = {3, 2}, .clicks = 2});
    CHECK(opened == 6);
}

TEST_CASE("a classic overlay casts a shadow and a modern one dims the picture") {
    Stage classic;
    Canvas pen = classic.Pen();
    pen.Fill(pen.Area(), U'x', Role::Panel);
    DrawOverlay(pen, {10, 5, 20, 4}, "MENU");
    CHECK(fake::Text(classic.frame, {8, 5, 25, 5}) ==
          "xx╔═ MENU ═══════════╗xxx\n"
          "xx║                  ║xxx\n"
          "xx║                  ║xxx\n"
          "xx╚══════════════════╝xxx\n"
          "xxxxxxxxxxxxxxxxxxxxxxxxx\n");
    CHECK(classic.frame.At(30, 5).role == Role::Panel);
    CHECK(classic.frame.At(31, 6).role == Role::Shadow);
    CHECK(classic.frame.At(12, 9).role == Role::Shadow);
    CHECK(classic.frame.At(11, 9).role == Role::Panel);

    Stage modern(80, 25, Look::Modern);
    Canvas thin = modern.Pen();
    thin.Fill(thin.Area(), U'x', Role::PanelBright);
    const Rgb before = modern.frame.At(0, 0).ink;
    DrawOverlay(thin, {10, 5, 20, 4}, "MENU");
    CHECK(modern.frame.At(0, 0).ink.r < before.r);
    CHECK(modern.frame.At(12, 6).ink == Colours(Look::Modern, 0, Role::Dialog).ink);
}

TEST_CASE("a press on what lies in a pane focuses the pane and works all the same") {
    Stage stage;
    int focused = 0, pressed = 0;
    stage.pressables.Add({0, 0, 20, 5}).focus = [&] { ++focused; };
    stage.pressables.Add({2, 2, 4, 1}).act = [&] { ++pressed; };
    stage.Click({3, 2});
    CHECK(focused == 1);
    CHECK(pressed == 1);
    stage.Click({10, 4});
    stage.Click({30, 4});
    CHECK(focused == 2);
    CHECK(pressed == 1);
}
