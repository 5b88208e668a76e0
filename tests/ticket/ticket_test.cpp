#include "ticket/ticket.h"

#include <doctest/doctest.h>

#include "support/text.h"

using support::Json;

namespace {

kp::Ticket Parsed(std::string_view text) {
    auto ticket = kp::ParseTicket(Json(text));
    INFO(ticket.Message());
    REQUIRE(ticket);
    return *ticket;
}

}  // namespace

TEST_CASE("a ticket's keys have their defaults and limits") {
    const kp::Ticket bare = Parsed(R"({"id": "x", "tests": [{}]})");
    CHECK(bare.title == "x");
    CHECK(bare.settle == 30);
    CHECK(bare.max_ticks == 6000);
    CHECK(bare.difficulty == 1);
    CHECK(bare.machine == kp::CardConfig{});
    CHECK(bare.tests[0].name == "Test");
    const kp::Ticket wild = Parsed(R"({"id": "x", "difficulty": 9, "settle": 0, "max_ticks": 50,
        "ticket": "one", "hints": ["a", 3], "machine": 7, "tests": [{}]})");
    CHECK(wild.difficulty == 5);
    CHECK(wild.settle == 1);
    CHECK(wild.max_ticks == 100);
    CHECK(wild.text == std::vector<std::string>{"one"});
    CHECK(wild.hints == std::vector<std::string>{"a", ""});
    CHECK(Parsed(R"({"id": "x", "max_ticks": 1e9, "tests": [{}]})").max_ticks == 200000);
}

TEST_CASE("tests are expanded by count, each with a seed of its own") {
    const kp::Ticket ticket = Parsed(R"({"id": "1-02-loopback", "tests": [
        {"name": "Once"}, {"name": "Random", "count": 2, "rx": [{"random": {"len": 8}}]}]})");
    REQUIRE(ticket.tests.size() == 3);
    CHECK(ticket.tests[0].name == "Once");
    CHECK(ticket.tests[1].name == "Random 1");
    CHECK(ticket.tests[2].name == "Random 2");
    CHECK(ticket.tests[1].rx[0].bytes != ticket.tests[2].rx[0].bytes);
}

TEST_CASE("host messages take the tick of the one before") {
    const kp::Ticket ticket = Parsed(R"({"id": "x", "tests": [{"host":
        [{"text": "A", "at": 0}, "B", {"text": "C", "at": 40}, "D"]}]})");
    std::vector<kp::Tick> ticks;
    for (const auto& message : ticket.tests[0].host) ticks.push_back(message.at);
    CHECK(ticks == std::vector<kp::Tick>{0, 0, 40, 40});
}

TEST_CASE("the far end's type follows from the peer block or the first test") {
    const struct {
        std::string_view rest;
        kp::PeerType type;
    } cases[] = {
        {R"("tests": [{}])", kp::PeerType::None},
        {R"("tests": [{"rx": []}])", kp::PeerType::Script},
        {R"("tests": [{}, {"rx": []}])", kp::PeerType::None},
        {R"("peer": {}, "tests": [{}])", kp::PeerType::Script},
        {R"("peer": {"type": "xmodem-tx"}, "tests": [{}])", kp::PeerType::XmodemTx},
    };
    for (const auto& c : cases) {
        CAPTURE(c.rest);
        CHECK(Parsed(R"({"id": "x", )" + std::string(c.rest) + "}").peer_type == c.type);
    }
}

TEST_CASE("a ticket with a problem says the first one") {
    const struct {
        std::string_view text, message;
    } cases[] = {
        {"[]", "a mission is a JSON object"},
        {R"({"tests": [{}]})", "missing id"},
        {R"({"id": ""})", "missing id"},
        {R"({"id": "x", "machine": {"registers": "abx"}, "frame": {"sync": "1"}})",
         "registers lists letters a to d"},
        {R"({"id": "x", "frame": {"sync": "1"}, "peer": {"type": "fax"}})", "malformed frame sync"},
        {R"({"id": "x", "peer": {"type": "fax"}})", "unknown peer type \"fax\""},
        {R"({"id": "x"})", "the ticket has no tests"},
        {R"({"id": "x", "tests": [{"count": 2}, {"host": [{"hex": "q"}]}]})",
         "test 3: malformed hex \"q\""},
        {R"({"id": "x", "tests": [{"count": 1000000}]})", "more than 10000 tests"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        CHECK(kp::ParseTicket(Json(c.text)).Message() == c.message);
    }
}
