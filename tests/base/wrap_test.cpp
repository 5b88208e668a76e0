#include "base/wrap.h"

#include <doctest/doctest.h>

using Lines = std::vector<std::string>;

TEST_CASE("an even wrap keeps the line count and evens the breaks") {
    CHECK(base::WrapEven("Clears closed tickets, scores, and achievements on this computer. "
                         "Firmware files are kept.",
                         42) == Lines{"Clears closed tickets, scores, and",
                                      "achievements on this computer.",
                                      "Firmware files are kept."});
}

TEST_CASE("a word longer than the width is broken at the width") {
    CHECK(base::WrapPlain("an abcdefghij end", 4) == Lines{"an", "abcd", "efgh", "ij", "end"});
    CHECK(base::WrapPlain("", 4) == Lines{""});
}
