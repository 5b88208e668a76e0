#include <doctest/doctest.h>

#include "conversation.h"

using support::Problem;
using support::Talk;

TEST_CASE("a test's setting stands before the ticket's, and each key alone") {
    const auto first_line = [](std::string_view ticket_peer, std::string_view test_peer) {
        const std::string record =
            Talk("\"peer\": {\"type\": \"flow\"" + std::string(ticket_peer) +
                     "}, \"tests\": [{\"peer\": " + std::string(test_peer) + "}]",
                 {{10, "41 42 43"}}, 12);
        const std::size_t send = record.find("send");
        return record.substr(send, record.find("note") - send);
    };
    const struct {
        std::string_view ticket, test, sends;
    } cases[] = {
        {R"(, "burst": 2, "delay": 5, "pause": 8)", "null", "send 13 at 16\nsend 11 at 24\n"},
        {R"(, "burst": 2, "delay": 5)", R"({"pause": 4})", "send 13 at 16\nsend 11 at 20\n"},
        {R"(, "burst": 9, "delay": 5)", R"({"burst": 2})", "send 13 at 16\nsend 11 at 36\n"},
        // A key of the wrong type is its default, not the ticket's value.
        {R"(, "burst": 2, "delay": 5)", R"({"delay": "9"})", "send 13 at 12\nsend 11 at 32\n"},
        {R"(, "burst": 2, "xoff": "41")", R"({"xoff": 66})", "send 13 at 12\nsend 11 at 32\n"},
        // Limits.
        {R"(, "burst": -3, "delay": 0, "pause": 0)", "{}", "send 13 at 11\nsend 11 at 13\n"},
        {R"(, "burst": 2, "delay": 1e300)", "{}", "send 13 at 1000011\nsend 11 at 1000031\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.ticket);
        CAPTURE(c.test);
        CHECK(first_line(c.ticket, c.test) == c.sends);
    }
}

TEST_CASE("a setting that cannot be read names its key, its value and its test") {
    const struct {
        std::string_view peer, test, problem;
    } cases[] = {
        {R"("type": "flow", "xoff": "1")", "{}", R"(malformed hex "1" for peer key "xoff")"},
        {R"("type": "flow")", R"({"xon": "1G\n"})",
         R"(test 2: malformed hex "1G\n" for peer key "xon")"},
        {R"("type": "flow", "xon": "1")", R"({"xon": "11"})", ""},
        {R"("type": "acker")", R"({"plan": ["ack", "nack"]})",
         R"(test 2: unknown plan word "nack")"},
        {R"("type": "acker", "plan": ["Ack"])", "{}", R"(unknown plan word "Ack")"},
        {R"("type": "acker", "plan": ["nack"], "ack": "0")", "{}",
         R"(malformed hex "0" for peer key "ack")"},
        {R"("type": "acker")", R"({"plan": "ack"})",
         R"(test 2: malformed value "ack" for peer key "plan": it takes an array of strings)"},
        {R"("type": "acker")", R"({"plan": ["ack", 3]})",
         R"(test 2: malformed value ["ack",3] for peer key "plan": it takes an array of strings)"},
        {R"("type": "acker", "answers": ["05"])", "{}",
         R"(malformed value ["05"] for peer key "answers": it takes an object of hex texts)"},
        {R"("type": "acker", "answers": {"05": 6})", "{}",
         R"(malformed value {"05":6} for peer key "answers": it takes an object of hex texts)"},
        {R"("type": "acker", "answers": {"x": "06"})", "{}",
         R"(malformed hex "x" for peer key "answers")"},
        {R"("type": "acker", "answers": {"05": "0"})", "{}",
         R"(malformed hex "0" for peer key "answers")"},
        {R"("type": "acker", "retry_after": [19])", "{}",
         R"(malformed value [19] for peer key "retry_after": it takes an array of two numbers)"},
        {R"("type": "acker", "backoff": 8)", "{}",
         R"(malformed value 8 for peer key "backoff": it takes an array of numbers)"},
        {R"("type": "sender")",
         R"({"plan": ["garble:5+lose_reply", "nak?", "garble:99999999999"]})", ""},
        {R"("type": "sender")", R"({"plan": ["garble:5+"]})",
         R"(test 2: unknown plan word "garble:5+")"},
        {R"("type": "sender", "plan": ["garble:-1"])", "{}", R"(unknown plan word "garble:-1")"},
        {R"("type": "sender", "plan": ["drop:1"])", "{}", R"(unknown plan word "drop:1")"},
        {R"("type": "sender", "plan": ["busy"])", "{}", R"(unknown plan word "busy")"},
        {R"("type": "xmodem-rx", "plan": ["cancel", "skip"])", "{}", R"(unknown plan word "skip")"},
        {R"("type": "xmodem-tx", "plan": ["skip", "cut:3", "cut:"])", "{}",
         R"(unknown plan word "cut:")"},
        {R"("type": "xmodem-tx", "plan": ["garble+drop"])", "{}",
         R"(unknown plan word "garble+drop")"},
        {R"("type": "xmodem-tx", "retry_after": ["a", "b"])", "{}",
         R"(malformed value ["a","b"] for peer key "retry_after": it takes an array of two numbers)"},
        // A far end reads its own keys only.
        {R"("type": "script", "ack": "0", "plan": 3)", "{}", ""},
    };
    for (const auto& c : cases) {
        const std::string ticket = "\"peer\": {" + std::string(c.peer) +
                                   "}, \"tests\": [{}, {\"peer\": " + std::string(c.test) + "}]";
        CAPTURE(ticket);
        CHECK(Problem(ticket) == c.problem);
    }
}
