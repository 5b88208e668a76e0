#include "ui/bars.h"

#include <doctest/doctest.h>

#include "stage.h"
#include "support/keys.h"

using namespace zo::ui;
using fake::Stage;

TEST_CASE("the key bar presses keys and leaves out what does not fit whole") {
    const KeyItem items[] = {{.key = fake::KeyNamed("F1"), .word = "Binder"},
                             {.key = fake::KeyNamed("F5"), .word = "Run"},
                             {.key = {}, .cap = "↑↓", .word = "Choose"},
                             {.key = fake::KeyNamed("F8"), .word = "Verify", .enabled = false}};
    Stage stage;
    Canvas canvas = stage.Pen();
    std::string pressed;
    const std::function<void(const KeyPress&)> press = [&](const KeyPress& key) {
        pressed += KeyName(key);
    };
    DrawKeyBar(canvas, stage.pressables, items, press);
    CHECK(fake::Row(stage.frame, 24) == " F1 Binder  F5 Run  ↑↓ Choose  F8 Verify");
    for (const int x : {2, 14, 22, 33}) stage.Click({x, 24});
    CHECK(pressed == "F1F5");

    const std::vector<KeyItem> many(7, KeyItem{.key = fake::KeyNamed("F1"), .word = "Twelve12"});
    DrawKeyBar(canvas, stage.pressables, many, press);
    CHECK(fake::Row(stage.frame, 24) ==
          " F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12  F1 Twelve12");
}

TEST_CASE("the top bar gives up the name, then the detail, then the place") {
    constexpr const char* kLong = "4-03 A title that is quite a bit longer than titles are";
    constexpr const char* kVeryLong =
        "1234567890123456789012345678901234567890123456789012345678901234567890123456789";
    const struct {
        int columns;
        TopBar bar;
        std::string_view row;
    } cases[] = {
        {80,
         {"BENCH", "4-03 Retry Budget", ", Instrument logger", "Shift 4 Delivery"},
         " BENCH │ 4-03 Retry Budget, Instrument logger                  Shift 4 Delivery"},
        {106,
         {"BENCH", "4-03 Retry Budget", ", Instrument logger", "Shift 4 Delivery"},
         " VANTOR KEST │ BENCH │ 4-03 Retry Budget, Instrument logger                         "
         "     Shift 4 Delivery"},
        {80,
         {"BENCH", kLong, ", Instrument logger", "Shift 4"},
         " BENCH │ 4-03 A title that is quite a bit longer than titles are        Shift 4"},
        {80,
         {"BENCH", kVeryLong, "", "Shift 4"},
         " BENCH │ 123456789012345678901234567890123456789012345678901234567890123456789»"},
    };
    for (const auto& c : cases) {
        Stage stage(c.columns, 25);
        Canvas canvas = stage.Pen();
        DrawTopBar(canvas, stage.pressables, c.bar);
        CHECK(fake::Row(stage.frame, 0) == c.row);
        stage.pressables.Move({12, 0});
        CHECK(stage.pressables.Hint() == (c.row.ends_with("»") ? c.bar.context : ""));
    }
}

TEST_CASE("the parts of the status line give way to each other") {
    constexpr std::string_view kVerdict =
        "Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame 2, check byte 1; the specification "
        "calls for $5D (']').";
    constexpr std::string_view kFull =
        "Almost as long as its row, so that the keys at its right end have to go: 75.";
    const struct {
        StatusLine line;
        std::string_view rows;
    } cases[] = {
        {{.message = "Paused at tick 64.", .right = "F5 F8"},
         "\n Paused at tick 64.                                                       F5 F8\n"},
        {{.mode = "NORMAL 2d", .message = "Firmware saved.", .right = "F5 F8"},
         "\n NORMAL 2d │ Firmware saved.                                              F5 F8\n"},
        {{.message = kVerdict, .alert = true, .right = "F5 F8"},
         " ! Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame\n"
         " 2, check byte 1; the specification calls for $5D (']').\n"},
        {{.message = kFull, .right = "F5 F8"},
         "\n Almost as long as its row, so that the keys at its right end have to go: 75.\n"},
        {{.message = kVerdict, .hint = "One instruction.", .right = "F5 F8"},
         "\n Test 2 of 6: FAIL. Tick 105: transmitted $D4 as frame 2, ch»  One instruction.\n"},
        {{.message = "", .hint = "One instruction.", .right = "F5 F8"},
         "\n                                                               One instruction.\n"},
    };
    for (const auto& c : cases) {
        Stage stage;
        Canvas canvas = stage.Pen();
        DrawStatusLine(canvas, c.line);
        CHECK(fake::Text(stage.frame, {0, 22, 80, 2}) == c.rows);
    }
}

TEST_CASE("a message of more than three rows says that it goes on") {
    Stage stage;
    Canvas canvas = stage.Pen();
    std::string message;
    for (int k = 0; k < 80; ++k) message += "word ";
    DrawStatusLine(canvas, {.message = message});
    CHECK(fake::Row(stage.frame, 23).ends_with("word »"));
    CHECK(fake::Row(stage.frame, 21).ends_with("word"));
    CHECK(fake::Row(stage.frame, 20).empty());
}
