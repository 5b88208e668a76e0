// Title and pause menu as a player sees them. More steps of scenes:
//
//     start 3 bench             a new game, how many tickets are closed, and the one other place
//                               there is; without a name every place is there
//     set 1-02-loopback         the current ticket
//     open bench 1-02-loopback  a place, and what about
//     normal                    the text's size
//     save                      the progress
//     done no                   whether the game is over

#include <map>

#include "screens/pause.h"
#include "screens/title.h"
#include "support/scene.h"

using namespace Kest;
using fake::Game;

namespace {

const std::map<std::string, Place> kPlaces = {
    {"title", Place::Title},     {"pause", Place::Pause},     {"bench", Place::Bench},
    {"board", Place::Board},     {"options", Place::Options}, {"reader", Place::Binder},
    {"credits", Place::Credits},
};

// A screen that stands in for one that the test does not look into.
class Stub final : public Screen {
public:
    Stub(Shell& shell, std::string name, std::string_view about)
        : Screen(shell), name_(std::move(name)), about_(about) {}
    std::string_view Name() const override { return name_; }
    void Draw(zo::ui::Canvas&, zo::ui::Pressables&) override {}
    void DescribeFrame(FrameRecord& record) const override {
        record.title = name_ + " " + about_;
        record.standing = "Paused at tick 50.";
    }

private:
    std::string name_;
    std::string about_;
};

Places PlacesWith(std::string_view only) {
    Places places;
    for (const auto& [name, place] : kPlaces) {
        if (!only.empty() && name != only) continue;
        places[static_cast<std::size_t>(place)] = [name](Shell& shell, std::string_view about) {
            return std::make_unique<Stub>(shell, name, about);
        };
    }
    const auto at = [&](Place place) -> MakeScreen& {
        return places[static_cast<std::size_t>(place)];
    };
    at(Place::Title) = [](Shell& shell, auto) { return std::make_unique<Title>(shell); };
    at(Place::Pause) = [](Shell& shell, auto) { return std::make_unique<Pause>(shell); };
    return places;
}

std::unique_ptr<Game> Started(std::string_view words) {
    const std::string closed(support::Cut(words, " "));
    return std::make_unique<Game>(fake::Campaign({{"1-01-carrier-check", "Carrier Check"},
                                                  {"1-02-loopback", "Loopback"},
                                                  {"1-03-uplink", "Uplink"},
                                                  {"4-03-retry-budget", "Retry Budget"}}),
                                  PlacesWith(words), closed.empty() ? -1 : std::stoi(closed));
}

}  // namespace

TEST_CASE("title and pause menu show their scenes") {
    for (const support::Case& scene : support::Cases("screens/scenes.txt")) {
        std::unique_ptr<Game> game;
        for (const support::Step& step : scene) {
            INFO(step.where);
            std::string_view words = step.value;
            if (step.key == "start") {
                game = Started(words);
                continue;
            }
            REQUIRE(game);
            if (step.key == "set") {
                game->shell.Progress().current = words;
            } else if (step.key == "open") {
                const Place place = kPlaces.at(std::string(support::Cut(words, " ")));
                game->shell.Open(place, words);
                game->Draw();
            } else if (step.key == "normal") {
                game->shell.OverrideSettings([](Settings& s) { s.large_text = false; });
            } else if (step.key == "save") {
                game->shell.SaveProgress();
            } else if (step.key == "done") {
                CHECK(game->shell.Done() == (words == "yes"));
            } else if (!fake::Play(*game, step)) {
                FAIL("unknown key ", step.key);
            }
        }
    }
}
