#include <doctest/doctest.h>

#include "support/lines.h"
#include "support/text.h"
#include "ticket/ticket.h"

using json::Remarks;

namespace {

std::string RemarksOn(const std::string& ticket) {
    Remarks remarks;
    const auto parsed = kp::ParseTicket(support::Json(ticket), &remarks);
    INFO(parsed.Message());
    REQUIRE(parsed);
    return support::Lines(remarks);
}

}  // namespace

TEST_CASE("a ticket that uses every key within its limits has no remarks") {
    CHECK(RemarksOn(R"({"id": "x", "title": "", "client": "", "brief": "", "shift": 1, "order": 1,
        "difficulty": 5, "optional": true, "ticket": [""], "hints": "", "binder": [], "note": "",
        "starter": "", "settle": 1, "max_ticks": 200000,
        "machine": {"rom": 256, "ram": 0, "registers": 4, "crc": true, "timer": true, "host": true,
            "clock": true, "rx_buffer": 1, "tx_gap": 64, "stack": 32},
        "frame": {"sync": "C1", "length": true, "fixed_length": 0, "flags": true, "check": "sum8",
            "check_scope": "payload", "annotate": false},
        "peer": {"type": "responder", "gap": 2},
        "tests": [{"name": "", "count": 2, "peer": {"gap": 3},
            "host": ["A", [0, 255], {"bytes": "A", "at": 0}],
            "rx": [{"text": "AB", "at": 0, "gap": 1, "label": "", "reply_within": 0,
                "corrupt": [0, 1], "truncate": 1}],
            "frames": [{"frame": {"concat": [{"hex": "41"}, {"repeat": "B", "times": 0}]},
                "flags": 255}],
            "replies": [{"after": {"random": {"len": [0, 0], "min": 0, "max": 255, "avoid": "00",
                "from": "AB"}}, "send": {"random": {"len": 3}}, "delay": 0, "label": ""}]}]})")
              .empty());
}

TEST_CASE("what a ticket's keys do not take as it stands is remarked") {
    const struct {
        const char* keys;
        Remarks remarks;
    } cases[] = {
        {R"("settel": 5)", {"unknown key \"settel\""}},
        {R"("settle": 0)", {"settle is 0; it takes 1 or more"}},
        {R"("max_ticks": 50)", {"max_ticks is 50; it takes 100 to 200000"}},
        {R"("difficulty": 6)", {"difficulty is 6; it takes 1 to 5"}},
        {R"("peer": "none")", {"peer is \"none\"; it takes an object"}},
        {R"("machine": {"rom": 0, "tmr": true})",
         {"machine: rom is 0; it takes 1 to 256", "machine: unknown key \"tmr\""}},
        {R"("machine": {"registers": 5})", {"machine: registers is 5; it takes 1 to 4"}},
        {R"("machine": {"registers": ["a"]})",
         {"machine: registers is [\"a\"]; it takes letters a to d, or how many"}},
        {R"("frame": {"check_scope": "all", "crc": 1})",
         {"frame: check_scope is \"all\"; it takes frame or payload",
          "frame: unknown key \"crc\""}},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.keys));
        CHECK(RemarksOn(R"({"id": "x", "tests": [{}], )" + std::string(c.keys) + "}") ==
              support::Lines(c.remarks));
    }
}

TEST_CASE("what a test does not take as it stands is remarked once, with its place") {
    const struct {
        const char* keys;
        Remarks remarks;
    } cases[] = {
        {R"("count": 3, "seed": 1)", {"test 2: unknown key \"seed\""}},
        {R"("count": 0)", {"test 2: count is 0; it takes 1 or more"}},
        {R"("rx": "AB")", {"test 2: rx is \"AB\"; it takes a list"}},
        {R"("peer": [])", {"test 2: peer is []; it takes an object"}},
        {R"("host": ["A", {"text": "B", "at": -1, "gap": 2}])",
         {"test 2, host 2: at is -1; it takes 0 or more", "test 2, host 2: unknown key \"gap\""}},
        {R"("rx": [{"text": "A", "gap": 0, "reply_within": -1}])",
         {"test 2, rx 1: gap is 0; it takes 1 or more",
          "test 2, rx 1: reply_within is -1; it takes 0 or more"}},
        {R"("replies": [{"send": {"text": "A", "at": 1}, "dely": 1}])",
         {"test 2, replies 1, send: unknown key \"at\"",
          "test 2, replies 1: unknown key \"dely\""}},
        {R"("frames": [[65, 256]])", {"test 2, frames 1: 256 is no byte"}},
        {R"("frames": [{"text": "A", "hex": "42"}])", {"test 2, frames 1: unknown key \"hex\""}},
        {R"("frames": [{"frame": "A", "flags": 256}])",
         {"test 2, frames 1: flags is 256; it takes 0 to 255"}},
        {R"("frames": [{"text": "AB", "corrupt": [2]}])",
         {"test 2, frames 1: corrupt is [2]; it takes positions inside the bytes"}},
        {R"("frames": [{"text": "AB", "truncate": 2}])",
         {"test 2, frames 1: truncate is 2; it takes fewer bytes than there are"}},
        {R"("frames": [{"concat": ["A", {"repeat": {"random": {"min": -1, "max": 256}}}]}])",
         {"test 2, frames 1, concat 2, repeat, random: min is -1; it takes 0 to 255",
          "test 2, frames 1, concat 2, repeat, random: max is 256; it takes 0 to 255"}},
        {R"("frames": [{"random": {"min": 200}}])",
         {"test 2, frames 1, random: max is missing; it takes 200 to 255"}},
        {R"("frames": [{"random": {"len": [5, 2]}}])",
         {"test 2, frames 1, random: len is [5,2]; it takes a number, or the least and the most"}},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.keys));
        CHECK(RemarksOn(R"({"id": "x", "frame": {}, "tests": [{}, {)" + std::string(c.keys) +
                        "}, {}]}") == support::Lines(c.remarks));
    }
}
