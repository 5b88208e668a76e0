#include "save/unlocking.h"

#include <doctest/doctest.h>

#include <string>

namespace {

kp::LoadedTicket Ticket(const char* id, bool optional = false) {
    kp::LoadedTicket loaded;
    loaded.ticket.id = id;
    loaded.ticket.optional = optional;
    return loaded;
}

// Tickets "a" to "f" in two shifts; the optional ones are written as capitals.
kp::Content Campaign() {
    kp::Content content;
    content.shifts.resize(2);
    content.shifts[0].number = 1;
    content.shifts[0].tickets = {Ticket("a"), Ticket("b"), Ticket("C", true)};
    content.shifts[1].number = 2;
    content.shifts[1].tickets = {Ticket("d"), Ticket("e"), Ticket("f")};
    return content;
}

Kest::Progress Closed(std::string_view letters) {
    Kest::Progress progress;
    for (const char letter : letters) progress.tickets[std::string(1, letter)].closed = true;
    return progress;
}

std::string IdOf(const kp::LoadedTicket* loaded) {
    return loaded == nullptr ? "" : loaded->ticket.id;
}

}  // namespace

TEST_CASE("one required ticket may be left behind, and an optional one needs the one before it") {
    const kp::Content content = Campaign();
    const struct {
        const char* closed;
        bool open_all;
        const char* open;
        int stage;
        bool second_shift;
    } cases[] = {
        {"", false, "ab", 0, false},
        {"a", false, "abd", 1, true},     // C waits for b, whatever the count
        {"b", false, "abCd", 1, true},    // a is the one left behind
        {"ab", false, "abCde", 2, true},  // d is the next, e the one after it
        {"aC", false, "abCd", 1, true},   // an optional close opens nothing and has no stage
        {"abC", false, "abCde", 2, true},
        {"abd", false, "abCdef", 3, true},
        {"f", false, "abf", 1, true},  // a closed ticket stays open
        {"abdef", false, "abCdef", 3, true},
        {"", true, "abCdef", 3, true},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.closed));
        const Kest::Progress progress = Closed(c.closed);
        const Kest::Unlocking unlocking{content, progress, c.open_all};
        std::string open;
        for (const kp::LoadedTicket* loaded : content.Tickets()) {
            if (unlocking.IsTicketOpen(loaded->ticket.id)) open += loaded->ticket.id;
        }
        CHECK(open == c.open);
        CHECK(unlocking.Stage() == c.stage);
        CHECK(unlocking.IsShiftOpen(1));
        CHECK(unlocking.IsShiftOpen(2) == c.second_shift);
    }
}

TEST_CASE("what the campaign does not hold is not open") {
    const kp::Content content = Campaign();
    const Kest::Progress progress = Closed("x");
    const Kest::Unlocking unlocking{content, progress, true};
    CHECK_FALSE(unlocking.IsTicketOpen("x"));
    CHECK_FALSE(unlocking.IsTicketOpen(""));
    CHECK_FALSE(unlocking.IsShiftOpen(3));
    CHECK(unlocking.RequiredCount(3) == 0);
    CHECK(unlocking.NextTicket("x") == nullptr);
}

TEST_CASE("a shift counts its required tickets alone") {
    const kp::Content content = Campaign();
    const Kest::Progress progress = Closed("bCf");
    const Kest::Unlocking unlocking{content, progress};
    CHECK(unlocking.ClosedCount(1) == 1);
    CHECK(unlocking.RequiredCount(1) == 2);
    CHECK(unlocking.ClosedCount(2) == 1);
    CHECK(unlocking.RequiredCount(2) == 3);
}

TEST_CASE("the next ticket is offered when it is open") {
    const kp::Content content = Campaign();
    const Kest::Progress progress = Closed("a");
    const Kest::Unlocking unlocking{content, progress};
    CHECK(IdOf(unlocking.NextTicket("a")) == "b");
    CHECK(IdOf(unlocking.NextTicket("b")).empty());
    CHECK(IdOf(unlocking.NextTicket("C")) == "d");
    CHECK(IdOf(unlocking.NextTicket("f")).empty());
}

TEST_CASE("Continue goes to the current ticket, else to the first that is open and not closed") {
    const kp::Content content = Campaign();
    const struct {
        const char* closed;
        const char* current;
        const char* ticket;
    } cases[] = {
        {"", "", "a"},      {"a", "a", "a"}, {"a", "", "b"},      {"a", "d", "d"},
        {"a", "gone", "b"}, {"", "f", "a"},  {"abCdef", "", "a"}, {"abdef", "", "C"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.closed));
        CAPTURE(std::string(c.current));
        Kest::Progress progress = Closed(c.closed);
        progress.current = c.current;
        CHECK(IdOf(Kest::Unlocking{content, progress}.ContinueTicket()) == c.ticket);
    }
    const kp::Content empty;
    const Kest::Progress progress;
    CHECK(Kest::Unlocking{empty, progress}.ContinueTicket() == nullptr);
}
