// Title and pause menu as a player sees them. More steps of scenes:
//
//     start 3 bench             a new game, how many tickets are closed, and the one other place
//                               there is; without a name every place is there, but a stand-in;
//                               with "real" those that this room has are themselves
//     set 1-02-loopback         the current ticket
//     open bench 1-02-loopback  a place, and what about
//     normal                    the text's size
//     window 320x240            its size in pixels
//     still                     without motion
//     kept "motion": false      what the settings' file says
//     save                      the progress
//     done no                   whether the game is over

#include <map>

#include "screens/board.h"
#include "screens/notices.h"
#include "screens/options.h"
#include "screens/pause.h"
#include "screens/splash.h"
#include "screens/text_mode_card.h"
#include "screens/title.h"
#include "support/scene.h"

using namespace Kest;
using fake::Game;

namespace {

const std::map<std::string, Place> kPlaces = {
    {"title", Place::Title},       {"pause", Place::Pause},
    {"bench", Place::Bench},       {"board", Place::Board},
    {"options", Place::Options},   {"reader", Place::Binder},
    {"credits", Place::Credits},   {"splash", Place::Splash},
    {"textmode", Place::TextMode}, {"achievements", Place::Achievements},
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
        if (!only.empty() && only != "real" && name != only) continue;
        places[static_cast<std::size_t>(place)] = [name](Shell& shell, std::string_view about) {
            return std::make_unique<Stub>(shell, name, about);
        };
    }
    const auto at = [&](Place place) -> MakeScreen& {
        return places[static_cast<std::size_t>(place)];
    };
    at(Place::Title) = [](Shell& shell, auto) { return std::make_unique<Title>(shell); };
    at(Place::Pause) = [](Shell& shell, auto) { return std::make_unique<Pause>(shell); };
    if (only != "real") return places;
    at(Place::Board) = [](Shell& shell, auto) { return std::make_unique<Board>(shell); };
    at(Place::Splash) = [](Shell& shell, auto) { return std::make_unique<Splash>(shell); };
    at(Place::TextMode) = [](Shell& shell, auto) { return std::make_unique<TextModeCard>(shell); };
    at(Place::Credits) = [](Shell& shell, auto) { return MakeCredits(shell); };
    at(Place::Achievements) = [](Shell& shell, auto) { return MakeAchievements(shell); };
    at(Place::Options) = [](Shell& shell, std::string_view row) {
        return std::make_unique<Options>(shell, row);
    };
    return places;
}

kp::LoadedTicket Loaded(std::string_view id, std::string_view title, std::string_view client) {
    kp::LoadedTicket loaded;
    loaded.ticket.id = id;
    loaded.ticket.title = title;
    loaded.ticket.client = client;
    loaded.reference.lines = 33;
    loaded.reference.ticks = 446;
    return loaded;
}

kp::Shift Shift(int number, std::string_view title, std::string_view subtitle,
                std::string_view intro) {
    kp::Shift shift;
    shift.number = number;
    shift.title = title;
    shift.subtitle = subtitle;
    shift.intro = intro;
    return shift;
}

// Two shifts, of which the second has an optional ticket and one that could not be loaded.
kp::Content TwoShifts() {
    kp::Content content;
    content.shifts = {Shift(1, "Basics", "Bytes in and out", ""),
                      Shift(4, "Delivery", "Acknowledgments and retries", "Bytes get lost.")};
    content.shifts[0].tickets = {Loaded("1-01-carrier-check", "Carrier Check", "Lab test rig"),
                                 Loaded("1-02-loopback", "Loopback", "Freight dispatch line"),
                                 Loaded("1-03-uplink", "Uplink", "Order terminal")};
    content.shifts[1].tickets = {Loaded("4-03-retry-budget", "Retry Budget", "Instrument logger"),
                                 Loaded("4-04-receiver", "Receiver", ""),
                                 Loaded("4-06-sequence", "Sequence", "Freight dispatch line")};
    kp::Ticket& retry = content.shifts[1].tickets[0].ticket;
    retry.difficulty = 3;
    retry.brief = "Send each host message as one frame.";
    retry.text = {"The logger talks to its base station."};
    retry.machine = {.rom = 40, .ram = 0, .registers = 0b1101, .crc = true, .timer = true};
    retry.tests.resize(2);
    retry.tests[0].name = "No errors";
    retry.tests[1].name = "One NAK";
    content.shifts[1].tickets[1].ticket.optional = true;
    content.left_out = {{"4-05-duplicates", "reference firmware is missing"}};
    content.problems = {"4-05-duplicates: reference firmware is missing"};
    return content;
}

std::unique_ptr<Game> Started(std::string_view words) {
    const std::string closed(support::Cut(words, " "));
    auto game = std::make_unique<Game>(TwoShifts(), PlacesWith(words),
                                       closed.empty() ? -1 : std::stoi(closed));
    game->shell.Progress().title_card_seen = !closed.empty() || words != "real";
    return game;
}

void PlayScenes(std::string_view file) {
    for (const support::Case& scene : support::Cases(file)) {
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
            } else if (step.key == "window") {
                zo::ui::PixelSize size;
                REQUIRE(std::sscanf(step.value.c_str(), "%dx%d", &size.width, &size.height) == 2);
                game->shell.SetWindow(size, 1);
            } else if (step.key == "kept") {
                CHECK(game->system.disk.files["data/settings.json"].find(words) !=
                      std::string::npos);
            } else if (step.key == "scores") {
                const std::string id(support::Cut(words, " "));
                Kest::TicketRecord& record = game->shell.Progress().tickets[id];
                record.closed = true;
                record.best_lines = std::stoi(std::string(support::Cut(words, " ")));
                record.best_ticks = std::stoi(std::string(words));
            } else if (step.key == "still") {
                game->shell.OverrideSettings([](Settings& s) { s.motion = false; });
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

}  // namespace

TEST_CASE("title and pause menu show their scenes") {
    PlayScenes("screens/scenes.txt");
}

TEST_CASE("the ticket board shows its scenes") {
    PlayScenes("screens/board.txt");
}

TEST_CASE("splash, card, credits and achievements show their scenes") {
    PlayScenes("screens/start.txt");
}

TEST_CASE("the options show their scenes") {
    PlayScenes("screens/options.txt");
}

TEST_CASE("controller, pointer and what is heard play their scenes") {
    PlayScenes("screens/controls.txt");
}
