#include <doctest/doctest.h>

#include "conversation.h"

using support::Talk;

TEST_CASE("the responder answers each request once, in order") {
    CHECK(Talk(R"("peer": {"type": "responder", "gap": 3, "reply_within": 40},
                  "tests": [{"replies": [
                      {"after": {"hex": "05 01"}, "send": "AB", "label": "from the pump"},
                      {"after": {"hex": "05"}, "delay": 5},
                      {"after": "Q", "send": {"repeat": "0", "times": 13}, "delay": 0}]}])",
               {{10, "01 05 05 01"}, {30, "7F 05"}, {60, "05 51 51"}}, 120) ==
          R"(send 41 42 at 15, gap 3
note 18: Reply from the pump
from 18 not after 58: the next request
note 36: Reply 
from 36 not after 76: the next request
send 30 30 30 30 30 30 30 30 30 30 30 30 30 at 61, gap 3
note 97: Reply 30 30 30 30 30 30 30 30 30 30 30 30 ...
done at 97
)");
}

TEST_CASE("a responder's last reply without bytes is given when it would have come") {
    CHECK(Talk(R"("peer": {"type": "responder"},
                  "tests": [{"replies": [{"after": "A", "delay": 20}]}])",
               {{10, "41"}}, 60) == "note 30: Reply \ndone at 30\n");
}
