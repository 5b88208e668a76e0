#include "ui/scroll.h"

#include <doctest/doctest.h>

#include "stage.h"
#include "support/keys.h"
#include "ui/list.h"
#include "ui/pane.h"
#include "ui/text_pane.h"

using namespace zo::ui;
using fake::Stage;

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
    std::vector<ListRow> rows;
    for (int k = 0; k < 9; ++k) rows.push_back({.cells = {{"row " + std::to_string(k)}}});
    list.Set(std::move(rows));
    int opened = -1;
    list.open = [&] { opened = list.Chosen(); };
    const auto draw = [&] {
        Canvas canvas = stage.Pen();
        stage.pressables.Clear();
        list.Draw(canvas, stage.pressables, {0, 0, 12, 6}, true);
        return fake::Text(stage.frame, {1, 1, 10, 4});
    };
    CHECK(draw() == "► row 0\n  row 1\n  row 2\n  row 3\n");
    list.Key(fake::KeyNamed("PgDn"));
    CHECK(draw() == "  row 1\n  row 2\n► row 3\n  row 4\n");
    list.Key(fake::KeyNamed("End"));
    list.Key(fake::KeyNamed("Down"));
    CHECK(draw() == "  row 5\n  row 6\n  row 7\n► row 8\n");
    stage.pressables.Press({.at = {3, 2}, .clicks = 2});
    CHECK(opened == 6);
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
