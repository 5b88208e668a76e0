#include <doctest/doctest.h>

#include "support/text.h"
#include "ticket/ticket.h"

using kp::Bytes;
using support::Json;
using support::ToBytes;

namespace {

// A ticket with one test whose first host message is the recipe.
base::Result<kp::Ticket> TicketOf(const std::string& recipe, const std::string& frame = "null") {
    return kp::ParseTicket(Json(R"({"id": "t-01", "frame": )" + frame +
                                R"(, "tests": [{"host": [)" + recipe + "]}]}"));
}

Bytes Built(const std::string& recipe, const std::string& frame = "null") {
    CAPTURE(recipe);
    const auto ticket = TicketOf(recipe, frame);
    INFO(ticket.Message());
    REQUIRE(ticket);
    return ticket->tests[0].host[0].bytes;
}

}  // namespace

TEST_CASE("a recipe builds its bytes") {
    const struct {
        std::string recipe;
        Bytes bytes;
    } cases[] = {
        {R"("A\u0000B")", {0x41, 0x00, 0x42}},
        {"[1, 256, -1]", {1, 0, 255}},
        {R"({"text": "AB", "hex": "00"})", {0x41, 0x42}},
        {R"({"hex": "C1 67"})", {0xC1, 0x67}},
        {R"({"bytes": {"text": "A"}, "at": 4})", {0x41}},
        {R"({"concat": ["A", {"hex": "01"}, [2]]})", {0x41, 1, 2}},
        {R"({"repeat": "AB", "times": 2})", {0x41, 0x42, 0x41, 0x42}},
        {R"({"repeat": "AB", "times": 0})", {}},
        {R"({"hex": "00 00", "corrupt": [1, 7, -1, "x"]})", {0x00, 0x10}},
        {R"({"hex": "00 00", "corrupt": [0, 0]})", {0x00, 0x00}},
        {R"({"text": "ABC", "truncate": 3})", {0x41, 0x42, 0x43}},
        {R"({"text": "ABC", "truncate": 1})", {0x41}},
        {R"({"text": "ABC", "truncate": 0})", {}},
        {R"({"text": "ABC", "corrupt": [2], "truncate": 2})", {0x41, 0x42}},
        {R"({"random": {"len": 3, "from": "x"}})", {0x78, 0x78, 0x78}},
        {R"({"random": {"len": 0}})", {}},
        {R"({"random": {"len": 6}})", {58, 45, 109, 55, 76, 107}},
        // No byte is allowed here, so the last of the draws is kept.
        {R"({"random": {"len": 1, "min": 65, "max": 65, "avoid": "41"}})", {0x41}},
    };
    for (const auto& c : cases) CHECK(Built(c.recipe) == c.bytes);
}

TEST_CASE("a frame's payload is a recipe of its own") {
    const std::string house = R"({"sync": "C1 67", "flags": true, "check": "crc16"})";
    CHECK(Built(R"({"frame": {"concat": ["HI", "!"]}, "flags": 1})", house) ==
          Bytes{0xC1, 0x67, 0x03, 0x01, 0x48, 0x49, 0x21, 0x07, 0x9E});
}

TEST_CASE("random lengths and bytes stay in their ranges") {
    for (int k = 0; k < 200; ++k) {
        const auto ticket = kp::ParseTicket(
            Json(R"({"id": "range-)" + std::to_string(k) + R"(", "tests": [{"host": [{"random":
                 {"len": [2, 5], "min": 10, "max": 12, "avoid": "0B"}}]}]})"));
        REQUIRE(ticket);
        const Bytes& bytes = ticket->tests[0].host[0].bytes;
        CHECK(bytes.size() >= 2);
        CHECK(bytes.size() <= 5);
        for (const auto byte : bytes) CHECK((byte == 10 || byte == 12));
    }
}

TEST_CASE("a recipe that cannot be built says why") {
    const struct {
        std::string recipe, message;
    } cases[] = {
        {"7", "test 1: expected bytes as text, a number array, or an object"},
        {R"({"at": 3})", "test 1: bytes need text, hex, random, frame, concat, or repeat"},
        {R"([1, "2"])", "test 1: a byte array may hold only numbers"},
        {R"({"hex": "C1 6"})", "test 1: malformed hex \"C1 6\""},
        {R"({"random": {"avoid": "0"}})", "test 1: malformed avoid list"},
        {R"({"frame": "A"})", "test 1: a test encodes a frame, but the ticket has no frame format"},
        {R"({"concat": ["A", {"hex": "z"}]})", "test 1: malformed hex \"z\""},
        {R"({"random": {"len": 2000000000}})", "test 1: a recipe makes more than 65536 bytes"},
        {R"({"repeat": "AAAA", "times": 2000000000})",
         "test 1: a recipe makes more than 65536 bytes"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.recipe);
        CHECK(TicketOf(c.recipe).Message() == c.message);
    }
}
