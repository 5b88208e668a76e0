#include <doctest/doctest.h>

#include "content/content.h"
#include "support/cases.h"
#include "support/lines.h"

namespace {

using support::Lines;

constexpr const char* kCampaign = R"({"title": "Small", "shifts": [
    {"title": "First", "subtitle": "Sub", "intro": "In", "outro": "Out", "missions": ["a", "b"]},
    {"number": 7, "title": "Second", "missions": ["c"]},
    {}]})";
constexpr const char* kBinder = R"({"pages": [
    {"id": "wrap", "title": "1.5 Wrap", "section": "The LC-1", "body": ["one", "two"]}]})";

std::string TicketText(const std::string& id) {
    return R"({"id": ")" + id + R"(", "tests": [{"name": "One"}, {"name": "Two"}]})";
}

void AddTicket(kp::ContentStore& store, const std::string& id) {
    store.Add(kp::TicketFile(id), TicketText(id));
    store.Add(kp::ReferenceFile(id), "tx 1\ntx 2\nhalt\n");
}

kp::ContentStore SmallStore() {
    kp::ContentStore store;
    store.Add("missions/campaign.json", kCampaign);
    store.Add("missions/binder.json", kBinder);
    for (const char* id : {"a", "b", "c"}) AddTicket(store, id);
    return store;
}

std::string Ids(const kp::Content& content) {
    std::string ids;
    for (const kp::LoadedTicket* loaded : content.Tickets()) ids += loaded->ticket.id;
    return ids;
}

}  // namespace

TEST_CASE("a sound store loads whole, with every reference's scores") {
    kp::ContentStore store = SmallStore();
    store.Add("missions/mail.json", R"({"messages": [
        {"id": "m", "from": "Kest", "subject": "S", "after": "a", "body": "text"}]})");
    const kp::Content content = kp::LoadContent(store);
    CHECK(content.problems.empty());
    CHECK(content.title == "Small");
    REQUIRE(content.shifts.size() == 3);
    CHECK(content.shifts[0].number == 1);
    CHECK(content.shifts[0].subtitle == "Sub");
    CHECK(content.shifts[0].intro == "In");
    CHECK(content.shifts[0].outro == "Out");
    CHECK(content.shifts[1].number == 7);
    CHECK(content.shifts[2].number == 3);
    CHECK(Ids(content) == "abc");

    const kp::LoadedTicket* ticket = content.FindTicket("c");
    REQUIRE(ticket != nullptr);
    CHECK(ticket->reference_text == "tx 1\ntx 2\nhalt\n");
    CHECK(ticket->reference.lines == 3);
    CHECK(ticket->reference.ticks == 4);
    REQUIRE(ticket->reference.outputs.size() == 2);
    CHECK(ticket->reference.outputs[1].transmitted == kp::Bytes{1, 2});
    CHECK(content.ShiftOf("c") == &content.shifts[1]);
    CHECK(content.FindTicket("d") == nullptr);
    CHECK(content.ShiftOf("d") == nullptr);

    REQUIRE(content.FindPage("wrap") != nullptr);
    CHECK(content.FindPage("wrap")->body == std::vector<std::string>{"one", "two"});
    CHECK(content.FindPage("warp") == nullptr);
    REQUIRE(content.mail.size() == 1);
    CHECK(content.mail[0].after == "a");
    CHECK(content.mail[0].body == std::vector<std::string>{"text"});
}

TEST_CASE("a damaged ticket is left out with one line, and the rest is there") {
    for (const support::Case& steps : support::Cases("content/damaged.txt")) {
        kp::ContentStore store = SmallStore();
        for (const support::Step& step : steps) {
            CAPTURE(step.where);
            if (step.key != "problem") {
                store.Add("missions/" + step.key, step.value + step.text);
                continue;
            }
            const kp::Content content = kp::LoadContent(store);
            CHECK(Lines(content.problems) == step.value + "\n");
            CHECK(Ids(content) == "ac");
            CHECK(content.pages.size() == 1);
            store = SmallStore();
        }
    }
}

TEST_CASE("every problem has its line, in the order of the campaign, the binder, the mail") {
    kp::ContentStore store;
    store.Add("missions/campaign.json", kCampaign);
    store.Add("missions/mail.json", "");
    AddTicket(store, "b");
    store.Add(kp::TicketFile("c"), TicketText("c"));
    const kp::Content content = kp::LoadContent(store);
    CHECK(Lines(content.problems) ==
          "missions/a.json is missing\n"
          "c: reference firmware is missing\n"
          "missions/binder.json is missing\n"
          "missions/mail.json:1:1: unexpected end of text\n");
    CHECK(Ids(content) == "b");
    REQUIRE(content.shifts.size() == 3);
    CHECK(content.shifts[1].title == "Second");
    CHECK(content.shifts[1].tickets.empty());
}

TEST_CASE("a damaged campaign leaves the board empty and the binder open") {
    for (const char* text : {"{", "", "3"}) {
        CAPTURE(std::string(text));
        kp::ContentStore store = SmallStore();
        store.Add("missions/campaign.json", text);
        const kp::Content content = kp::LoadContent(store);
        CHECK(content.shifts.empty());
        CHECK(content.pages.size() == 1);
    }
}

TEST_CASE("one ticket loads by its id or the four characters that it starts with") {
    kp::ContentStore store;
    AddTicket(store, "1-02-loopback");
    AddTicket(store, "1-03-uplink");
    AddTicket(store, "1-05-two-way");
    store.Add("missions/campaign.json", "damaged");
    CHECK(kp::LoadOneTicket(store, "1-03")->ticket.id == "1-03-uplink");
    CHECK(kp::LoadOneTicket(store, "1-02-loopback")->ticket.id == "1-02-loopback");
    for (const std::string name : {"1", "1-0", "1-02-", "1-04", "1-05-two", "camp", ""}) {
        CHECK(kp::LoadOneTicket(store, name).Message() == "there is no ticket " + name);
    }
    store.Add(kp::ReferenceFile("1-02-loopback"), "halt");
    CHECK(kp::LoadOneTicket(store, "1-02").Message() == "test 1 produces no output");
}
