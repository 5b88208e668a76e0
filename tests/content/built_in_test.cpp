#include <doctest/doctest.h>

#include <set>

#include "content/content.h"

TEST_CASE("the built-in content loads without a problem, each ticket once") {
    const kp::Content content = kp::LoadContent(kp::ContentStore::BuiltIn());
    for (const std::string& problem : content.problems) FAIL_CHECK(problem);
    CHECK(content.title == "Vantor Kest");
    std::set<std::string> ids;
    for (const kp::LoadedTicket* loaded : content.Tickets()) ids.insert(loaded->ticket.id);
    CHECK_FALSE(ids.empty());
    CHECK(ids.size() == content.Tickets().size());
}
