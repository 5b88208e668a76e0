// What the shell keeps for the player: settings, progress, achievements, and work on the way out.

#include <doctest/doctest.h>

#include "support/game.h"

using namespace Kest;
using fake::Game;

namespace {

constexpr const char* kSettings = "data/settings.json";
constexpr const char* kProgress = "data/progress.json";

kp::Content TwoTickets() {
    kp::Content content = fake::Campaign({{"1-01-one", "One"}, {"1-02-two", "Two"}});
    for (kp::LoadedTicket& loaded : content.shifts.front().tickets) {
        loaded.reference.lines = 5;
        loaded.reference.ticks = 50;
    }
    return content;
}

bool Holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST_CASE("settings are brought up to date at the start, applied, and kept when they change") {
    fake::System system;
    system.disk.files[kSettings] = R"({"theme": "green", "text_size": "normal", "later": 1})";
    const kp::Content content = TwoTickets();
    Shell shell({.content = content,
                 .clock = system.clock,
                 .disk = system.disk,
                 .data_folder = system.DataFolder()});
    const std::string& file = system.disk.files[kSettings];
    CHECK(file.starts_with("{\n  \"settings_version\": 3,"));
    CHECK(Holds(file, "\"text_size\": \"large\""));
    CHECK(Holds(system.disk.files["data/settings.json.bak"], "\"normal\""));
    shell.SetWindow({640, 400}, 1);
    CHECK(shell.Grid().columns == 80);

    // What holds for this run is applied, and does not get into the file with a later change.
    shell.OverrideSettings([](Settings& settings) { settings.modern_look = true; });
    CHECK(shell.Grid().look == zo::ui::Look::Modern);
    shell.ChangeSettings([](Settings& settings) { settings.large_text = false; });
    CHECK(shell.Settings().modern_look);
    CHECK(shell.Settings().theme == 2);
    CHECK(Holds(file, "\"look\": \"classic\""));
    CHECK(Holds(file, "\"text_size\": \"normal\""));
    CHECK(Holds(file, "\"later\": 1"));
}

TEST_CASE("settings that stand as they are are not written again") {
    fake::System system;
    Settings settings;
    CHECK(SaveSettings(system.disk, "data", settings));
    system.disk.full = "No space left on device";
    CHECK(SaveSettings(system.disk, "data", settings));
    settings.crt = true;
    CHECK_FALSE(SaveSettings(system.disk, "data", settings));
}

TEST_CASE("a close earns achievements, which are told and saved, unless every ticket is open") {
    const struct {
        bool open_all;
        std::string_view status;
        std::size_t earned;
    } cases[] = {{false, " Achievement: First Ticket", 2}, {true, "", 0}};
    for (const auto& c : cases) {
        CAPTURE(c.open_all);
        Game game(TwoTickets());
        game.shell.OverrideSettings([&](Settings& settings) { settings.open_all = c.open_all; });
        const ClosedTicket closed = game.shell.CloseTicket(
            {.ticket_id = "1-01-one", .lines = 5, .ticks = 50, .now = 77}, "halt");
        CHECK(closed.first);
        CHECK(closed.earned.size() == c.earned);
        CHECK(game.Row(23) == c.status);
        const Progress saved = LoadProgress(game.system.disk, "data");
        CHECK(saved.IsClosed("1-01-one"));
        CHECK(saved.achievements.size() == c.earned);
        CHECK(game.system.disk.files.at("data/firmware/1-01-one.best-lines.lc1") == "halt");
        CHECK(Holds(game.system.disk.files.at("data/history.json"), "\"at\": 77"));
        CHECK(game.shell.Unlocking().Stage() == (c.open_all ? 3 : 1));
    }
}

TEST_CASE("a binder page that is opened can earn an achievement too") {
    Game game(TwoTickets());
    for (int page = 0; page < 20; ++page) {
        CHECK(game.shell.Progress().achievements.empty());
        game.shell.Progress().binder_seen.insert(std::to_string(page));
        game.shell.SaveProgress();
    }
    CHECK(game.Row(23) == " Achievement: Twenty Binder Pages");
}

TEST_CASE("a reset starts anew, leaves firmware alone and never happens in automation") {
    Game game(TwoTickets());
    game.system.disk.files["data/firmware/1-01-one.lc1"] = "halt";
    game.shell.CloseTicket({.ticket_id = "1-01-one", .lines = 9, .ticks = 90}, "halt");
    game.shell.ResetProgress();
    CHECK(game.Row(23) == " Progress reset.");
    CHECK(LoadProgress(game.system.disk, "data").tickets.empty());
    CHECK(game.system.disk.files.at("data/firmware/1-01-one.lc1") == "halt");

    Shell automatic({.content = game.content,
                     .clock = game.system.clock,
                     .disk = game.system.disk,
                     .persistent = false});
    automatic.Progress().current = "1-01-one";
    automatic.ResetProgress();
    CHECK(automatic.Progress().current == "1-01-one");
}

TEST_CASE("progress that is still owed is tried again on leaving, and asked about") {
    Game game(TwoTickets());
    game.system.disk.full = "No space left on device";
    game.shell.Progress().current = "1-02-two";
    game.shell.SaveProgress();
    game.shell.Quit();
    CHECK_FALSE(game.shell.Done());
    CHECK(Holds(game.Text(), "Progress could not be saved: "));
    game.Press("<Esc>");
    game.system.disk.full.clear();
    game.Wait(90.5);
    game.shell.Advance();
    game.shell.Quit();
    CHECK(game.shell.Done());
    const Progress saved = LoadProgress(game.system.disk, "data");
    CHECK(saved.current == "1-02-two");
    CHECK(saved.play_seconds == 90);
}

TEST_CASE("progress is saved, and a failure stands until a save works") {
    Game game(TwoTickets());
    game.shell.Progress().current = "1-02-two";
    game.system.disk.full = "No space left on device";
    game.shell.SaveProgress();
    CHECK(game.Row(22).starts_with(" ! Progress could not be saved: "));
    CHECK(game.Draw().At(3, 22).role == zo::ui::Role::StatusAlert);
    CHECK_FALSE(game.shell.SaveFailure().empty());
    game.system.disk.full.clear();
    game.shell.SaveProgress();
    CHECK(game.shell.SaveFailure().empty());
    const Progress saved = LoadProgress(game.system.disk, "data");
    CHECK(saved.current == "1-02-two");
}

TEST_CASE("a run with its own number of closed tickets leaves the player's progress alone") {
    Game game(TwoTickets(), {}, 1);
    CHECK(game.shell.Progress().IsClosed("1-01-one"));
    CHECK_FALSE(game.shell.Progress().IsClosed("1-02-two"));
    game.shell.SaveProgress();
    CHECK_FALSE(game.system.disk.files.contains("data/progress.json"));
}
