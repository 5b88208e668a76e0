// The frame decoder as the acker shows it: ACK for an intact frame, NAK for a damaged one, $EE for
// the command $05 outside frames.

#include <doctest/doctest.h>

#include "conversation.h"

namespace {

// The bytes that the acker answers when the card sends these.
std::string Answers(std::string_view format, std::string_view sent) {
    const std::string record =
        support::Talk(std::string(format) +
                          R"("peer": {"type": "acker", "delay": 1, "answers": {"05": "EE"}},
                             "tests": [{"host": ["", "", "", "", "", "", "", "", ""]}])",
                      {{10, sent}}, 60);
    std::string answers;
    for (std::size_t at = record.find("send "); at != std::string::npos;
         at = record.find("send ", at + 1)) {
        answers += (answers.empty() ? "" : " ") + record.substr(at + 5, 2);
    }
    return answers;
}

}  // namespace

TEST_CASE("the decoder finds frames among noise and commands, by count alone") {
    constexpr std::string_view kHouse =
        R"("frame": {"sync": "C1 67", "check": "sum8", "check_scope": "payload"}, )";
    const struct {
        std::string_view format, sent, answers;
    } cases[] = {
        {kHouse, "C1 67 01 41 41", "06"},
        {kHouse, "C1 67 01 41 40", "15"},
        {kHouse, "C1 67 00 00 C1 67 00 01", "06 15"},
        {kHouse, "55 67 C1 C1 67 01 41 41", "06"},     // noise, then half a sync
        {kHouse, "C1 05 05", "EE EE"},                 // a false start, ended by a command
        {kHouse, "C1 C1 05 67 01", "EE"},              // and another
        {kHouse, "C1 67 02 05 C1 C6 05", "06 EE"},     // commands only outside
        {kHouse, "C1 67 03 C1 67 00 28", "06"},        // a sync inside is data
        {kHouse, "C1 67 03 41 C1 67 01 41 41", "15"},  // a cut frame is filled up
        {kHouse, "C1 67 05 05 05 05", ""},             // an unfinished frame
        {R"("frame": {"sync": "A1 A1 B2", "length": false}, )",  // nothing but a sync
         "A1 A1 A1 B2 A1 A1 B2", "06 06"},
        {R"("frame": {"length": false, "fixed_length": 2, "check": "xor8"}, )",
         "41 42 03 05 05 00 00 41 42", "06 EE EE 15"},
        {R"("frame": {"flags": true, "length": false}, )", "01 02 05 03", "06 06 EE 06"},
        {R"("frame": {"length": false, "check": "crc16"}, )", "FF FF 05 FF FE", "06 EE 15"},
        {R"("frame": {"length": false}, )", "01 05 02", "EE"},  // nothing takes up a byte
        {"", "C1 67 01 05 41", "EE"},                           // no format
    };
    for (const auto& c : cases) {
        CAPTURE(c.format);
        CAPTURE(c.sent);
        CHECK(Answers(c.format, c.sent) == c.answers);
    }
}
