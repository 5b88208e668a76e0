#include <doctest/doctest.h>

#include "base/format.h"
#include "conversation.h"

using support::Talk;

TEST_CASE("the sender goes on from frame to frame by the card's answers") {
    CHECK(Talk(R"("peer": {"type": "sender", "start": 8, "gap": 6, "pause": 90, "reply_within": 10,
                           "answer_after_frame": true},
                  "tests": [{"frames": ["X", "ABCDEFGH", "Y"]}])",
               {{10, "06"}, {120, "06"}, {147, "06"}, {240, "06"}}, 400) == R"(send 58 at 8, gap 6
note 8: Frame 1
from 8 not before 9: the answer to frame 1
from 8 not after 18: the answer to frame 1
send 41 42 43 44 45 46 47 48 at 100, gap 6
note 100: Frame 2
from 100 not before 143: the answer to frame 2
from 100 not after 152: the answer to frame 2
send 59 at 237, gap 6
note 237: Frame 3
from 237 not before 238: the answer to frame 3
from 237 not after 247: the answer to frame 3
done at 240
)");
}

TEST_CASE("the plan damages and loses sendings and answers") {
    CHECK(Talk(R"("peer": {"type": "sender", "gap": 2, "timeout": 20, "reply_within": 15,
                           "plan": ["garble:1", "drop", "lose_reply", "nak?", "garble+lose_reply",
                                    "garble:2"]},
                  "tests": [{"frames": ["AB"]}])",
               {{10, "15"}, {40, "06"}, {42, "06"}, {60, "7F 06"}, {70, "15"}, {89, "06 06 06"}},
               200) == R"(send 41 52 at 4, gap 2
note 4: Frame 1, damaged in transit
from 6 not after 21: the answer to frame 1
note 10: NAK received; sending frame 1 again
note 34: No answer to frame 1; sending it again
send 41 42 at 34, gap 2
note 34: Frame 1 again
from 36 not after 51: the answer to frame 1
note 40: The ACK for frame 1 was lost on the line
note 42: The ACK for frame 1 was lost on the line
note 56: No answer to frame 1; sending it again
send 41 42 at 56, gap 2
note 56: Frame 1 again
from 58 not after 73: the answer to frame 1
note 61: NAK received; sending frame 1 again
send 41 52 at 65, gap 2
note 65: Frame 1, damaged in transit
from 67 not after 82: the answer to frame 1
note 70: The NAK for frame 1 was lost on the line
note 87: No answer to frame 1; sending it again
send 41 42 at 87, gap 2
note 87: Frame 1 again
from 89 not after 104: the answer to frame 1
done at 91
)");
}

TEST_CASE("the sender gives a frame up after eight sendings") {
    std::string record = "send 41 at 4\nnote 4: Frame 1\n";
    for (unsigned tick = 14; tick < 84; tick += 10) {
        record += base::Format(
            "note %u: No answer to frame 1; sending it again\n"
            "send 41 at %u\nnote %u: Frame 1 again\n",
            tick, tick, tick);
    }
    record += "note 84: Frame 1 is given up after 8 sendings\n";
    // The second frame has no bytes, so nothing arrives. The card refuses it eight times.
    std::vector<support::Said> said;
    for (unsigned tick = 92; tick <= 148; tick += 8) said.push_back({tick, "15"});
    for (unsigned tick = 92; tick < 148; tick += 8) {
        record += base::Format("note %u: NAK received; sending frame 2 again\n", tick);
    }
    record += "note 148: Frame 2 is given up after 8 sendings\ndone at 148\n";
    CHECK(Talk(R"("peer": {"type": "sender", "timeout": 10}, "tests": [{"frames": ["A", ""]}])",
               said, 300) == record);
}

TEST_CASE("the sender sends the frames it is told to") {
    const struct {
        std::string_view settings, record;
    } cases[] = {
        {R"("frames": 0)", "done at 0\n"},
        {R"("frames": 9, "timeout": -1, "ack": "41 42", "nak": "42")",
         "send 51 at 4\nnote 4: Frame 1\nsend 52 at 15\nnote 15: Frame 2\ndone at 21\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.settings);
        CHECK(Talk("\"peer\": {\"type\": \"sender\", " + std::string(c.settings) +
                       R"(}, "tests": [{"frames": ["Q", "R"]}])",
                   {{10, "41 42"}, {20, "41 42"}}, 200) == c.record);
    }
}
