// What is heard on the bench, key by key.

#include <doctest/doctest.h>

#include "game.h"

using Kest::Effect;

namespace {

std::string Heard(support::Game& game, std::string_view keys, double wait = 0) {
    game.sounds.heard.clear();
    game.Press(keys);
    for (int k = 0; k < 20; ++k) game.Wait(wait / 20);
    return game.sounds.heard;
}

}  // namespace

TEST_CASE("every deed on the bench is heard once, and bytes where a run can be followed") {
    support::Game game(160, 50, 3);
    game.Visit("1-01-echo");
    struct Row {
        std::string_view keys;
        std::string_view heard;
        double wait = 0;
    };
    const Row rows[] = {
        {"<F5>", "14"},                        // a run that cannot start
        {"r", "6"},                            // typing
        {"x a", "6 6 6"},                      //
        {"<Enter>", "7"},                      //
        {"tx a", "6 6 6 6"},                   //
        {"<F6>", "8 <48"},                     // the first byte arrives, is read
        {"<F6>", "8 >48"},                     //
        {"<Shift+F6>", "8"},                   // and back
        {"<Ctrl+R>", "25"},                    //
        {"<F5>", "9 <48 >48 <69 >69 11", 60},  // a run, followed to its end
        {"<F7>", "9 11"},                      // at once, without bytes
        {"<F9>", "24"},                        //
        {"<Ctrl+S>", "26"},                    //
        {"<Ctrl+2>", "18"},                    //
        {"tx 1", "6 6 6 6"},                   //
        {"<F7>", "9 12"},                      // fails
        {"<F8>", "9 17", 4},                   //
        {"<Ctrl+1>", "18"},                    //
        {"<F8>", "9 16", 4},                   // closed
        {"<Right>", "3"},                      // in the results
        {"<Esc>", "4"},                        //
    };
    for (const Row& row : rows) {
        CAPTURE(row.keys);
        CHECK(Heard(game, row.keys, row.wait) == row.heard);
    }
}

TEST_CASE("a command that is none sounds an alarm") {
    support::Game game(160, 50, 3);
    game.shell.OverrideSettings([](Kest::Settings& settings) { settings.vi_keys = true; });
    game.Visit("1-01-echo");
    CHECK(Heard(game, ":q7<Enter>") == "6 6 6 15 7");
}

TEST_CASE("music goes with what the bench does") {
    support::Game game(160, 50, 3);
    game.Visit("1-01-echo");
    CHECK(game.sounds.scene == Kest::MusicScene::Editing);
    game.Press("rx a<Enter>tx a<F5>");
    CHECK(game.sounds.scene == Kest::MusicScene::Running);
    game.Press("<F8>");
    game.Wait(2);
    game.Wait(1);
    REQUIRE(game.TopName() == "results");
    CHECK(game.sounds.scene == Kest::MusicScene::Results);
    game.Press("<Esc>");
    game.Draw();
    game.Wait(0);
    CHECK(game.sounds.scene == Kest::MusicScene::Editing);
}
