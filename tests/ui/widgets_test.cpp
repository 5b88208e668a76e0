// The widgets as the player meets them, as cases of widgets.txt and code_editor.txt. Their steps:
//
//     a check on            a new widget: its kind and what it holds, see specimens.cpp
//     keys ab<Enter>        named keys and typed characters
//     point 3,0             the pointer; press, drag, release, click, double, triple alike
//     wheel 3,0 -1          so many steps up; sideways with Shift
//     show                  the picture, without empty rows at its end; `show 0,1 9x2` a part of it
//     role 3,0 sel          of a cell
//     caret 4               its column, or none
//     hint Runs.            at the right end of the status line
//     text a|b              of an editor, with its caret; "extend" presses with Shift, "middle" the
//                           middle button, and a press may be the second or third
//     log on, off           what the widget has told its owner since the step before that asked

#include <doctest/doctest.h>

#include <cstdio>
#include <utility>

#include "specimens.h"
#include "stage.h"
#include "support/cases.h"
#include "support/keys.h"

using namespace zo::ui;

namespace {

class Play {
public:
    void Step(const support::Step& step) {
        std::string_view words = step.value;
        if (step.key == "a") {
            const std::string_view kind = support::Cut(words, " ");
            log_.clear();
            specimen_ = fake::MakeSpecimen(kind, std::string(words), [this](std::string what) {
                log_ += (log_.empty() ? "" : ", ") + what;
            });
            stage_ = fake::Stage(specimen_.columns);
        } else if (step.key == "keys") {
            for (const InputEvent& event : fake::Keys(step.value)) Send(event);
        } else if (step.key == "show") {
            CHECK(Picture(step.value) == step.text);
        } else if (step.key == "role") {
            const Point at = PointOf(words);
            support::Cut(words, " ");
            CHECK(RoleName(stage_.frame.At(at.x, at.y).role) == words);
        } else if (step.key == "caret") {
            const Caret& caret = stage_.frame.caret;
            CHECK((caret == Caret{} ? "none" : std::to_string(caret.x)) == words);
        } else if (step.key == "hint") {
            const std::string_view hovered = stage_.pressables.Hint();
            CHECK((hovered.empty() ? specimen_.hint() : hovered) == words);
        } else if (step.key == "text") {
            CHECK(specimen_.state() == words);
        } else if (step.key == "log") {
            if (!step.text.empty()) log_ += '\n';
            CHECK(std::exchange(log_, {}) == step.All());
        } else {
            Use(step.key, words);
        }
        Draw();
    }

private:
    static Point PointOf(std::string_view words) {
        Point at;
        REQUIRE(std::sscanf(std::string(words).c_str(), "%d,%d", &at.x, &at.y) == 2);
        return at;
    }

    void Draw() {
        stage_.frame = fake::BlankFrame(specimen_.columns, 25);
        Canvas canvas = stage_.Pen();
        stage_.pressables.Clear();
        specimen_.draw(canvas, stage_.pressables);
    }

    void Send(const InputEvent& event) {
        if (const auto* key = std::get_if<KeyPress>(&event)) {
            used_ = specimen_.key(*key) && key->key == Key::Character;
        } else if (const auto* text = std::get_if<TextInput>(&event); text && !used_) {
            specimen_.type(text->text);
        }
        Draw();
    }

    void Use(std::string_view how, std::string_view words) {
        Pressables& pressables = stage_.pressables;
        const Point at = PointOf(words);
        if (how == "point" || how == "drag") {
            pressables.Move(at);
        } else if (how == "press" || how == "extend") {
            support::Cut(words, " ");
            const int clicks = words.empty() ? 1 : std::stoi(std::string(words));
            pressables.Press({at, clicks, {.shift = how == "extend"}});
        } else if (how == "middle") {
            pressables.PressMiddle(at);
        } else if (how == "release") {
            pressables.Release(at);
        } else if (how == "wheel" || how == "sideways") {
            support::Cut(words, " ");
            pressables.Wheel(at, std::stoi(std::string(words)), {.shift = how == "sideways"});
        } else {
            const int clicks = how == "click" ? 1 : how == "double" ? 2 : how == "triple" ? 3 : 0;
            REQUIRE_MESSAGE(clicks > 0, std::string(how));
            pressables.Press({.at = at, .clicks = clicks});
            pressables.Release(at);
        }
    }

    std::string Picture(const std::string& part) {
        Rect rect = {0, 0, specimen_.columns, 25};
        std::sscanf(part.c_str(), "%d,%d %dx%d", &rect.x, &rect.y, &rect.width, &rect.height);
        std::string text = fake::Text(stage_.frame, rect);
        while (part.empty() && text.ends_with("\n\n")) text.pop_back();
        return text;
    }

    fake::Stage stage_;
    fake::Specimen specimen_;
    std::string log_;
    bool used_ = false;
};

}  // namespace

TEST_CASE("widgets look and answer as their cases say") {
    for (const std::string_view file : {"ui/widgets.txt", "ui/code_editor.txt"}) {
        for (const support::Case& widget : support::Cases(file)) {
            Play play;
            for (const support::Step& step : widget) {
                INFO(step.where);
                play.Step(step);
            }
        }
    }
}
