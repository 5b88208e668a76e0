// What the binder and the coach say of the bench's keys must be what its tables hold.

#include <doctest/doctest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "base/format.h"
#include "bench/bench_commands.h"
#include "bench/bench_run.h"
#include "bench/coach_keys.h"
#include "support/lines.h"

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

// The rows under a caption of a page, without their two blanks.
std::vector<std::string> RowsUnder(const char* page_id, std::string_view caption) {
    const kp::BinderPage* page = BuiltIn().FindPage(page_id);
    REQUIRE(page != nullptr);
    auto item = std::ranges::find(page->body, caption);
    REQUIRE(item != page->body.end());
    std::vector<std::string> rows;
    while (++item != page->body.end() && kp::IsKept(*item)) rows.push_back(item->substr(2));
    return rows;
}

std::string Joined(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += name + '\n';
    return text;
}

}  // namespace

TEST_CASE("the binder lists the bench's keys, all of them and no others") {
    constexpr std::size_t kEffectAt = 21;
    std::set<std::string> listed, known;
    for (const std::string& row : RowsUnder("the-lab", "Keys:")) {
        std::istringstream names(row.substr(0, kEffectAt));
        for (std::string name; names >> name;) listed.insert(name);
    }
    for (const Kest::BenchKey& key : Kest::BenchKeys()) known.insert(zo::ui::KeyName(key.key));
    CHECK(Joined(listed) == Joined(known));
}

TEST_CASE("the binder gives the speeds of a run") {
    std::string speeds;
    for (const Kest::RunSpeed& speed : Kest::kRunSpeeds) {
        speeds += (speeds.empty() ? "" : ", ") + std::string(speed.name) +
                  base::Format(" %d", speed.ticks_per_second);
    }
    CHECK(support::Lines(RowsUnder("the-lab", "Speeds, in ticks a second:")) == speeds + "\n");
}

TEST_CASE("the coach names no key that the bench would not take") {
    CHECK(support::Lines(Kest::LintCoachKeys(BuiltIn())) == "");
    REQUIRE(BuiltIn().coach.size() == 7);
    for (const kp::CoachStep& step : kp::kCoachSteps) {
        CAPTURE(std::string(step.name));
        CHECK_FALSE(BuiltIn().CoachOn("1-01-carrier-check")->Step(step.name).empty());
    }
}

TEST_CASE("a key that is not open yet, or none at all, is found in the coach's texts") {
    kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    kp::CoachEntry first;
    first.ticket = "1-01-carrier-check";
    first.lines = {"; F5 runs, F8 verifies, F6 steps."};
    first.steps = {{"first", "Ctrl+S saves, F1 explains."},
                   {"test2", "Ctrl+PgDn, then F6, then F7."},
                   {"ready", "F8. F55 is far away, Ctrl+Q too; F is a letter."}};
    kp::CoachEntry third;
    third.ticket = "1-03-uplink";
    third.lines = {"; F6 steps, F7 does not stop."};
    kp::CoachEntry fifth;
    fifth.ticket = "1-05-fixed-width";
    fifth.lines = {"; F7 is open here."};
    content.coach = {first, third, fifth};
    CHECK(support::Lines(Kest::LintCoachKeys(content)) ==
          "coach on 1-01-carrier-check: line names F6, which opens at stage 1, at stage 0\n"
          "coach on 1-01-carrier-check: first names F1, which opens at stage 1, at stage 0\n"
          "coach on 1-01-carrier-check: test2 names F7, which opens at stage 2, at stage 1\n"
          "coach on 1-01-carrier-check: ready names F55, which is no key\n"
          "coach on 1-01-carrier-check: ready names Ctrl+Q, which is no key\n"
          "coach on 1-03-uplink: line names F7, which opens at stage 2, at stage 1\n");
}
