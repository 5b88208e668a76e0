#include <doctest/doctest.h>

#include "peers/factory.h"
#include "support/lines.h"
#include "support/text.h"

using json::Remarks;

namespace {

// The remarks on the far end of the second test, whose frames are two.
std::string RemarksOn(const std::string& ticket_peer, const std::string& test_peer) {
    const auto ticket = kp::ParseTicket(
        support::Json(R"({"id": "x", "peer": )" + ticket_peer +
                      R"(, "tests": [{}, {"frames": ["A", "B"], "peer": )" + test_peer + "}]}"));
    REQUIRE(ticket);
    Remarks remarks;
    const auto peer = kp::CreatePeer(*ticket, 1, &remarks);
    INFO(peer.Message());
    REQUIRE(peer);
    return support::Lines(remarks);
}

}  // namespace

TEST_CASE("every far end knows its own keys, at their least and their most") {
    const char* const peers[] = {
        R"({"type": "none"})",
        R"({"type": "script"})",
        R"({"type": "flow", "burst": 1, "delay": 1, "pause": 2, "xoff": "13", "xon": "11"})",
        R"({"type": "responder", "gap": 1, "reply_within": 0})",
        R"({"type": "acker", "ack": "06", "nak": "15", "busy": "18", "delay": 1, "plan": ["ack"],
            "ack_seq": true, "retry_after": [19, 29], "nak_retry_within": 0, "frames": 0,
            "backoff": [0, 16], "backoff_slack": 0, "answers": {"05": "06"}, "final": "04"})",
        R"({"type": "sender", "frames": 2, "start": 0, "gap": 1, "pause": 1, "timeout": 0,
            "reply_within": 0, "answer_after_frame": true, "ack": "06", "nak": "15",
            "plan": ["nak?"]})",
        R"({"type": "xmodem-rx", "block": 128, "start": 0, "ready": "15", "delay": 1, "timeout": 1,
            "reply_within": 0, "byte_within": 0, "eot_nak": false, "plan": ["cancel"],
            "ack": "06", "nak": "15", "can": "18"})",
        R"({"type": "xmodem-tx", "block": 1, "deaf": 0, "delay": 1, "gap": 1, "reply_within": 0,
            "retry_after": [0, 0], "plan": ["cut:1"]})",
    };
    for (const std::string peer : peers) {
        CAPTURE(peer);
        CHECK(RemarksOn(peer, "{}").empty());
        const std::string more = peer.substr(0, peer.size() - 1) + R"(, "odd": 1})";
        CHECK(RemarksOn(more, R"({"odd": 2})") ==
              "peer: unknown key \"odd\"\ntest 2, peer: unknown key \"odd\"\n");
    }
}

TEST_CASE("a setting that is not taken as it stands is remarked where it stands") {
    const struct {
        const char *ticket, *test;
        Remarks remarks;
    } cases[] = {
        {R"({"type": "flow", "pause": 1})", "{}", {"peer: pause is 1; it takes 2 to 1000000"}},
        // The ticket's own value is not looked at where the test has another.
        {R"({"type": "flow", "pause": 1})", R"({"pause": 2})", {}},
        {R"({"type": "flow"})",
         R"({"delay": 0, "xoff": 13})",
         {"test 2, peer: delay is 0; it takes 1 to 1000000",
          "test 2, peer: xoff is 13; it takes a text"}},
        {R"({"type": "acker", "ack_seq": 1})",
         R"({"type": "acker"})",
         {"peer: ack_seq is 1; it takes true or false", "test 2, peer: unknown key \"type\""}},
        {R"({"type": "acker", "backoff": [-1]})",
         R"({"retry_after": [30, 20]})",
         {"test 2, peer: retry_after is [30,20]; it takes the least ticks and the most",
          "peer: backoff is [-1]; it takes ticks from 0 on"}},
        {R"({"type": "sender"})",
         R"({"frames": 3})",
         {"test 2, peer: frames is 3; it takes 0 to 2"}},
        {R"({"type": "xmodem-tx", "block": 129})", "{}", {"peer: block is 129; it takes 1 to 128"}},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.ticket));
        CAPTURE(std::string(c.test));
        CHECK(RemarksOn(c.ticket, c.test) == support::Lines(c.remarks));
    }
}
