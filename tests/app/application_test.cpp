#include "app/application.h"

#include <doctest/doctest.h>

#include "support/fake_system.h"
#include "support/keys.h"
#include "support/picture.h"

using namespace Kest;

namespace {

int Run(fake::System& system, std::vector<std::string_view> arguments) {
    return RunApplication(arguments, system);
}

void Feed(fake::System& system, std::string_view script) {
    for (const zo::ui::InputEvent& event : fake::Keys(script)) {
        system.screen.events.push_back(event);
    }
}

const fake::Picture& Capture(fake::System& system, std::vector<std::string_view> arguments) {
    arguments.insert(arguments.end(), {"--capture", "out.png"});
    REQUIRE(Run(system, arguments) == 0);
    return system.pictures.at("out.png");
}

}  // namespace

TEST_CASE("without a window there is a sentence and a failure") {
    fake::System system;
    system.no_window = "There is no display.";
    CHECK(Run(system, {}) == 1);
    CHECK(system.disk.files.empty());
}

TEST_CASE("the program opens on the splash and ends where the player says so") {
    fake::System system;
    Feed(system, "<Esc><Esc>x<Enter>");  // splash, the card of the display, title
    CHECK(Run(system, {"--width", "640", "--height", "400"}) == 0);
    REQUIRE(system.screen.frames.size() >= 2);
    CHECK(fake::Text(system.screen.frames.front()).find("Press any key") != std::string::npos);
    CHECK(fake::Text(system.screen.frames.back()).find("Exit to DOS?") != std::string::npos);
    CHECK(system.screen.events.empty());
}

TEST_CASE("nothing is drawn while nothing changes, which is from the splash's name on") {
    fake::System system;
    CHECK(Run(system, {}) == 0);
    CHECK(fake::Text(system.screen.frames.back()).find("Version") != std::string::npos);
    CHECK(system.clock.seconds < 3.1);
}

TEST_CASE("a picture has the size, the look, the text and the scene that were asked for") {
    const struct {
        std::vector<std::string_view> arguments;
        int columns, rows;
        std::string_view shows;
    } cases[] = {
        {{"--width", "640", "--height", "400"}, 80, 25, "LC-1 service bench"},
        {{"--width", "1280", "--height", "800", "--text", "normal"}, 160, 50, "LC-1 service bench"},
        {{"--width", "1280", "--height", "800", "--look", "modern"}, 142, 40, "LC-1 service bench"},
        {{"--fresh", "--scene", "bench"}, 80, 25, "1-01 Carrier Check"},
        {{"--scene", "1-02-loopback"}, 80, 25, "1-02 Loopback"},
        {{"--scene", "1-01-carrier-check:results"}, 80, 25, "═ VERIFY ═"},
        {{"--scene", "shift-1:overlay-pause"}, 80, 25, "═ MENU ═"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.shows);
        fake::System system;
        const fake::Picture& picture = Capture(system, c.arguments);
        CHECK(picture.frame.grid.columns == c.columns);
        CHECK(picture.frame.grid.rows == c.rows);
        CHECK(fake::Text(picture.frame).find(c.shows) != std::string::npos);
        CHECK(system.disk.files.empty());
    }
}

TEST_CASE("a picture leaves the player's files alone and cleans up behind itself") {
    fake::System system;
    const std::string mine = R"({"version": 1, "current": "1-02-loopback"})";
    system.disk.files["data/progress.json"] = mine;
    const fake::Picture& picture = Capture(system, {"--fresh", "--scene", "title:overlay-pause"});
    CHECK(fake::Row(picture.frame, 0) == " MENU");
    CHECK(system.disk.files ==
          std::map<std::filesystem::path, std::string>{{"data/progress.json", mine}});
    CHECK(system.screen.frames.empty());
}

TEST_CASE("two pictures of one scene are the same") {
    fake::System one;
    fake::System two;
    two.clock.seconds = 77;
    CHECK(Capture(one, {"--scene", "title"}).frame == Capture(two, {"--scene", "title"}).frame);
}

TEST_CASE("what is asked for besides the game is done without a window") {
    const struct {
        std::vector<std::string_view> arguments;
        int code;
        std::size_t pictures;
    } cases[] = {
        {{"--help", "--capture", "out.png"}, 0, 0},
        {{"--version", "--fonts"}, 0, 0},
        {{"--fonts", "--audio-render", "out.wav"}, 1, 0},  // which comes first
        {{"--scene", "--fonts", "--capture", "out.png"}, 0, 0},
        {{"--smoke"}, 0, 0},
        {{"--smoke", "--capture", "out.png"}, 0, 1},
    };
    for (const auto& c : cases) {
        CAPTURE(c.arguments.front());
        fake::System system;
        if (c.code != 0) system.disk.full = "No space left on device";
        CHECK(Run(system, c.arguments) == c.code);
        CHECK(system.pictures.size() == c.pictures);
        CHECK(system.screen.frames.empty());
        CHECK(system.disk.files.empty());
    }
}

TEST_CASE("the window starts full screen where the player's settings say so") {
    const struct {
        std::vector<std::string_view> arguments;
        const char* settings;
        bool full_screen;
    } cases[] = {
        {{}, nullptr, true},
        {{"--windowed"}, nullptr, false},
        {{}, R"({"fullscreen": false})", false},
        {{"--windowed"}, R"({"fullscreen": true})", false},
    };
    for (const auto& c : cases) {
        fake::System system;
        if (c.settings != nullptr) system.disk.files["data/settings.json"] = c.settings;
        CHECK(Run(system, c.arguments) == 0);
        CHECK(system.screen.full_screen == c.full_screen);
    }
}

TEST_CASE("content comes from the folder that the environment names") {
    fake::System system;
    const auto place = [&] {
        const fake::Picture& picture =
            Capture(system, {"--scene", "1-01-carrier-check:title:overlay-pause"});
        return fake::Row(picture.frame, 0);
    };
    CHECK(place().ends_with("1-01 Carrier Check"));
    system.environment["VANTORKEST_CONTENT"] = "mine";
    CHECK(place().ends_with("1-01 Carrier Check"));  // no such folder
    system.disk.files["mine/missions/campaign.json"] = R"({"version": 1, "shifts": []})";
    CHECK(place() == " MENU");
}

TEST_CASE("a second copy says so in one sentence, leaves, and writes nothing") {
    fake::System system;
    system.disk.locked = true;
    CHECK(Run(system, {"--width", "640", "--height", "400"}) == 1);
    CHECK(fake::Text(system.screen.frames.front(), {17, 8, 46, 8}) ==
          "╔═ Vantor Kest ══════════════════════════════╗\n"
          "║                                            ║\n"
          "║  Vantor Kest is already open with these    ║\n"
          "║  files; go on there, or close it first.    ║\n"
          "║                                            ║\n"
          "║                   ► OK ◄▄                  ║\n"
          "║                    ▀▀▀▀▀▀                  ║\n"
          "╚════════════════════════════════════════════╝\n");
    CHECK(system.disk.files.empty());
}

TEST_CASE("a run is written as an animation, from the firmware named or the player's own") {
    fake::System system;
    system.disk.files["mine.lc1"] = "loop: rx a\n tx a\n jmp loop\n";
    CHECK(Run(system, {"--gif", "out.gif", "--scene", "1-02", "--firmware", "mine.lc1"}) == 0);
    const auto& frames = system.animations.at("out.gif");
    REQUIRE(frames.size() > 10);
    CHECK(fake::Text(frames.front()).find("Running") == std::string::npos);
    CHECK(fake::Text(frames[5]).find("Running Test 1 of ") != std::string::npos);
    CHECK(fake::Text(frames.back()).find("PASS. Last output at tick") != std::string::npos);

    system.disk.files["data/firmware/1-02-loopback.lc1"] = "tx 1\nhalt\n";
    CHECK(Run(system, {"--gif", "own.gif", "--scene", "1-02-loopback", "--test", "2"}) == 0);
    CHECK(fake::Text(system.animations.at("own.gif").back()).find("Test 2 of ") !=
          std::string::npos);

    system.disk.files["bad.lc1"] = "hlat\n";
    const std::vector<std::string_view> refused[] = {
        {"--gif", "no.gif"},
        {"--gif", "no.gif", "--scene", "9-99"},
        {"--gif", "no.gif", "--scene", "1-03"},
        {"--gif", "no.gif", "--scene", "1-02", "--test", "0"},
        {"--gif", "no.gif", "--scene", "1-02", "--test", "99"},
        {"--gif", "no.gif", "--scene", "1-02", "--firmware", "none.lc1"},
        {"--gif", "no.gif", "--scene", "1-02", "--firmware", "bad.lc1"},
    };
    for (const auto& arguments : refused) CHECK(Run(system, arguments) == 1);
    CHECK_FALSE(system.animations.contains("no.gif"));
}
