#include <doctest/doctest.h>

#include "conversation.h"

using support::Talk;

TEST_CASE("the flow peer stops the card when its buffer is full") {
    CHECK(Talk(R"("peer": {"type": "flow", "burst": 4, "delay": 2, "pause": 30}, "tests": [{}])",
               {{47, "41 42 43 44"}, {90, "45 46 47"}}, 150) == R"(done at 0
send 13 at 52
send 11 at 82
note 52: XOFF: the printer's buffer is full
note 82: XON: the printer is ready
from 52 not before 82: the first byte after XOFF
busy at 50
done at 82
)");
}

TEST_CASE("a card that is faster than the flow peer's XOFF is stopped again behind the XON") {
    CHECK(Talk(R"("peer": {"type": "flow", "burst": 0, "pause": 1, "xoff": "13 7F", "xon": "11"},
                  "tests": [{}])",
               {{5, "41 42"}}, 40) == R"(done at 0
send 13 7F at 6
send 11 at 9
note 7: XOFF: the printer's buffer is full
note 9: XON: the printer is ready
from 7 not before 9: the first byte after XOFF
busy at 5
send 13 7F at 10
send 11 at 13
note 11: XOFF: the printer's buffer is full
note 13: XON: the printer is ready
from 11 not before 13: the first byte after XOFF
done at 13
)");
}
