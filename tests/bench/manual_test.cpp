// What the binder and the coach say of the bench's keys must be what its tables hold.

#include <doctest/doctest.h>

#include <algorithm>
#include <set>

#include "base/format.h"
#include "bench/bench_commands.h"
#include "bench/bench_run.h"
#include "bench/coach_keys.h"
#include "support/binder_rows.h"
#include "support/keys.h"
#include "support/lines.h"
#include "ui/code_editor.h"

namespace {

const kp::Content& BuiltIn() {
    static const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    return content;
}

std::string Joined(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += name + '\n';
    return text;
}

}  // namespace

TEST_CASE("the binder lists the bench's keys, all of them and no others") {
    const auto names = support::NamesUnder(BuiltIn(), "the-lab", "Keys:", support::kKeyColumns);
    const std::set<std::string> listed(names.begin(), names.end());
    std::set<std::string> known;
    for (const Kest::BenchKey& key : Kest::BenchKeys()) known.insert(zo::ui::KeyName(key.key));
    CHECK(Joined(listed) == Joined(known));
}

namespace {

void Send(zo::ui::CodeEditor& editor, std::string_view script) {
    bool used = false;
    for (const zo::ui::InputEvent& event : fake::Keys(script)) {
        if (const auto* key = std::get_if<zo::ui::KeyPress>(&event)) used = editor.Key(*key);
        const auto* text = std::get_if<zo::ui::TextInput>(&event);
        if (text && !used) editor.Type(text->text);
    }
}

}  // namespace

TEST_CASE("the binder's vi keys are the editor's, and its commands the bench's") {
    constexpr std::size_t kEffectAt = 9;
    // A text, keys that give every key of the page something to do, and what it then leaves: the
    // text with its caret, and the mode.
    constexpr std::string_view kText = "rx a, b\ntx a";
    const struct {
        std::string_view name, keys, left;
    } effects[] = {
        {"i", "iz", "rx za, b/tx a INSERT"},
        {"a", "az", "rx az, b/tx a INSERT"},
        {"o", "oz", "rx a, b/z/tx a INSERT"},
        {"Esc", "i<Esc>x", "rxa, b/tx a NORMAL"},
        {"v", "vld", "rx  b/tx a NORMAL"},
        {"V", "Vd", "tx a NORMAL"},
        {"h", "hx", "rxa, b/tx a NORMAL"},
        {"j", "jx", "rx a, b/tx  NORMAL"},
        {"k", "jkx", "rx , b/tx a NORMAL"},
        {"l", "lx", "rx a b/tx a NORMAL"},
        {"w", "wwx", "rx a, /tx a NORMAL"},
        {"b", "bx", "x a, b/tx a NORMAL"},
        {"e", "ex", "rx a b/tx a NORMAL"},
        {"0", "0x", "x a, b/tx a NORMAL"},
        {"$", "$x", "rx a, /tx a NORMAL"},
        {"gg", "jggx", "x a, b/tx a NORMAL"},
        {"G", "Gx", "rx a, b/x a NORMAL"},
        {"x", "x", "rx , b/tx a NORMAL"},
        {"dd", "dd", "tx a NORMAL"},
        {"yy", "yyjp", "rx a, b/tx a/rx a, b NORMAL"},
        {"p", "yyp", "rx a, b/rx a, b/tx a NORMAL"},
        {"u", "xu", "rx a, b/tx a NORMAL"},
        {"Ctrl+Y", "xu<Ctrl+Y>", "rx , b/tx a NORMAL"},
        {"/text", "/tx<Enter>x", "rx a, b/x a NORMAL"},
        {"n", "/x<Enter>nx", "r a, b/tx a NORMAL"},
        {":", ":w", "rx a, b/tx a NORMAL :w"},
    };
    std::vector<std::string> known;
    for (const auto& effect : effects) {
        CAPTURE(effect.name);
        known.emplace_back(effect.name);
        zo::ui::CodeEditor editor;
        editor.SetViKeys(true);
        editor.SetText(kText);
        editor.SetCaret({0, 3});
        Send(editor, effect.keys);
        std::string left = editor.Text();
        std::ranges::replace(left, '\n', '/');
        left += " " + std::string(editor.ModeName());
        if (const auto line = editor.CommandLine()) left += " :" + *line;
        CHECK(left == effect.left);
    }
    CHECK(support::NamesUnder(BuiltIn(), "vi-keys", "Keys in Normal mode:", kEffectAt) == known);

    std::vector<std::string> commands;
    for (const Kest::LineCommand& command : Kest::LineCommands()) {
        if (command.in_binder) commands.push_back(":" + std::string(command.name));
    }
    CHECK(support::NamesUnder(BuiltIn(), "vi-keys", "Commands:", kEffectAt) == commands);
}

TEST_CASE("the editor knows the keys that the binder gives it") {
    for (const std::string& name :
         support::NamesUnder(BuiltIn(), "vi-keys", "Keys without vi keys:", support::kKeyColumns)) {
        CAPTURE(name);
        zo::ui::CodeEditor editor;
        CHECK(editor.Key(fake::KeyNamed(name)));
    }
}

TEST_CASE("the binder gives the speeds of a run") {
    std::string speeds;
    for (const Kest::RunSpeed& speed : Kest::kRunSpeeds) {
        speeds += (speeds.empty() ? "" : ", ") + std::string(speed.name) +
                  base::Format(" %d", speed.ticks_per_second);
    }
    CHECK(support::Lines(support::RowsUnder(BuiltIn(), "the-lab", "Speeds, in ticks a second:")) ==
          speeds + "\n");
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
