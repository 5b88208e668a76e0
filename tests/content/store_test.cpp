#include "content/store.h"

#include <doctest/doctest.h>

#include "support/fake_disk.h"

using Names = std::vector<std::string>;

TEST_CASE("a content folder is read whole, under the names of the built-in texts") {
    fake::Disk disk;
    disk.files["mine/missions/campaign.json"] = "{}";
    disk.files["mine/missions/reference/a.lc1"] = "";
    disk.files["mine/missions/notes.txt"] = "not content";
    disk.files["mine/missions/a.json.bak"] = "not content either";
    disk.files["mine/other/b.json"] = "elsewhere";
    const kp::ChosenStore chosen = kp::ChooseStore(disk, "mine");
    CHECK(chosen.problems.empty());
    CHECK(chosen.store.Names() == Names{"missions/campaign.json", "missions/reference/a.lc1"});
    CHECK(*chosen.store.Lookup("missions/campaign.json") == "{}");
    CHECK(chosen.store.Lookup("missions/reference/a.lc1"));
    CHECK(chosen.store.Lookup("missions/b.json").Message() == "missions/b.json is missing");
}

TEST_CASE("a content folder with a problem leaves the built-in content in use") {
    const Names built_in = kp::ContentStore::BuiltIn().Names();
    fake::Disk disk;
    disk.files["mine/missions"] = "a file of that name";
    const kp::ChosenStore none = kp::ChooseStore(disk, "mine");
    CHECK(none.problems == Names{"no missions folder under mine"});
    CHECK(none.store.Names() == built_in);

    disk.files["bad/missions/a.json"] = "{}";
    disk.files["bad/missions/b.json"] = "{}";
    disk.files["bad/missions/c.lc1"] = "halt";
    disk.unreadable = {"bad/missions/b.json", "bad/missions/c.lc1"};
    const kp::ChosenStore unreadable = kp::ChooseStore(disk, "bad");
    CHECK(unreadable.problems == Names{"cannot read " + base::PathText("bad/missions/b.json"),
                                       "cannot read " + base::PathText("bad/missions/c.lc1")});
    CHECK(unreadable.store.Names() == built_in);

    const kp::ChosenStore unnamed = kp::ChooseStore(disk, "");
    CHECK(unnamed.problems.empty());
    CHECK(unnamed.store.Names() == built_in);
}

TEST_CASE("a text that is no JSON is reported with its name and place") {
    kp::ContentStore store;
    store.Add("missions/a.json", "{\n  \"id\" 1}");
    CHECK(store.ReadJson("missions/a.json").Message() == "missions/a.json:2:8: expected a colon");
    CHECK(store.ReadJson("missions/b.json").Message() == "missions/b.json is missing");
}
