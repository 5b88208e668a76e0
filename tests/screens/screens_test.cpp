#include <doctest/doctest.h>

#include "screens/pause.h"
#include "screens/title.h"
#include "support/game.h"

using namespace Kest;
using fake::Game;

namespace {

const std::string kTitle80 = R"(

   ##  ##  ####  ##  ## ######  ####  #####      ##  ## ######  ##### ######
   ##  ## ##  ## ### ##   ##   ##  ## ##  ##     ## ##  ##     ##       ##
   ##  ## ###### ######   ##   ##  ## #####      ####   ####    ####    ##
    ####  ##  ## ## ###   ##   ##  ## ## ##      ## ##  ##         ##   ##
     ##   ##  ## ##  ##   ##    ####  ##  ##     ##  ## ###### #####    ##

                               LC-1 service bench
                                 Version 1.0.0

                      ╔═ MENU ═══════════════════════════╗
                      ║                                  ║
                      ║ ► Continue                       ║
                      ║   Ticket board                   ║
                      ║   Spec binder                    ║
                      ║   Options                        ║
                      ║   Credits                        ║
                      ║   Exit to DOS             Alt+X  ║
                      ║                                  ║
                      ╚══════════════════════════════════╝


 Opens Retry Budget on the bench.
 ↑↓ Choose  Enter Open  Alt+X Exit  F11 Full screen
)";

const std::string kTitle160 = R"(





       ####    ####    ########    ####    ####  ############    ########    ##########            ####    ####  ############    ##########  ############
       ####    ####    ########    ####    ####  ############    ########    ##########            ####    ####  ############    ##########  ############
       ####    ####  ####    ####  ######  ####      ####      ####    ####  ####    ####          ####  ####    ####          ####              ####
       ####    ####  ####    ####  ######  ####      ####      ####    ####  ####    ####          ####  ####    ####          ####              ####
       ####    ####  ############  ############      ####      ####    ####  ##########            ########      ########        ########        ####
       ####    ####  ############  ############      ####      ####    ####  ##########            ########      ########        ########        ####
         ########    ####    ####  ####  ######      ####      ####    ####  ####  ####            ####  ####    ####                  ####      ####
         ########    ####    ####  ####  ######      ####      ####    ####  ####  ####            ####  ####    ####                  ####      ####
           ####      ####    ####  ####    ####      ####        ########    ####    ####          ####    ####  ############  ##########        ####
           ####      ####    ####  ####    ####      ####        ########    ####    ####          ####    ####  ############  ##########        ####

                                                                       LC-1 service bench
                                                                         Version 1.0.0





                                                              ╔═ MENU ═══════════════════════════╗
                                                              ║                                  ║
                                                              ║ ► Continue                       ║
                                                              ║   Ticket board                   ║
                                                              ║   Spec binder                    ║
                                                              ║   Options                        ║
                                                              ║   Credits                        ║
                                                              ║   Exit to DOS             Alt+X  ║
                                                              ║                                  ║
                                                              ╚══════════════════════════════════╝














 Opens Retry Budget on the bench.
 ↑↓ Choose  Enter Open  Alt+X Exit  F11 Full screen
)";

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

MakeScreen StubNamed(const char* name) {
    return [name](Shell& shell, std::string_view about) {
        return std::make_unique<Stub>(shell, name, about);
    };
}

// Title and pause menu as they are; the other places as far as they are named.
Places PlacesWith(std::initializer_list<std::pair<Place, const char*>> others) {
    Places places;
    const auto at = [&](Place place) -> MakeScreen& {
        return places[static_cast<std::size_t>(place)];
    };
    at(Place::Title) = [](Shell& shell, auto) { return std::make_unique<Title>(shell); };
    at(Place::Pause) = [](Shell& shell, auto) { return std::make_unique<Pause>(shell); };
    for (const auto& [place, name] : others) at(place) = StubNamed(name);
    return places;
}

Places EveryPlace() {
    return PlacesWith({{Place::Bench, "bench"},
                       {Place::Board, "board"},
                       {Place::Options, "options"},
                       {Place::Binder, "reader"},
                       {Place::Credits, "credits"}});
}

kp::Content Tickets() {
    return fake::Campaign({{"1-01-carrier-check", "Carrier Check"},
                           {"1-02-loopback", "Loopback"},
                           {"1-03-uplink", "Uplink"},
                           {"4-03-retry-budget", "Retry Budget"}});
}

}  // namespace

TEST_CASE("the title is drawn at both sizes") {
    Game game(Tickets(), EveryPlace(), 3);
    game.shell.Progress().current = "4-03-retry-budget";
    game.shell.Open(Place::Title);
    CHECK(game.Text() == kTitle80);
    game.shell.OverrideSettings([](Settings& settings) { settings.large_text = false; });
    CHECK(game.Text() == kTitle160);
}

TEST_CASE("the title's menu grows with the closed tickets and leads only to what is there") {
    const Places few = PlacesWith({{Place::Bench, "bench"}});
    const struct {
        int closed;
        const Places places;
        std::vector<std::string> labels;
    } cases[] = {
        {0, EveryPlace(), {"Continue", "Options", "Exit to DOS"}},
        {1, EveryPlace(), {"Continue", "Ticket board", "Spec binder", "Options", "Exit to DOS"}},
        {3, few, {"Continue", "Exit to DOS"}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.closed);
        Game game(Tickets(), c.places, c.closed);
        game.shell.Open(Place::Title);
        const int count = static_cast<int>(c.labels.size());
        for (int k = 0; k < count; ++k) {
            CHECK(game.Row(13 + k).find(c.labels[static_cast<std::size_t>(k)]) ==
                  26 + 2 + 2 * (k == 0));
        }
        CHECK(game.Row(14 + count).find("╚") != std::string::npos);
    }
}

TEST_CASE("continue opens the current ticket, and without one the next that is open") {
    Game fresh(Tickets(), EveryPlace(), 0);
    fresh.shell.Open(Place::Title);
    CHECK(fresh.Row(23) == " Opens the bench.");
    fresh.Press("<Enter>");
    CHECK(fresh.Row(0) == " bench 1-01-carrier-check");

    Game game(Tickets(), EveryPlace(), 1);
    game.shell.Progress().current = "1-02-loopback";
    game.shell.Open(Place::Title);
    CHECK(game.Row(23) == " Opens Loopback on the bench.");
    game.Press("c");
    CHECK(game.Row(0) == " bench 1-02-loopback");
}

TEST_CASE("the title's items answer keys, letters and the pointer") {
    const struct {
        const char* keys;
        const char* top;
    } cases[] = {{"<Down><Enter>", "board"}, {"b", "board"},     {"s", "reader"},
                 {"o", "options"},           {"r", "credits"},   {"<Up><Enter>", "confirm"},
                 {"<Alt+X>", "confirm"},     {"<Esc>", "title"}, {"<End><Down><Enter>", "bench"}};
    for (const auto& c : cases) {
        CAPTURE(c.keys);
        Game game(Tickets(), EveryPlace(), 3);
        game.shell.Open(Place::Title);
        game.Press(c.keys);
        CHECK(game.TopName() == c.top);
    }
    Game game(Tickets(), EveryPlace(), 3);
    game.shell.Open(Place::Title);
    game.Click({30, 16});
    CHECK(game.TopName() == "options");
}

TEST_CASE("exit asks first, and cancel stays") {
    Game game(Tickets(), EveryPlace());
    game.shell.Open(Place::Title);
    game.Press("x");
    CHECK(game.Text().find("║  Exit to DOS?") != std::string::npos);
    game.Press("<Esc>");
    CHECK(game.TopName() == "title");
    CHECK_FALSE(game.shell.Done());
    game.Press("x<Enter>");
    CHECK(game.shell.Done());
}

TEST_CASE("a save that failed stands on the title") {
    Game game(Tickets(), EveryPlace());
    game.shell.Open(Place::Title);
    game.Draw();
    game.system.disk.full = "full";
    game.shell.SaveProgress();
    game.Wait(4);
    CHECK(game.Row(23).starts_with(" ! Progress could not be saved: "));
}

TEST_CASE("the pause menu stands over the bench") {
    Game game(Tickets(), EveryPlace(), 3);
    game.shell.Progress().current = "4-03-retry-budget";
    game.shell.Open(Place::Bench, "4-03-retry-budget");
    game.Draw();
    game.shell.Open(Place::Pause);
    const zo::ui::Rect box = {22, 7, 36, 10};
    CHECK(fake::Text(game.Draw(), box) ==
          "╔═ MENU ═══════════════════════════╗\n"
          "║                                  ║\n"
          "║ ► Resume                    Esc  ║\n"
          "║   Ticket board            Alt+B  ║\n"
          "║   Spec binder                F1  ║\n"
          "║   Options                        ║\n"
          "║   Title screen                   ║\n"
          "║   Exit to DOS             Alt+X  ║\n"
          "║                                  ║\n"
          "╚══════════════════════════════════╝\n");
    CHECK(game.Row(0) ==
          " MENU                                                         4-03 Retry Budget");
    CHECK(game.Row(23) ==
          " Paused at tick 50.                                          Back to the bench.");
    CHECK(game.Row(24) == " ↑↓ Choose  Enter Open  Esc Close");
}

TEST_CASE("the pause menu's items lead where they say") {
    const struct {
        const char* keys;
        const char* top;
    } cases[] = {{"<Enter>", "bench"}, {"<Esc>", "bench"}, {"r", "bench"}, {"<Alt+B>", "board"},
                 {"<F1>", "reader"},   {"o", "options"},   {"t", "title"}, {"<Alt+X>", "confirm"}};
    for (const auto& c : cases) {
        CAPTURE(c.keys);
        Game game(Tickets(), EveryPlace(), 3);
        game.shell.Open(Place::Bench);
        game.Draw();
        game.shell.Open(Place::Pause);
        game.Press(c.keys);
        CHECK(game.TopName() == c.top);
    }
    Game game(Tickets(), EveryPlace(), 3);
    game.shell.Open(Place::Board);
    game.Draw();
    game.shell.Open(Place::Pause);
    CHECK(game.Row(23).ends_with("Back to the board."));
    CHECK(game.Text().find("Ticket board") == std::string::npos);
}
