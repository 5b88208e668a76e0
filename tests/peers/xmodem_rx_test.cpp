#include <doctest/doctest.h>

#include "conversation.h"

using support::Talk;

namespace {

constexpr std::string_view kBlock1 = "01 01 FE 48 49 91";
constexpr std::string_view kBlock2 = "01 02 FD 21 1A 3B";

std::string Receiver(std::string_view settings) {
    return R"("peer": {"type": "xmodem-rx", "block": 2, )" + std::string(settings) +
           R"(}, "tests": [{}])";
}

}  // namespace

TEST_CASE("the XMODEM receiver leads a transfer through noise to its end") {
    CHECK(
        Talk(Receiver(R"("timeout": 60, "reply_within": 20, "plan": ["nak", "drop", "lost_ack"])"),
             {{3, "04"},
              {8, "01"},  // the NAK is only just there
              {10, kBlock1},
              {40, kBlock1},
              {110, kBlock1},
              {180, kBlock1},
              {188, "55 15"},
              {190, kBlock2},
              {200, "04"},
              {210, "04"},
              {213, "04 01"}},
             400) == R"(send 15 at 8
note 8: Receiver ready: NAK
from 0 not before 8: the answer to the receiver's NAK
from 8 not after 28: the answer to the receiver's NAK
send 15 at 17
from 15 not before 17: block 1 again
from 17 not after 37: block 1 again
note 17: Line noise damaged block 1 on the way in
note 45: Block 1 was lost on the line
send 15 at 105
from 45 not before 105: block 1 again
from 105 not after 125: block 1 again
note 105: Nothing heard for 60 ticks: NAK
note 117: The ACK for block 1 was lost on the line
send 15 at 175
from 115 not before 175: block 1 again
from 175 not after 195: block 1 again
note 175: Nothing heard for 60 ticks: NAK
send 06 at 187
note 187: Answered block 1 with ACK; it had that one
from 185 not before 187: the next block or EOT
from 187 not after 207: the next block or EOT
send 06 at 197
note 197: Answered block 2 with ACK
from 195 not before 197: the next block or EOT
from 197 not after 217: the next block or EOT
send 15 at 202
note 202: EOT answered with NAK, as XMODEM receivers do once
from 200 not before 202: the second EOT
from 202 not after 222: the second EOT
send 06 at 212
note 212: EOT acknowledged; transfer complete
done at 212
)");
}

TEST_CASE("the XMODEM receiver checks number, complement and sum") {
    constexpr std::string_view kReady = R"(send 43 15 at 4
note 5: Receiver ready: NAK
from 0 not before 5: the answer to the receiver's NAK
)";
    constexpr std::string_view kRefused = R"(send 15 at 16
from 15 not before 16: block 1 again
note 16: Answered block 1 with NAK
)";
    constexpr std::string_view kOutOfStep = R"(send 18 at 16
note 16: Block 3 is out of step; the receiver cancels the transfer
done at 16
)";
    const struct {
        std::string_view sent, plan, record;
    } cases[] = {
        {"01 01 FF 48 49 91", "", kRefused},
        {"01 01 FE 48 49 92", "lost_ack", kRefused},
        {"01 03 FC 01 04 05", "", kOutOfStep},  // SOH and EOT inside are data
        {"01 03 FC 01 04 05", "lose_reply", kOutOfStep},
        {"01 00 FF 00 00 00", "", R"(send 06 at 16
note 16: Answered block 0 with ACK; it had that one
from 15 not before 16: the next block or EOT
)"},
        {kBlock1, "cancel",
         "send 18 at 16\nnote 16: The receiver cancels the transfer\ndone at 16\n"},
        {"04", "nak", "send 06 at 11\nnote 11: EOT acknowledged; transfer complete\ndone at 11\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.sent);
        CAPTURE(c.plan);
        CHECK(Talk(Receiver(R"("start": 4, "ready": "43 15", "delay": 1, "eot_nak": false,
                               "plan": [")" +
                            std::string(c.plan) + "\"]"),
                   {{10, c.sent}, {40, "06"}}, 60) == std::string(kReady) + std::string(c.record));
    }
}

TEST_CASE("inside a block the card has a limit from byte to byte") {
    CHECK(Talk(Receiver(R"("byte_within": 9)"), {{10, "01 05 FA"}, {30, "41 42 83"}}, 60) ==
          R"(send 15 at 8
note 8: Receiver ready: NAK
from 0 not before 8: the answer to the receiver's NAK
from 10 not after 19: the next byte of block 1
from 11 not after 20: the next byte of block 5
from 12 not after 21: the next byte of block 5
from 30 not after 39: the next byte of block 5
from 31 not after 40: the next byte of block 5
send 18 at 34
note 34: Block 5 is out of step; the receiver cancels the transfer
done at 34
)");
}
