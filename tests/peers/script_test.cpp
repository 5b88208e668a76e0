#include <doctest/doctest.h>

#include "conversation.h"

using support::Talk;

TEST_CASE("the script sends its entries whatever the card says") {
    CHECK(Talk(R"("tests": [{"rx": [
                      {"hex": "41 42", "at": 40, "gap": 60, "label": "order", "reply_within": 40},
                      {"hex": "43", "at": 100, "reply_within": 5}]}])",
               {{50, "06 06"}}, 200) == R"(send 41 42 at 40, gap 60
note 40: order
send 43 at 160
from 100 not after 140: the reply to order
from 160 not after 165: the reply to 
done at 160
)");
}

TEST_CASE("nothing comes from a line that nothing is connected to") {
    CHECK(Talk(R"("peer": {"type": "none"}, "tests": [{}])", {{3, "41 42"}}, 20) == "done at 0\n");
}
