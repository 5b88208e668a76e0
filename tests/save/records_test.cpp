#include "save/records.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>

#include "support/fake_disk.h"

namespace {

constexpr const char* kHistory = "data/history.json";

int Count(const std::string& text, std::string_view part) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
    return count;
}

}  // namespace

TEST_CASE("the firmware of each record is kept, whatever follows") {
    fake::Disk disk;
    Kest::Progress progress;
    const std::string& lines = disk.files["data/firmware/a.best-lines.lc1"] = "lost";
    const std::string& ticks = disk.files["data/firmware/a.best-ticks.lc1"] = "lost";
    const struct {
        int lines, ticks;
        const char* firmware;
        const char* best_lines;
        const char* best_ticks;
    } steps[] = {
        {9, 300, "first", "first", "first"},  {12, 200, "fast", "first", "fast"},
        {8, 400, "short", "short", "fast"},   {8, 200, "as good", "short", "fast"},
        {20, 900, "clumsy", "short", "fast"}, {7, 100, "both", "both", "both"},
    };
    for (const auto& step : steps) {
        CAPTURE(std::string(step.firmware));
        const Kest::Close close = {.ticket_id = "a", .lines = step.lines, .ticks = step.ticks};
        const Kest::Improvement better = CloseTicket(progress, close);
        REQUIRE(Kest::KeepRecords(disk, "data", close, better, step.firmware));
        CHECK(lines == step.best_lines);
        CHECK(ticks == step.best_ticks);
    }
    // A player of an earlier version has records and no files of them.
    disk.files.clear();
    const Kest::Close close = {.ticket_id = "a", .lines = 7, .ticks = 101};
    REQUIRE(Kest::KeepRecords(disk, "data", close, CloseTicket(progress, close), "again"));
    CHECK(disk.files["data/firmware/a.best-lines.lc1"] == "again");
    CHECK(disk.files.size() == 1);
}

TEST_CASE("the history holds a ticket's last verifies and what others put into the file") {
    fake::Disk disk;
    disk.files[kHistory] = R"({"mood": 3, "tickets": {"a": "none", "gone": [{"lines": 4}]}})";
    constexpr int kVerifies = Kest::kHistoryLength + 3;
    for (int k = 1; k <= kVerifies; ++k) {
        const Kest::Close close = {.ticket_id = "a", .lines = 5, .ticks = k, .now = 946684800};
        REQUIRE(Kest::AddToHistory(disk, "data", close));
    }
    REQUIRE(Kest::AddToHistory(disk, "data", {.ticket_id = "b"}));
    const std::string& text = disk.files[kHistory];
    CHECK(Count(text, "\"at\": 946684800") == Kest::kHistoryLength);
    CHECK(
        text.starts_with("{\n  \"mood\": 3,\n  \"tickets\": {\n    \"a\": [\n      {\n"
                         "        \"lines\": 5,\n        \"ticks\": 4,\n"));
    CHECK(Count(text, "\"ticks\": 203") == 1);
    CHECK(Count(text, "\"lines\": 4") == 1);
    CHECK(Count(text, "\"b\": [") == 1);
}

TEST_CASE("a history that cannot be read starts anew") {
    fake::Disk disk;
    disk.files[kHistory] = "{\"tickets\": {";
    REQUIRE(Kest::AddToHistory(disk, "data", {.ticket_id = "a", .lines = 2, .ticks = 9, .now = 7}));
    CHECK(Count(disk.files[kHistory], "\"lines\": 2") == 1);
}
