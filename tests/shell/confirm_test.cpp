#include "shell/confirm.h"

#include <doctest/doctest.h>

#include "support/game.h"

using namespace Kest;
using fake::Game;

namespace {

// The dialog's box without the shadows of its buttons.
std::string Box(Game& game, int width, int height) {
    zo::ui::Frame frame = game.Draw();
    for (zo::ui::Cell& cell : frame.cells) {
        if (cell.glyph == U'▀' || cell.glyph == U'▄') cell.glyph = U' ';
    }
    return fake::Text(frame, zo::ui::OverlayRect(80, 25, width, height));
}

}  // namespace

TEST_CASE("a question stands evenly wrapped in its box") {
    Game game(fake::Campaign({}));
    game.shell.Ask(
        {.title = "Exit", .message = "Exit to DOS? Firmware is saved first.", .yes = "Exit"});
    CHECK(Box(game, 46, 7) ==
          "╔═ Exit ═════════════════════════════════════╗\n"
          "║                                            ║\n"
          "║  Exit to DOS? Firmware is saved first.     ║\n"
          "║                                            ║\n"
          "║            ► Exit ◄  [ Cancel ]            ║\n"
          "║                                            ║\n"
          "╚════════════════════════════════════════════╝\n");
    CHECK(game.Row(0) == " Exit");
    CHECK(game.Row(24) == " ←→ Choose  Enter Press  Esc Cancel");
    game.Press("<Esc>");
    game.shell.Ask({.title = "Reset progress",
                    .message = "Clears closed tickets, scores, and achievements on this computer. "
                               "Firmware files are kept.",
                    .yes = "Reset",
                    .suggest_no = true});
    CHECK(Box(game, 46, 9) ==
          "╔═ Reset progress ═══════════════════════════╗\n"
          "║                                            ║\n"
          "║  Clears closed tickets, scores, and        ║\n"
          "║  achievements on this computer.            ║\n"
          "║  Firmware files are kept.                  ║\n"
          "║                                            ║\n"
          "║           [ Reset ]  ► Cancel ◄            ║\n"
          "║                                            ║\n"
          "╚════════════════════════════════════════════╝\n");
}

TEST_CASE("a question takes keys and presses for an answer") {
    const struct {
        const char* keys;
        const char* answers;
    } cases[] = {{"<Enter>", "yes "},
                 {"<Right><Enter>", "no "},
                 {"<Esc>", "no "},
                 {"<Tab><Space>", "no "},
                 {"e", "yes "},
                 {"c", "no "},
                 {"x", ""}};
    for (const auto& c : cases) {
        CAPTURE(c.keys);
        Game game(fake::Campaign({}));
        std::string answers;
        game.shell.Ask(
            {.title = "Exit", .message = "Exit to DOS?", .yes = "Exit", .answered = [&](bool yes) {
                 answers += yes ? "yes " : "no ";
             }});
        game.Press(c.keys);
        CHECK(answers == c.answers);
        CHECK((game.TopName() == "confirm") == answers.empty());
    }
    Game game(fake::Campaign({}));
    std::string answers;
    game.shell.Ask(
        {.title = "Exit", .message = "Exit to DOS?", .yes = "Exit", .answered = [&](bool yes) {
             answers += yes ? "yes " : "no ";
         }});
    game.Click({17 + 25, 8 + 4});  // on Cancel
    CHECK(answers == "no ");
}

TEST_CASE("a notice runs its action however it is closed") {
    for (const char* key : {"<Enter>", "<Esc>", "<Space>"}) {
        Game game(fake::Campaign({}));
        int closed = 0;
        game.shell.Notice("Shift 4 Delivery", "Bytes get lost.", [&] { ++closed; });
        CHECK(game.Row(24) == " Enter OK");
        game.Press(key);
        CHECK(closed == 1);
    }
}

TEST_CASE("a long message scrolls and leaves its button in place") {
    Game game(fake::Campaign({}));
    std::string message;
    for (int k = 1; k <= 200; ++k) message += "word" + std::to_string(k) + " ";
    game.shell.Notice("Long", message);
    const std::string before = Box(game, 56, 20);
    CHECK(before.find("word1 ") != std::string::npos);
    CHECK(before.find("► OK ◄") != std::string::npos);
    game.Press("<End>");
    const std::string after = Box(game, 56, 20);
    CHECK(after.find("word200") != std::string::npos);
    CHECK(after.find("► OK ◄") != std::string::npos);
}
