#include "command_line.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

using namespace Kest;

namespace {

LaunchOptions Parse(std::vector<std::string_view> arguments) {
    return ParseCommandLine(arguments);
}

}  // namespace

TEST_CASE("numbers on the command line are held within their limits") {
    const struct {
        std::vector<std::string_view> arguments;
        zo::ui::PixelSize size;
        int closed;
    } cases[] = {
        {{}, {1440, 900}, -1},
        {{"--width", "100", "--height", "0"}, {320, 240}, -1},
        {{"--width", "1280", "--height", "800x"}, {1280, 800}, -1},
        {{"--width", "99999999999", "--height"}, {16384, 240}, -1},
        {{"--closed", "0"}, {1440, 900}, 0},
        {{"--closed", "-5"}, {1440, 900}, 0},
        {{"--closed", "12"}, {1440, 900}, 12},
        {{"--fresh"}, {1440, 900}, 0},
        {{"--closed", "5", "--fresh"}, {1440, 900}, 0},
    };
    for (const auto& c : cases) {
        const LaunchOptions options = Parse(c.arguments);
        CHECK(options.size == c.size);
        CHECK(options.closed == c.closed);
    }
}

TEST_CASE("words on the command line") {
    CHECK(Parse({"--text", "large"}).large_text == 1);
    CHECK(Parse({"--text", "normal"}).large_text == 0);
    CHECK(Parse({"--text", "Large"}).large_text == -1);
    CHECK(Parse({"--text"}).large_text == -1);
    CHECK(Parse({"--capture-delay", "0.5"}).capture_delay == doctest::Approx(0.5));
    CHECK(Parse({"--nonsense", "--vi", "--Windowed"}).vi_keys);
    CHECK_FALSE(Parse({"--Windowed"}).windowed);
    // An option's argument is never read as an option.
    CHECK(Parse({"--scene", "--smoke"}).scene == "--smoke");
    CHECK_FALSE(Parse({"--scene", "--smoke"}).smoke);
}

TEST_CASE("a delay that is no length of time is not given, and none lasts for ever") {
    const struct {
        std::string_view text;
        double seconds;
    } cases[] = {{"2", 2},   {"0", 0},     {"-1", 0},     {"soon", 0},
                 {"nan", 0}, {"inf", 600}, {"1e300", 600}};
    for (const auto& c : cases) {
        CAPTURE(c.text);
        CHECK(Parse({"--capture-delay", c.text}).capture_delay == doctest::Approx(c.seconds));
    }
}

TEST_CASE("the soundtrack and the fonts are asked for anywhere on the command line") {
    CHECK_FALSE(Parse({"--audio-render"}).audio_render);
    CHECK(Parse({"--audio-render", ""}).audio_render == "");
    CHECK(Parse({"--vi", "--audio-render", "a.wav", "--fresh"}).audio_render == "a.wav");
    CHECK(Parse({"--scene", "--audio-render", "a.wav"}).audio_render == "a.wav");
    CHECK(Parse({"--scene", "--fonts"}).fonts);
    CHECK_FALSE(Parse({"--font"}).fonts);
}

TEST_CASE("a capture and a smoke run are automatic, an empty capture is not") {
    CHECK(Parse({"--capture", "a.png"}).IsAutomatic());
    CHECK(Parse({"--smoke"}).IsAutomatic());
    CHECK_FALSE(Parse({"--capture"}).IsAutomatic());
    CHECK_FALSE(Parse({"--scene", "title"}).IsAutomatic());
}
