#include "save/progress.h"

#include <doctest/doctest.h>

#include <limits>

#include "support/fake_disk.h"

namespace {

constexpr const char* kFolder = "data";
constexpr const char* kPath = "data/progress.json";
constexpr const char* kBackup = "data/progress.json.bak";

Kest::Progress Sample() {
    Kest::Progress progress;
    progress.tickets["1-02-loopback"] = {true, 475, 2, 1, 3, 946684800};
    progress.current = "1-03-uplink";
    progress.binder_seen = {"wrap", "op-tx"};
    progress.achievements = {"TWO_LINES", "OF_A_LATER_VERSION"};
    progress.shifts_seen = {"1"};
    progress.title_card_seen = true;
    progress.play_seconds = 5000000000;
    return progress;
}

}  // namespace

TEST_CASE("progress is written whole, in the file's order, and reads back") {
    fake::Disk disk;
    REQUIRE(Kest::SaveProgress(disk, kFolder, Sample()));
    const std::string text = R"({
  "version": 1,
  "tickets": {
    "1-02-loopback": {
      "solved": true,
      "ticks": 475,
      "lines": 2,
      "hints": 1,
      "slot": 3,
      "solved_at": 946684800
    }
  },
  "current": "1-03-uplink",
  "mail_read": [],
  "binder_seen": [
    "op-tx",
    "wrap"
  ],
  "achievements": [
    "OF_A_LATER_VERSION",
    "TWO_LINES"
  ],
  "shifts_seen": [
    "1"
  ],
  "kest_seen": true,
  "play_seconds": 5000000000
}
)";
    CHECK(disk.files[kPath] == text);
    REQUIRE(Kest::SaveProgress(disk, kFolder, Kest::LoadProgress(disk, kFolder)));
    CHECK(disk.files[kPath] == text);
}

TEST_CASE("what this version does not know is kept behind what it knows") {
    fake::Disk disk;
    disk.files[kPath] = R"({"skin": "blue", "version": 7, "tickets": {"9-99-gone": {
                            "replay": [1, 2], "solved": true, "lines": 3}}, "current": "9-99-gone"})";
    REQUIRE(Kest::SaveProgress(disk, kFolder, Kest::LoadProgress(disk, kFolder)));
    CHECK(disk.files[kPath] == R"({
  "version": 7,
  "tickets": {
    "9-99-gone": {
      "solved": true,
      "ticks": 0,
      "lines": 3,
      "hints": 0,
      "slot": 1,
      "solved_at": 0,
      "replay": [
        1,
        2
      ]
    }
  },
  "current": "9-99-gone",
  "mail_read": [],
  "binder_seen": [],
  "achievements": [],
  "shifts_seen": [],
  "kest_seen": false,
  "play_seconds": 0,
  "skin": "blue"
}
)");
}

TEST_CASE("a damaged file is set aside, and never takes the place of the good backup") {
    fake::Disk disk;
    disk.files[kPath] = R"({"current": "edited by hand",,})";
    disk.files[kBackup] = R"({"current": "old"})";
    REQUIRE(Kest::SaveProgress(disk, kFolder, Kest::LoadProgress(disk, kFolder)));
    CHECK(disk.files["data/progress.json.damaged"] == R"({"current": "edited by hand",,})");
    CHECK(disk.files[kBackup] == R"({"current": "old"})");
    CHECK(Kest::LoadProgress(disk, kFolder).current == "old");
}

TEST_CASE("a reset takes back what was achieved and leaves what was seen once") {
    Kest::Progress progress = Sample();
    progress.mail_read = {"welcome"};
    Kest::ResetProgress(progress);
    fake::Disk disk;
    REQUIRE(Kest::SaveProgress(disk, kFolder, progress));
    CHECK(disk.files[kPath] == R"({
  "version": 1,
  "tickets": {},
  "current": "",
  "mail_read": [
    "welcome"
  ],
  "binder_seen": [],
  "achievements": [],
  "shifts_seen": [],
  "kest_seen": true,
  "play_seconds": 5000000000
}
)");
}

TEST_CASE("what a file leaves out or gets wrong reads as the default") {
    fake::Disk disk;
    disk.files[kPath] =
        R"({"tickets": {"a": {"solved": 1, "slot": 9, "hints": -2, "solved_at": -5}, "b": 3},
                            "binder_seen": ["wrap", 7], "play_seconds": 1e300})";
    const Kest::Progress progress = Kest::LoadProgress(disk, kFolder);
    CHECK(progress.tickets.size() == 2);
    CHECK_FALSE(progress.IsClosed("a"));
    CHECK(progress.tickets.at("a").slot == 3);
    CHECK(progress.tickets.at("a").hints_revealed == 0);
    CHECK(progress.tickets.at("a").closed_at == 0);
    CHECK(progress.tickets.at("b").slot == 1);
    CHECK(progress.binder_seen.size() == 1);
    CHECK(progress.play_seconds == std::numeric_limits<std::uint64_t>::max());
    CHECK_FALSE(progress.IsClosed("c"));
}

TEST_CASE("the backup stands in for a file that cannot be read") {
    const struct {
        const char* file;  // null: not there
        const char* backup;
        const char* current;
    } cases[] = {
        {R"({"current": "new"})", R"({"current": "old"})", "new"},
        {R"({"current": "new)", R"({"current": "old"})", "old"},
        {"", R"({"current": "old"})", "old"},
        {"[]", R"({"current": "old"})", "old"},
        {nullptr, R"({"current": "old"})", "old"},
        {"{", "{", ""},
        {nullptr, nullptr, ""},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.file == nullptr ? "no file" : c.file));
        fake::Disk disk;
        if (c.file != nullptr) disk.files[kPath] = c.file;
        if (c.backup != nullptr) disk.files[kBackup] = c.backup;
        CHECK(Kest::LoadProgress(disk, kFolder).current == c.current);
    }
}

TEST_CASE("a saved progress keeps the one before as its backup") {
    fake::Disk disk;
    REQUIRE(Kest::SaveProgress(disk, kFolder, Sample()));
    REQUIRE(Kest::SaveProgress(disk, kFolder, {}));
    disk.files[kPath].clear();
    CHECK(Kest::LoadProgress(disk, kFolder).current == "1-03-uplink");
}

TEST_CASE("closing keeps the smaller of each score and the first time") {
    using enum Kest::Against;
    Kest::Progress progress;
    progress.tickets["a"].hints_revealed = 2;
    const struct {
        Kest::Close close;
        Kest::TicketRecord record;
        Kest::Improvement better;
    } steps[] = {
        // ticket, lines, ticks, hints, slot, now; closed, ticks, lines, hints, slot, closed at;
        // first, lines, ticks
        {{"a", 9, 300, 1, 1, 50}, {true, 300, 9, 2, 1, 50}, {true, Better, Better}},
        {{"a", 12, 200, 3, 2, 60}, {true, 200, 9, 3, 2, 50}, {false, Worse, Better}},
        {{"a", 8, 400, 0, 3, 70}, {true, 200, 8, 3, 3, 50}, {false, Better, Worse}},
        {{"a", 8, 200, 0, 1, 80}, {true, 200, 8, 3, 1, 50}, {false, Equal, Equal}},
    };
    for (const auto& step : steps) {
        CAPTURE(step.close.now);
        const Kest::Improvement better = CloseTicket(progress, step.close);
        CHECK(better.first == step.better.first);
        CHECK(better.lines == step.better.lines);
        CHECK(better.ticks == step.better.ticks);
        const Kest::TicketRecord& record = progress.tickets.at("a");
        CHECK(record.closed == step.record.closed);
        CHECK(record.best_ticks == step.record.best_ticks);
        CHECK(record.best_lines == step.record.best_lines);
        CHECK(record.hints_revealed == step.record.hints_revealed);
        CHECK(record.slot == step.record.slot);
        CHECK(record.closed_at == step.record.closed_at);
    }
}
