// How the bench keeps the player's firmware.

#include <doctest/doctest.h>

#include "game.h"

using support::Game;

namespace {

const std::filesystem::path kSlot1 = "data/firmware/1-01-echo.lc1";

}  // namespace

TEST_CASE("text is saved when the player stops typing, and while typing goes on for long") {
    Game game;
    game.Visit("1-01-echo");
    game.Press("a");
    CHECK(game.shell.SecondsToNextFrame() <= 3);
    game.Wait(2.9);
    CHECK_FALSE(game.system.disk.files.contains(kSlot1));
    game.Wait(0.2);
    CHECK(game.system.disk.files[kSlot1] == "a");

    for (int second = 0; second < 19; ++second) {
        game.Press("b");
        game.Wait(1);
    }
    CHECK(game.system.disk.files[kSlot1] == "a");
    game.Wait(1);
    CHECK(game.system.disk.files[kSlot1].size() == 20);
}

TEST_CASE("a ticket closed on a full disk stays closed, and the next save keeps it") {
    Game game;
    game.Visit("1-01-echo");
    game.system.disk.full = "No space left on device";
    game.Press("rx a<Enter>tx a<F8>");
    game.Wait(2);
    CHECK(game.TopName() == "results");
    CHECK(game.Row(22) == " ! Progress could not be saved: cannot write");
    CHECK_FALSE(game.system.disk.files.contains("data/progress.json.tmp"));
    game.Press("<Esc>");
    game.system.disk.full.clear();
    game.Press("<F8>");
    game.Wait(2);
    game.Press("<Esc>");
    const Kest::Progress saved = Kest::LoadProgress(game.system.disk, "data");
    CHECK(saved.IsClosed("1-01-echo"));
    CHECK(saved.achievements.contains("BOTH_PAR"));
    CHECK(game.system.disk.files[kSlot1] == "rx a\ntx a");
    CHECK(game.shell.SaveFailure().empty());
}

TEST_CASE("the run speed is the player's, from ticket to ticket") {
    Game game;
    game.shell.Progress().tickets["1-01-echo"] = {.closed = true};
    game.Visit("1-01-echo");
    game.Click({79, 17});
    game.Click({79, 17});
    CHECK(Kest::LoadSettings(game.system.disk, "data").run_speed == 4);
    game.Visit("1-02-clerk");
    CHECK(game.Row(13).ends_with("Speed ◄Rapid"));
}
