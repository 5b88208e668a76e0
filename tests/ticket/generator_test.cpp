#include "ticket/generator.h"

#include <doctest/doctest.h>

#include <limits>

TEST_CASE("a test's seed hashes the ticket id and the position") {
    CHECK(kp::TestSeed("1-01-carrier-check", 0) == 0x7f6bf9dab2ce7c81);
    CHECK(kp::TestSeed("1-02-loopback", 12) == 0x80c1994db8dbefc3);
}

TEST_CASE("the generator is SplitMix64 and rests on an empty range") {
    kp::Generator generator(1234567);
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    CHECK(generator.Draw(0, kMost) == 6457827717110365317);
    CHECK(generator.Draw(5, 5) == 5);
    CHECK(generator.Draw(9, 2) == 9);
    CHECK(generator.Draw(0, kMost) == 3203168211198807973);
    CHECK(generator.Draw(-3, -1) == -3 + 9817491932198370423u % 3);
}
