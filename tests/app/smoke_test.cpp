#include "smoke.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "support/fake_system.h"

using namespace Kest;

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

struct Outcome {
    int code = 0;
    std::vector<std::string> lines;

    bool Says(std::string_view line) const { return std::ranges::count(lines, line) == 1; }
    bool Begins(std::string_view start) const {
        return std::ranges::any_of(
            lines, [&](const std::string& line) { return line.starts_with(start); });
    }
};

Outcome Smoke(const kp::Content& content, fake::System& system) {
    Outcome outcome;
    outcome.code =
        RunSmoke(content, system, [&](std::string_view line) { outcome.lines.emplace_back(line); });
    return outcome;
}

}  // namespace

TEST_CASE("the smoke run names what is wrong with the content, and fails") {
    using kp::Content;
    const struct {
        void (*spoil)(Content& content);
        std::vector<const char*> lines;
    } cases[] = {
        {[](Content& content) {
             content.left_out.push_back({"8-01-later", "reference line 3: unknown instruction"});
             content.problems.push_back("8-01-later: reference line 3: unknown instruction");
         },
         {"8-01-later reference: FAILED, reference line 3: unknown instruction"}},
        {[](Content& content) { content.problems.push_back("missions/binder.json is missing"); },
         {"content: missions/binder.json is missing"}},
        {[](Content& content) {
             content.shifts[0].tickets[0].reference_text = "       tx $55\n       halt\n";
         },
         {"1-01-carrier-check reference: FAILED, "}},
        {[](Content& content) { content.shifts[0].tickets[1].reference.outputs.front() = {}; },
         {"1-02-loopback reference: FAILED, ", "1-02-loopback failure messages: FAILED, "}},
        {[](Content& content) { content.shifts[0].tickets[0].ticket.binder = {"nowhere"}; },
         {"1-01-carrier-check names a missing binder page nowhere"}},
        {[](Content& content) { content.pages.pop_back(); },
         {"57 binder pages, expected 58", "binder: the page vi-keys is missing"}},
        {[](Content& content) { content.coach.front().lines = {"; F7 runs it."}; },
         {"coach on 1-01-carrier-check: line names F7"}},
        {[](Content& content) { content.shifts.clear(); },
         {"0 tickets embedded, expected 42",
          "unlock stages at Large text on the narrow bench: FAILED",
          "step 10: expected results, found bench"}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.lines.front());
        fake::System system;
        Content content = BuiltIn();
        c.spoil(content);
        const Outcome outcome = Smoke(content, system);
        CHECK(outcome.code == 1);
        for (const char* line : c.lines) CHECK(outcome.Begins(line));
    }
}

TEST_CASE("the smoke run tells of a missing face") {
    fake::System system;
    system.nine_wide_face = false;
    const Outcome outcome = Smoke(BuiltIn(), system);
    CHECK(outcome.code == 1);
    CHECK(outcome.Says("font Unscii 18: FAILED"));
}

TEST_CASE("a smoke run that takes too long says so and fails") {
    fake::System system;
    system.clock.step = 1;
    const Outcome outcome = Smoke(BuiltIn(), system);
    CHECK(outcome.code == 1);
    CHECK(outcome.lines.back() == "timed out");
}
