#include "ui/canvas.h"

#include <doctest/doctest.h>

#include "stage.h"
#include "ui/pane.h"

using namespace zo::ui;
using fake::Stage;

TEST_CASE("a label gives its hotkey, and the tildes take no cells") {
    CHECK(Label("E~x~it to DOS").Hotkey() == U'x');
    CHECK(Label("LC~D~").Hotkey() == U'd');
    CHECK(Label("LC~D~").Cells() == 3);
    CHECK(Label("Cancel").Hotkey() == 0);
    CHECK(Label("a ~ b").Cells() == 5);
}

TEST_CASE("text that the edge cuts says so, and a small grid keeps the least layout") {
    Stage stage(20, 5);
    Canvas canvas = stage.Pen();
    CHECK(canvas.Columns() == 80);
    CHECK(canvas.Rows() == 25);
    canvas.Text(17, 1, "abcdef", Role::Panel);
    canvas.Text(-2, 2, "abcdef", Role::Panel);
    canvas.Box({15, 3, 40, 9}, Lines::Double, Role::FrameActive);
    CHECK(fake::Text(stage.frame) ==
          "\n                 ab»\ncdef\n               ╔════\n               ║\n");
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
