#include "ui/button.h"

#include <doctest/doctest.h>

#include "stage.h"
#include "support/keys.h"

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
