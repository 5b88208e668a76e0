// The bench as a player sees it. More steps of scenes stand for the bench:
//
//     start 1-01-echo 80x25 closed 2    a new game, its grid and how many tickets are closed
//     vi 1-01-echo 80x25 closed 2       the same with vi keys, and with all that the bench leads to
//     visit 1-02-clerk                  another ticket in the same game
//     solve 1-01-echo                   a ticket has been closed before
//     hints 2                           that the ticket has shown

#include "game.h"
#include "support/scene.h"

namespace {

std::unique_ptr<support::Game> Started(std::string_view words, bool vi) {
    const std::string ticket(support::Cut(words, " "));
    int columns = 80, rows = 25, closed = -1;
    std::sscanf(std::string(words).c_str(), "%dx%d closed %d", &columns, &rows, &closed);
    auto game = std::make_unique<support::Game>(columns, rows, closed, vi);
    game->shell.OverrideSettings([vi](Kest::Settings& settings) { settings.vi_keys = vi; });
    game->Visit(ticket);
    return game;
}

}  // namespace

TEST_CASE("the bench shows its scenes") {
    for (const support::Case& scene : support::Cases("bench/scenes")) {
        std::unique_ptr<support::Game> game;
        for (const support::Step& step : scene) {
            INFO(step.where);
            if (step.key == "start" || step.key == "vi") {
                game = Started(step.value, step.key == "vi");
                continue;
            }
            REQUIRE(game);
            if (step.key == "visit") {
                game->Visit(step.value);
            } else if (step.key == "solve") {
                game->shell.Progress().tickets[step.value].closed = true;
            } else if (step.key == "hints") {
                const std::string& ticket = game->shell.Progress().current;
                CHECK(game->shell.Progress().tickets[ticket].hints_revealed ==
                      std::stoi(step.value));
            } else if (!fake::Play(*game, step)) {
                FAIL("unknown key ", step.key);
            }
        }
    }
}
