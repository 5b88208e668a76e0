// Runs tickets.txt, and looks at what a ticket that was read holds.

#include "ticket/ticket.h"

#include <doctest/doctest.h>

#include "support/cases.h"
#include "support/lines.h"
#include "support/text.h"
#include "ticket/hex.h"

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
    const auto type = [](const std::string& rest) {
        return Parsed(R"({"id": "x", )" + rest + "}").peer_type;
    };
    CHECK(type(R"("tests": [{}])") == kp::PeerType::None);
    CHECK(type(R"("tests": [{"rx": []}])") == kp::PeerType::Script);
    CHECK(type(R"("tests": [{}, {"rx": []}])") == kp::PeerType::None);
    CHECK(type(R"("peer": {}, "tests": [{}])") == kp::PeerType::Script);
    CHECK(type(R"("peer": {"type": "xmodem-tx"}, "tests": [{}])") == kp::PeerType::XmodemTx);
}

TEST_CASE("random lengths and bytes stay in their ranges") {
    for (int k = 0; k < 200; ++k) {
        const kp::Ticket ticket =
            Parsed(R"({"id": "range-)" + std::to_string(k) + R"(", "tests": [{"host": [{"random":
                 {"len": [2, 5], "min": 10, "max": 12, "avoid": "0B"}}]}]})");
        const kp::Bytes& bytes = ticket.tests[0].host[0].bytes;
        CHECK(bytes.size() >= 2);
        CHECK(bytes.size() <= 5);
        for (const auto byte : bytes) CHECK((byte == 10 || byte == 12));
    }
}

TEST_CASE("tickets are read as tickets.txt says") {
    for (const support::Case& steps : support::Cases("ticket/tickets.txt")) {
        std::string frame = "null";
        std::string text;
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            const std::string& value = step.value;
            if (step.key == "frame") {
                frame = value;
            } else if (step.key == "recipe") {
                text = R"({"id": "t-01", "frame": )" + frame + R"(, "tests": [{"host": [)" + value +
                       "]}]}";
            } else if (step.key == "ticket") {
                text = step.All();
            } else if (step.key == "keys") {
                text = R"({"id": "x", "tests": [{}], )" + value + "}";
            } else if (step.key == "test") {
                text = R"({"id": "x", "frame": {}, "tests": [{}, {)" + value + "}, {}]}";
            } else if (step.key == "builds") {
                CHECK(Parsed(text).tests[0].host[0].bytes == *kp::ReadHex(value));
            } else if (step.key == "problem") {
                CHECK(kp::ParseTicket(Json(text)).Message() == value);
            } else {
                REQUIRE(step.key == "remarks");
                json::Remarks remarks;
                CHECK(kp::ParseTicket(Json(text), &remarks).Message() == "");
                CHECK(support::Lines(remarks) == step.text);
            }
        }
    }
}
