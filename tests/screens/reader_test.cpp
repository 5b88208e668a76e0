// The binder as a player reads it. More steps of scenes:
//
//     open timer                the reader, at a page or where it was left
//     read lc1 frames           the pages that count as read

#include "screens/reader.h"

#include "support/scene.h"

using namespace Kest;
using fake::Game;

namespace {

// Three pages in two sections, of which the second is long.
kp::Content SmallBinder() {
    kp::Content content;
    content.pages = {
        {"lc1",
         "1.1 The LC-1",
         "The LC-1",
         {"The card stands between a host and a line. What it sends is on page 2.1, when on "
          "page 1.2.",
          "", "  ROM    24 lines  usual", "", "This is page 1.1; there is no page 9.9."}},
        {"timer", "1.2 Timer", "The LC-1", {}},
        {"frames", "2.1 Frames", "Protocols", {"A frame ends in a CRC.", "", "  C1 67  crc"}},
    };
    for (int row = 1; row <= 30; ++row) {
        content.pages[1].body.push_back("Row " + std::to_string(row) + " of the timer.");
    }
    content.pages[1].body.push_back("The timer runs out: see page 1.1 and page 2.1.");
    return content;
}

Places ReaderPlaces() {
    Places places;
    places[static_cast<std::size_t>(Place::Binder)] = Readers();
    return places;
}

std::string Read(const Game& game) {
    std::string ids;
    for (const std::string& id : game.shell.Progress().binder_seen) {
        ids += (ids.empty() ? "" : " ") + id;
    }
    return ids;
}

}  // namespace

TEST_CASE("the reader shows its scenes") {
    for (const support::Case& scene : support::Cases("screens/reader.txt")) {
        Game game(SmallBinder(), ReaderPlaces());
        for (const support::Step& step : scene) {
            INFO(step.where);
            if (step.key == "open") {
                game.shell.Open(Place::Binder, step.value);
                game.Draw();
            } else if (step.key == "read") {
                CHECK(Read(game) == step.value);
            } else if (!fake::Play(game, step)) {
                FAIL("unknown key ", step.key);
            }
        }
    }
}

TEST_CASE("the way back is long, and goes on from where it was left") {
    PageTrail trail;
    for (int page = 0; page < 1000; ++page) trail.GoTo({.page = std::to_string(page)});
    int steps = 0;
    for (; trail.CanGo(-1) && steps < 60; ++steps) trail.Go(-1);
    CHECK(steps == 60);
    CHECK(trail.Here().page == "939");
    trail.GoTo({.page = "939"});
    CHECK(trail.CanGo(1));  // the page here is no new stop
    trail.GoTo({.page = "new"});
    CHECK_FALSE(trail.CanGo(1));
    trail.Go(-1);
    CHECK(trail.Here().page == "939");
}

TEST_CASE("PgDn reads the whole binder, of which nothing is cut at any width") {
    kp::Content content;
    content.pages = *kp::LoadBinder(kp::ContentStore::BuiltIn());
    for (const auto& [columns, rows] : {std::pair{80, 25}, {106, 30}, {160, 50}, {200, 60}}) {
        CAPTURE(columns);
        Game game(content, ReaderPlaces());
        game.SetCells(columns, rows);
        game.shell.Open(Place::Binder, content.pages.front().id);
        std::string before;
        for (std::string text = game.Text(); text != before; text = game.Text()) {
            CHECK(text.find("»") == std::string::npos);
            before = std::move(text);
            game.Press("<PgDn>");
        }
        CHECK(game.Row(0).ends_with("58 of 58 pages read"));
    }
}
