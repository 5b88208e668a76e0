#include "content/lint.h"

#include <doctest/doctest.h>

#include <map>

#include "support/lines.h"

using support::Lines;

namespace {

// What stands in a file, and what is put in its place.
struct Change {
    std::string what;
    std::string with;
};

constexpr const char* kCampaign =
    R"({"title": "Small", "shifts": [{"title": "Basics", "missions": ["t"]}]})";
constexpr const char* kBinder = R"({"pages": [{"id": "wrap", "title": "1.5 Wrap"}]})";
constexpr const char* kTicket = R"({"id": "t", "title": "Echo", "client": "Rig",
    "brief": "Send it back.", "ticket": ["A card that sends what it hears, up to a $21."],
    "machine": {"rom": 6}, "peer": {"type": "script"}, "max_ticks": 200,
    "tests": [{"name": "Word", "rx": ["HI!"]},
              {"name": "Seven bits", "rx": [{"hex": "C1 21"}]},
              {"name": "Noise", "count": 2,
               "rx": [{"random": {"len": 4}}, {"text": "!", "at": 9}]}]})";
constexpr const char* kEcho = "loop: rx a\ntx a\njne a, $21, loop\nhalt\n";

// Makes the change in the first file that it fits; it must fit one.
void Apply(const Change& change, std::map<std::string, std::string>& files) {
    for (auto& [name, text] : files) {
        const std::size_t at = text.find(change.what);
        if (at == std::string::npos) continue;
        text.replace(at, change.what.size(), change.with);
        return;
    }
    FAIL(change.what);
}

kp::ContentStore Store(const std::vector<Change>& changes = {}) {
    std::map<std::string, std::string> files = {{"missions/campaign.json", kCampaign},
                                                {"missions/binder.json", kBinder},
                                                {kp::TicketFile("t"), kTicket},
                                                {kp::ReferenceFile("t"), kEcho}};
    for (const Change& change : changes) Apply(change, files);
    kp::ContentStore store;
    for (const auto& [name, text] : files) store.Add(name, text);
    return store;
}

std::string LinesOn(const std::vector<Change>& changes) {
    return Lines(kp::Lint(Store(changes)));
}

kp::Solutions Kept() {
    return {"t",
            kp::KeptFirmware{"plain.lc1", kEcho},
            {{"pass/wraps.lc1", "rx a\ntx a\njne a, $21, next\nhalt\nnext:\n"}},
            {{"fail/seven.lc1",
              "; fails Seven bits: transmitted $41\nloop: rx a\nand a, $7F\ntx a\n"
              "jne a, $21, loop\nhalt\n"}}};
}

}  // namespace

TEST_CASE("sound content gives no line") {
    CHECK(LinesOn({}) == "");
    const std::vector<kp::Solutions> kept = {Kept()};
    CHECK(Lines(kp::Lint(Store(), &kept)) == "");
    CHECK(Lines(kp::Lint(kp::ContentStore::BuiltIn())) == "");
}

TEST_CASE("each fault of a ticket or of the files around it has its one line") {
    const std::string long_text(75 * 30, 'x');
    const struct {
        Change change;
        std::string line;
    } cases[] = {
        {{R"("id": "t")", R"("id": "u")"}, "t: the file's id is u"},
        {{R"("max_ticks")", R"("max_tick")"}, "t: unknown key \"max_tick\""},
        {{R"("rom": 6)", R"("rom": 300)"}, "t: machine: rom is 300; it takes 1 to 256"},
        {{R"("type": "script")", R"("type": "script", "gap": 2)"}, "t: peer: unknown key \"gap\""},
        {{R"("rx": ["HI!"])", R"("rx": ["HI!"], "peer": {"gap": 2})"},
         "t: test 1, peer: unknown key \"gap\""},
        {{R"("count": 2,)", R"("count": 2, "peer": {"gap": 2},)"},
         "t: test 3, peer: unknown key \"gap\""},
        {{R"("title": "Small")", R"("name": "Small")"},
         "missions/campaign.json: unknown key \"name\""},
        {{R"("missions")", R"("number": 1.5, "missions")"},
         "missions/campaign.json, shifts 1: number is 1.5; it takes a whole number"},
        {{R"("1.5 Wrap")", R"("1.5 Wrap", "text": [])"},
         "missions/binder.json, pages 1: unknown key \"text\""},
        {{"Basics", "First days"}, "shift 1: title \"First days\" has 10 cells; 9 fit"},
        {{"Echo", "Echo of a word »"}, "t: title \"Echo of a word »\" has 16 cells; 14 fit"},
        {{"Rig", "The rig in the back room"},
         "t: client \"The rig in the back room\" has 24 cells; 21 fit"},
        {{"Seven bits", "Seven bits are not enough"},
         "t: test name \"Seven bits are not enough\" has 25 cells; 24 fit"},
        {{"A card that", long_text},
         "t: the text takes 82 rows at 80x25; 4 pages of scrolling reach row 70"},
        {{R"({"hex": "C1 21"})", R"({"text": "HI!", "label": "again"})"},
         "t: tests \"Word\" and \"Seven bits\" have the same bytes"},
        {{R"("at": 9)", R"("at": 60)"},
         "t: max_ticks is 200, under five times the slowest reference run of 64 ticks"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.change.with);
        CHECK(LinesOn({c.change}) == c.line + '\n');
    }
}

TEST_CASE("tests that differ in ticks or far end are no copies, nor are tests without bytes") {
    const std::vector<Change> cases[] = {
        {{R"({"hex": "C1 21"})", R"({"text": "HI!", "gap": 2})"}},
        {{R"({"hex": "C1 21"})", R"({"text": "HI!", "at": 1})"}},
        {{R"("script")", R"("sender")"},
         {R"("rx": ["HI!"])", R"("frames": ["HI!"])"},
         {R"("rx": [{"hex": "C1 21"}])", R"("frames": ["HI!"], "peer": {"start": 9})"},
         {R"("rx": [{"random)", R"("frames": [{"random)"},
         {R"({"text": "!", "at": 9})", R"("!")"},
         {"rx a\n", "mov a, $21\n"}},
        {{R"(["HI!"])", "[]"},
         {R"([{"hex": "C1 21"}])", "[]"},
         {R"([{"random": {"len": 4}}, {"text": "!", "at": 9}])", "[]"},
         {"rx a\n", "mov a, $21\n"}},
    };
    for (const std::vector<Change>& changes : cases) {
        CAPTURE(changes.back().with);
        CHECK(LinesOn(changes) == "");
    }
}

TEST_CASE("each fault of the kept firmware has its one line") {
    using Break = void (*)(kp::Solutions&);
    const struct {
        Break breaks;
        std::string line;
    } cases[] = {
        {[](auto& kept) { kept.plain.reset(); }, "t: plain.lc1 is missing"},
        {[](auto& kept) { kept.plain->text += "nop\n"; },
         "t: ROM 6 is under 1.3 times the 5 lines of plain.lc1"},
        {[](auto& kept) { kept.pass[0].text = "rx a\ntx a\nhalt\n"; },
         "t: pass/wraps.lc1 fails: Test 1 of 4: The test ended after 1 of 3 expected transmitted "
         "bytes. Next expected: $49 ('I') as byte 2. The card halted at line 3."},
        {[](auto& kept) {
             kept.fail.push_back({"fail/good.lc1", "; fails Word: x\n" + kept.plain->text});
         },
         "t: fail/good.lc1 passes every test"},
        {[](auto& kept) {
             kept.fail.push_back({"fail/bare.lc1", "halt\n"});
         },
         "t: fail/bare.lc1 does not begin with \"; fails <test>: <sentence>\""},
        {[](auto& kept) {
             kept.fail.push_back({"fail/typo.lc1", "; fails Word: x\nhlat\n"});
         },
         "t: fail/typo.lc1 does not run: Line 2: Unknown instruction \"hlat\"."},
        {[](auto& kept) {
             kept.fail.push_back({"fail/still.lc1", "; fails Seven bits: x\nhalt\n"});
         },
         "t: fail/still.lc1 fails first in \"Word\", not in \"Seven bits\""},
        {[](auto& kept) {
             kept.fail.push_back({"fail/still.lc1", "; fails Word: sent $15\nhalt\n"});
         },
         "t: fail/still.lc1 fails with another sentence: The test ended after 0 of 3 expected "
         "transmitted bytes. Next expected: $48 ('H') as byte 1. The card halted at line 2."},
        {[](auto& kept) { kept.fail[0].text = "; fails Word: ended after 0\nhalt\n"; },
         "t: no wrong program fails first in \"Seven bits\""},
        {[](auto& kept) { kept.fail.clear(); }, "t: no wrong program is kept"},
    };
    const kp::Content content = kp::LoadContent(Store());
    for (const auto& c : cases) {
        CAPTURE(c.line);
        kp::Solutions kept = Kept();
        c.breaks(kept);
        CHECK(Lines(kp::LintSolutions(content, {kept})) == c.line + '\n');
    }
    CHECK(Lines(kp::LintSolutions(content, {})) ==
          "t: plain.lc1 is missing\nt: no wrong program is kept\n");
    const std::vector<kp::Solutions> kept = {Kept()};
    CHECK(Lines(kp::Lint(Store({{R"("tests")", R"("test")"}}), &kept)) ==
          "t: the ticket has no tests\n");
    kp::Solutions stray;
    stray.ticket = "u";
    CHECK(Lines(kp::LintSolutions(content, {Kept(), stray})) ==
          "u: firmware is kept for a ticket that is not there\n");
}
