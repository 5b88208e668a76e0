#include "ui/pressables.h"

#include <doctest/doctest.h>

#include "stage.h"
#include "ui/button.h"
#include "ui/scroll.h"

using namespace zo::ui;
using fake::Stage;

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
