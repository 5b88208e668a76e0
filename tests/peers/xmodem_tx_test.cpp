#include <doctest/doctest.h>

#include "conversation.h"

using support::Said;
using support::Talk;

TEST_CASE("the XMODEM sender waits to be asked and breaks no silence") {
    CHECK(Talk(R"("peer": {"type": "xmodem-tx", "block": 2, "gap": 7, "deaf": 1, "reply_within": 50,
                           "retry_after": [99, 199], "plan": ["ok", "lost_ack"]},
                  "tests": [{"frames": ["H", "I!"]}])",
               {{1, "06 15"},
                {102, "15"},
                {141, "15 06"},  // the first while the block's last byte is only just there
                {190, "55 06"},
                {300, "15"},
                {350, "06"},
                {360, "15"},
                {370, "06 15"}},
               500) == R"(from 0 not after 199: the receiver's first NAK
note 2: Nobody hears the NAK
from 2 not before 101: the NAK after the silence
from 2 not after 201: the NAK after the silence
note 102: Receiver ready: NAK
note 106: Block 1
send 01 01 FE 48 49 91 at 106, gap 7
from 102 not before 142: the answer to block 1
from 102 not after 191: the answer to block 1
note 148: Block 2
send 01 02 FD 21 1A 3B at 148, gap 7
from 142 not before 184: the answer to block 2
from 142 not after 233: the answer to block 2
note 191: The ACK for block 2 was lost on the line
from 191 not before 290: the NAK after the silence
from 191 not after 390: the NAK after the silence
note 304: Block 2 again
send 01 02 FD 21 1A 3B at 304, gap 7
from 300 not before 340: the answer to block 2
from 300 not after 389: the answer to block 2
send 04 at 354
note 354: EOT
from 350 not before 355: the answer to EOT
from 350 not after 404: the answer to EOT
note 360: EOT answered with NAK, as XMODEM receivers do once
send 04 at 364
note 364: EOT again
from 360 not before 365: the answer to EOT
from 360 not after 414: the answer to EOT
note 370: EOT acknowledged; transfer complete
done at 370
)");
}

TEST_CASE("the plan damages, cuts, loses and misnumbers blocks") {
    CHECK(Talk(R"("peer": {"type": "xmodem-tx", "block": 2, "retry_after": [9, 30],
                           "plan": ["garble:1", "garble", "cut:3", "drop", "cut:9", "garble:9",
                                    "skip"]},
                  "tests": [{"frames": ["HI"]}])",
               {{1, "15"},
                {20, "15"},
                {40, "15"},
                {60, "15"},
                {80, "15"},
                {100, "15"},
                {120, "15"},
                {140, "18"}},
               200) == R"(from 0 not after 30: the receiver's first NAK
note 1: Receiver ready: NAK
note 5: Block 1, damaged in transit
send 01 11 FE 48 49 91 at 5
from 1 not before 11: the answer to block 1
note 24: Block 1, damaged in transit
send 01 01 FE 48 49 81 at 24
from 20 not before 30: the answer to block 1
note 44: Block 1, cut short in transit
send 01 01 FE at 44
from 40 not before 55: the NAK after the silence
from 40 not after 76: the NAK after the silence
note 64: Block 1 was lost on the line
from 60 not before 69: the NAK after the silence
from 60 not after 90: the NAK after the silence
note 84: Block 1 again
send 01 01 FE 48 49 91 at 84
from 80 not before 90: the answer to block 1
note 104: Block 1 again
send 01 01 FE 48 49 91 at 104
from 100 not before 110: the answer to block 1
note 124: Block 2
send 01 02 FD 48 49 91 at 124
from 120 not before 130: the answer to block 2
note 140: The receiver cancels the transfer
done at 140
)");
}

TEST_CASE("the XMODEM sender gives up after ten sendings") {
    std::vector<Said> said;
    for (unsigned tick = 10; tick <= 110; tick += 10) said.push_back({tick, "15"});
    const struct {
        std::string_view frames, end;
    } cases[] = {
        {R"(["A"])", "note 110: Block 1 is given up after 10 sendings\ndone at 110\n"},
        {R"([""])", "note 110: EOT answered with NAK, as XMODEM receivers do once\ndone at 110\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.frames);
        const std::string record =
            Talk("\"peer\": {\"type\": \"xmodem-tx\", \"block\": 1}, \"tests\": [{\"frames\": " +
                     std::string(c.frames) + "}]",
                 said, 200);
        CHECK(record.substr(record.find("note 110")) == c.end);
    }
}

TEST_CASE("block numbers go from 255 to 0") {
    std::vector<Said> said = {{1, "15"}};
    for (unsigned block = 1; block <= 256; ++block) said.push_back({block * 20, "06"});
    const std::string record = Talk(R"("peer": {"type": "xmodem-tx", "block": 1},
                                       "tests": [{"frames": [{"repeat": "A", "times": 257}]}])",
                                    said, 5130);
    CHECK(
        record.ends_with("note 5104: Block 0\nsend 01 00 FF 41 41 at 5104\n"
                         "from 5100 not before 5109: the answer to block 0\n"
                         "note 5124: Block 1\nsend 01 01 FE 41 41 at 5124\n"
                         "from 5120 not before 5129: the answer to block 1\n"));
}
