#include "save/progress.h"

#include <doctest/doctest.h>

#include "support/fake_disk.h"

namespace {

constexpr const char* kFolder = "data";
constexpr const char* kPath = "data/progress.json";

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
