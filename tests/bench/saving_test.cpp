// How the bench keeps the player's firmware.

#include <doctest/doctest.h>

#include "game.h"

using support::Game;

namespace {

const std::filesystem::path kSlot1 = "data/firmware/1-01-echo.lc1";
const std::filesystem::path kSlot2 = "data/firmware/1-01-echo.2.lc1";

std::string Slots(Game& game) {
    return fake::Text(game.shell.Draw(), {1, 16, 21, 1});
}

// The first ticket is closed, so that slots can be changed.
struct SecondDay : Game {
    SecondDay() : Game("1-02-clerk") {
        shell.Progress().tickets["1-01-echo"] = {.closed = true};
        Open("1-01-echo");
    }
};

}  // namespace

TEST_CASE("text is saved when the player stops typing, and while typing goes on for long") {
    Game game("1-01-echo");
    game.Keys("a");
    CHECK(game.shell.SecondsToNextFrame() <= 3);
    game.Wait(2.9);
    CHECK_FALSE(game.system.disk.files.contains(kSlot1));
    game.Wait(0.2);
    CHECK(game.system.disk.files[kSlot1] == "a");

    for (int second = 0; second < 19; ++second) {
        game.Keys("b");
        game.Wait(1);
    }
    CHECK(game.system.disk.files[kSlot1] == "a");
    game.Wait(1);
    CHECK(game.system.disk.files[kSlot1].size() == 20);
}

TEST_CASE("text that could not be saved is tried again after the next edit") {
    Game game("1-01-echo");
    game.system.disk.full = "No space left on device";
    game.Keys("a");
    game.Wait(3);
    CHECK(game.Row(22) == " ! Firmware could not be saved: cannot write");
    game.Wait(30);
    CHECK(game.Status().starts_with(" Assembled: 1 error"));
    game.system.disk.full.clear();
    game.Keys("b");
    game.Wait(3);
    CHECK(game.system.disk.files[kSlot1] == "ab");
}

TEST_CASE("each slot has its own text, is saved when it is left, and is found again") {
    SecondDay game;
    CHECK(Slots(game) == "═ Slot [1]  2   3  ══\n");
    game.Keys("one");
    CHECK(Slots(game) == "═ Slot [1*] 2   3  ══\n");
    game.Keys("<Ctrl+2>");
    CHECK(game.Status().starts_with(" Firmware slot 2 "));
    CHECK(game.system.disk.files[kSlot1] == "one");
    game.Keys("two");
    game.Click(8, 16);
    CHECK(game.system.disk.files[kSlot2] == "two");
    CHECK(game.Row(2).starts_with("║!  1  one "));
    game.Click(13, 16);
    game.Open("1-02-clerk");
    game.Open("1-01-echo");
    CHECK(Slots(game) == "═ Slot  1  [2]  3  ══\n");
    CHECK(game.Row(2).starts_with("║!  1  two "));
}

TEST_CASE(
    "a slot that cannot be saved stays on the bench, and before the first close there is one") {
    SecondDay game;
    game.system.disk.full = "No space left on device";
    game.Keys("one<Ctrl+2>");
    CHECK(Slots(game) == "═ Slot [1*] 2   3  ══\n");
    CHECK(game.Row(2).starts_with("║!  1  one "));

    Game first("1-01-echo");
    first.Keys("one<Ctrl+2>");
    CHECK(Slots(first) == "═════════════════════\n");
    CHECK(first.Row(2).starts_with("║!  1  one "));
}

TEST_CASE("a ticket closed on a full disk stays closed, and the next save keeps it") {
    Game game("1-01-echo");
    game.system.disk.full = "No space left on device";
    game.Keys("rx a<Enter>tx a<F8>");
    CHECK(game.Top() == "results");
    CHECK(game.Row(22) == " ! Progress could not be saved: cannot write");
    CHECK_FALSE(game.system.disk.files.contains("data/progress.json.tmp"));
    game.Keys("<Esc>");
    game.system.disk.full.clear();
    game.Keys("<F8><Esc>");
    const Kest::Progress saved = Kest::LoadProgress(game.system.disk, "data");
    CHECK(saved.IsClosed("1-01-echo"));
    CHECK(saved.achievements.contains("BOTH_PAR"));
    CHECK(game.system.disk.files[kSlot1] == "rx a\ntx a");
    CHECK(game.shell.SaveFailure().empty());
}

TEST_CASE("the run speed is the player's, from ticket to ticket") {
    SecondDay game;
    game.Click(78, 17);
    game.Click(78, 17);
    CHECK(Kest::LoadSettings(game.system.disk, "data").run_speed == 4);
    game.Open("1-02-clerk");
    CHECK(game.Row(13).ends_with("Speed ◄Rapid"));
}
