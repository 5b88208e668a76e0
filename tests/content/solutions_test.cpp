#include "content/solutions.h"

#include <doctest/doctest.h>

#include "support/fake_disk.h"

TEST_CASE("kept firmware is read by ticket, and other files are left alone") {
    fake::Disk disk;
    disk.files["kept/t-2/plain.lc1"] = "tx 2\n";
    disk.files["kept/t-1/fail/b.lc1"] = "; fails B\n";
    disk.files["kept/t-1/fail/a.lc1"] = "; fails A\n";
    disk.files["kept/t-1/pass/c.lc1"] = "tx 1\n";
    disk.files["kept/t-1/pass/notes.txt"] = "no firmware";
    disk.files["kept/t-1/independent/d.lc1"] = "tx 3\n";
    disk.files["kept/t-1/mine.lc1"] = "tx 4\n";
    disk.files["kept/plain.lc1"] = "tx 5\n";
    const auto kept = kp::ReadSolutions(disk, "kept");
    REQUIRE(kept);
    REQUIRE(kept->size() == 2);
    const kp::Solutions& first = kept->front();
    CHECK(first.ticket == "t-1");
    CHECK_FALSE(first.plain);
    REQUIRE(first.pass.size() == 1);
    CHECK(first.pass[0].name == "pass/c.lc1");
    REQUIRE(first.fail.size() == 2);
    CHECK(first.fail[0].name == "fail/a.lc1");
    CHECK(first.fail[1].text == "; fails B\n");
    REQUIRE(kept->back().plain);
    CHECK(kept->back().plain->text == "tx 2\n");

    CHECK(kp::ReadSolutions(disk, "none").Message() == "cannot read none");
    disk.unreadable = {"kept/t-1/pass/c.lc1"};
    CHECK(kp::ReadSolutions(disk, "kept").Message() ==
          "cannot read " + base::PathText("kept/t-1/pass/c.lc1"));
}

TEST_CASE("a claim is a wrong program's first line, and needs a test and a sentence") {
    const auto claim = kp::ReadClaim("; fails Two texts: transmitted $15: wrong\ntx 1\n");
    REQUIRE(claim);
    CHECK(claim->test == "Two texts");
    CHECK(claim->sentence == "transmitted $15: wrong");
    for (const char* firmware : {"", "tx 1\n", "\n; fails A: B\n", ";fails A: B\n",
                                 "; fails A B\n: \n", "; fails A: \n", "; fails : B\n"}) {
        CAPTURE(std::string(firmware));
        CHECK_FALSE(kp::ReadClaim(firmware));
    }
}
