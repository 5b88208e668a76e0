#include <doctest/doctest.h>

#include "conversation.h"

using support::Talk;

namespace {

// Empty frames, "C1 00 C1", are intact; "C1 00 C0" is damaged.
constexpr std::string_view kFrame = R"("frame": {"sync": "C1", "check": "sum8"}, )";

std::string Acker(std::string_view rest) {
    return std::string(kFrame) + R"("peer": {"type": "acker", )" + std::string(rest);
}

}  // namespace

TEST_CASE("each plan word has its answer, note and windows") {
    const std::string ticket = Acker(
        R"("plan": ["ack", "nak", "busy", "drop", "ignore", "ack_late"], "retry_after": [19, 29],
           "nak_retry_within": 12, "backoff": [8, 16], "backoff_slack": 6},
           "tests": [{"host": ["", ""]}])");
    CHECK(Talk(ticket,
               {{10, "C1 00 C1"},
                {110, "C1 00 C1"},
                {210, "C1 00 C1"},
                {310, "C1 00 C1"},
                {410, "C1 00 C1"},
                {510, "C1 00 C1"},
                {610, "C1 00 C1"}},
               700) == R"(send 06 at 14
send 15 at 114
note 114: Line noise damaged frame 2 on the way in
from 114 not after 126: the retransmission after the NAK of frame 2
send 18 at 214
note 214: BUSY frame 3
from 214 not before 222: the retry after BUSY to frame 3
from 214 not after 228: the retry after BUSY to frame 3
note 314: The ACK for frame 4 was lost on the line
from 312 not before 331: the retransmission of frame 4
from 312 not after 341: the retransmission of frame 4
from 412 not before 431: the retransmission of frame 5
from 412 not after 441: the retransmission of frame 5
send 06 at 534
note 534: The ACK for frame 6 is late
done at 512
send 06 at 614
)");
}

TEST_CASE("a damaged frame is never acknowledged") {
    const std::string ticket =
        Acker(R"("plan": ["ack", "ack_late", "", "ok", "garble", "lost_ack"]}, "tests": [{}])");
    CHECK(Talk(ticket,
               {{10, "C1 00 C0"},
                {20, "C1 00 C0"},
                {30, "C1 00 C0"},
                {40, "C1 00 C0"},
                {50, "C1 00 C0"},
                {60, "C1 00 C0"},
                {70, "C1 00 C0"}},
               100) == R"(done at 0
send 15 at 14
note 14: Line noise damaged frame 1 on the way in
send 15 at 24
note 24: Line noise damaged frame 2 on the way in
send 15 at 34
note 34: Line noise damaged frame 3 on the way in
send 15 at 44
note 44: Line noise damaged frame 4 on the way in
send 15 at 54
note 54: Line noise damaged frame 5 on the way in
note 64: The ACK for frame 6 was lost on the line
send 15 at 74
note 74: Line noise damaged frame 7 on the way in
)");
}

TEST_CASE("pauses grow with each BUSY in a row, and any other word ends the row") {
    const std::string ticket =
        Acker(R"("plan": ["busy", "busy", "busy", "ignore", "busy"], "backoff": [8, 16],
                 "busy": "7F 18"}, "tests": [{"host": [""]}])");
    CHECK(Talk(ticket,
               {{10, "C1 00 C1"},
                {110, "C1 00 C1"},
                {210, "C1 00 C1"},
                {310, "C1 00 C1"},
                {410, "C1 00 C1"}},
               500) == R"(send 7F 18 at 14
note 15: BUSY frame 1
from 15 not before 23: the retry after BUSY to frame 1
from 15 not after 23: the retry after BUSY to frame 1
send 7F 18 at 114
note 115: BUSY frame 2
from 115 not before 131: the retry after BUSY to frame 2
from 115 not after 131: the retry after BUSY to frame 2
send 7F 18 at 214
note 215: BUSY frame 3
from 215 not before 231: the retry after BUSY to frame 3
from 215 not after 231: the retry after BUSY to frame 3
send 7F 18 at 414
note 415: BUSY frame 5
from 415 not before 423: the retry after BUSY to frame 5
from 415 not after 423: the retry after BUSY to frame 5
)");
}

TEST_CASE("answers carry the flags of the frame they answer") {
    CHECK(Talk(R"("frame": {"sync": "C1", "flags": true, "check": "none"},
                  "peer": {"type": "acker", "ack_seq": true, "ack": "06 07 06", "delay": 9,
                           "plan": ["ack", "nak"]}, "tests": [{"host": ["", ""]}])",
               {{10, "C1 01 07 55"}, {40, "C1 00 08"}}, 90) == R"(send 06 07 06 07 at 22
send 15 08 at 51
note 52: Line noise damaged frame 2 on the way in
)");
}

TEST_CASE("the session is closed when the answer to the final command has arrived") {
    const struct {
        std::string_view settings, record;
    } cases[] = {
        {R"("answers": {"05": "06", "04": "18 06"}, "final": "04")", R"(send 06 at 7
note 7: Answered $05 with $06
send 06 at 14
send 18 06 at 22
note 23: Answered $04 with $18 $06
done at 23
)"},
        // Without an answer the byte itself closes it.
        {R"("answers": {"05": ""}, "final": "04")", R"(send at 7
note 7: Answered $05 with nothing
send 06 at 14
done at 20
)"},
        // A command is one byte.
        {R"("answers": {"05 05": "06"}, "final": "04 04")", "send 06 at 14\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.settings);
        CHECK(Talk(Acker(std::string(c.settings) + R"(}, "tests": [{"host": [""]}])"),
                   {{5, "05"}, {10, "C1 00 C1"}, {20, "04"}}, 60) == c.record);
    }
}
