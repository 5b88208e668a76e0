#include <doctest/doctest.h>

#include "base64.h"
#include "clicks.h"
#include "pace.h"
#include "small_screen.h"
#include "speech_rows.h"

using namespace zo::term;

TEST_CASE("presses in a row count to three") {
    Clicks clicks;
    const struct {
        int button, x;
        double at;
        int count;
    } presses[] = {{1, 4, 0.0, 1}, {1, 4, 0.3, 2}, {1, 4, 0.6, 3}, {1, 4, 0.7, 1},
                   {1, 5, 0.8, 1}, {2, 5, 0.9, 1}, {2, 5, 1.5, 1}, {2, 5, 1.9, 2}};
    for (const auto& p : presses) {
        CAPTURE(p.at);
        CHECK(clicks.Press(p.button, p.x, 7, p.at) == p.count);
    }
}

TEST_CASE("pictures wait for the answers to those before them") {
    Pace pace;
    pace.Sent(100000, 0);
    CHECK(pace.MaySend(0));  // one that has never answered is sent everything
    pace.Answered(1);
    pace.Sent(3000, 1);
    CHECK_FALSE(pace.MaySend(1.5));
    CHECK(pace.SecondsToSend(1.5) == doctest::Approx(2.5));
    pace.Answered(2);
    CHECK(pace.MaySend(2));
    for (std::size_t k = 0; k < Pace::kMostPictures; ++k) {
        CHECK(pace.MaySend(2));
        pace.Sent(20, 2);
    }
    CHECK_FALSE(pace.MaySend(2));
    pace.Answered(3);
    CHECK(pace.MaySend(3));
    pace.Sent(5000, 3);
    CHECK_FALSE(pace.MaySend(5.9));
    CHECK(pace.MaySend(6));  // the answers got lost
    CHECK_FALSE(pace.Asks());
    pace.Answered(7);
    CHECK(pace.Asks());
}

TEST_CASE("base64") {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xff\xfe\xfd\xfc", "//79/A=="}};
    for (const auto& [bytes, text] : cases) {
        std::string out;
        AppendBase64(out, bytes);
        CHECK(out == text);
    }
}

TEST_CASE("a terminal too small says so at every size") {
    const zo::ui::Frame frame = TooSmall({30, 6}, kLeastSize);
    CHECK(zo::ui::TextDump(frame) ==
          "\n"
          " Vantor Kest needs 80 columns\n"
          "  and 25 rows; this terminal\n"
          "has 30 and 6. Make it larger,\n"
          "    or press Esc to leave.\n"
          "\n");
    for (int width = 1; width < 80; width += 13) {
        for (int height = 1; height < 25; height += 5) {
            CHECK(TooSmall({width, height}, kLeastSize).cells.size() ==
                  static_cast<std::size_t>(width * height));
        }
    }
}

TEST_CASE("the last lines said stand beneath the game") {
    SpeechRows speech;
    zo::ui::Frame frame;
    frame.Resize({.columns = 12, .rows = 5});
    for (const std::string_view line : {"one", "two", "a longer line", "four"}) speech.Say(line);
    speech.Draw(frame, 2, 3);
    CHECK(zo::ui::TextDump(frame) == "\n\na longer\nline\nfour\n");
    speech.Draw(frame, 4, 1);
    CHECK(zo::ui::TextDump(frame).ends_with("line\nfour\n"));
}
