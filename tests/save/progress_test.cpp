#include "save/progress.h"

#include <doctest/doctest.h>

#include <limits>

#include "support/fake_disk.h"

namespace {

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
    REQUIRE(Kest::SaveProgress(disk, kPath, Sample()));
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
    REQUIRE(Kest::SaveProgress(disk, kPath, Kest::LoadProgress(disk, kPath)));
    CHECK(disk.files[kPath] == text);
}

TEST_CASE("what a file leaves out or gets wrong reads as the default") {
    fake::Disk disk;
    disk.files[kPath] = R"({"tickets": {"a": {"solved": 1, "slot": 9, "solved_at": -5}, "b": 3},
                            "binder_seen": ["wrap", 7], "play_seconds": 1e300})";
    const Kest::Progress progress = Kest::LoadProgress(disk, kPath);
    CHECK(progress.tickets.size() == 2);
    CHECK_FALSE(progress.IsClosed("a"));
    CHECK(progress.tickets.at("a").slot == 3);
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
        CHECK(Kest::LoadProgress(disk, kPath).current == c.current);
    }
}

TEST_CASE("progress that cannot be saved says why") {
    fake::Disk disk;
    disk.full = "Read-only file system";
    CHECK(Kest::SaveProgress(disk, kPath, {}).Message() ==
          "cannot write data/progress.json (Read-only file system)");
}

TEST_CASE("a saved progress keeps the one before as its backup") {
    fake::Disk disk;
    REQUIRE(Kest::SaveProgress(disk, kPath, Sample()));
    REQUIRE(Kest::SaveProgress(disk, kPath, {}));
    disk.files[kPath].clear();
    CHECK(Kest::LoadProgress(disk, kPath).current == "1-03-uplink");
}

TEST_CASE("closing keeps the smaller of each score and the first time") {
    Kest::Progress progress;
    progress.tickets["a"].hints_revealed = 2;
    const struct {
        Kest::Close close;
        Kest::TicketRecord record;
    } steps[] = {
        // ticket, lines, ticks, hints, slot, now; closed, ticks, lines, hints, slot, closed at
        {{"a", 9, 300, 1, 1, 50}, {true, 300, 9, 2, 1, 50}},
        {{"a", 12, 200, 3, 2, 60}, {true, 200, 9, 3, 2, 50}},
        {{"a", 8, 400, 0, 3, 70}, {true, 200, 8, 3, 3, 50}},
        {{"a", 8, 200, 0, 1, 80}, {true, 200, 8, 3, 1, 50}},
    };
    for (const auto& step : steps) {
        CAPTURE(step.close.now);
        CloseTicket(progress, step.close);
        const Kest::TicketRecord& record = progress.tickets.at("a");
        CHECK(record.closed == step.record.closed);
        CHECK(record.best_ticks == step.record.best_ticks);
        CHECK(record.best_lines == step.record.best_lines);
        CHECK(record.hints_revealed == step.record.hints_revealed);
        CHECK(record.slot == step.record.slot);
        CHECK(record.closed_at == step.record.closed_at);
    }
}
