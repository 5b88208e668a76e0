#include "native/system_disk.h"

#include <doctest/doctest.h>

#include "support/own_folder.h"

namespace fs = std::filesystem;
using support::OwnFolder;

TEST_CASE("on the machine's disk a file is replaced and the one before it kept") {
    const OwnFolder folder;
    zo::platform::SystemDisk disk;
    const fs::path file = folder.path / "sub" / "f.json";
    CHECK_FALSE(base::WriteAtomically(disk, file, "x"));
    REQUIRE(disk.MakeFolders(file.parent_path()));
    const std::string second("two\r\n\0two", 9);
    REQUIRE(base::WriteAtomically(disk, file, "one"));
    REQUIRE(base::WriteAtomically(disk, file, second));
    CHECK(*disk.Read(file) == second);
    CHECK(*disk.Read(base::Suffixed(file, ".bak")) == "one");
    CHECK(*disk.FilesUnder(folder.path) ==
          std::vector<fs::path>{file, base::Suffixed(file, ".bak")});
}

TEST_CASE("what cannot be read gives the system's reason") {
    const OwnFolder folder;
    zo::platform::SystemDisk disk;
    CHECK(disk.Read(folder.path / "none").Message() == "No such file or directory");
    CHECK(disk.Read(folder.path).Message() == "Is a directory");
    CHECK(disk.FilesUnder(folder.path / "none").Message() == "No such file or directory");
    CHECK(disk.FilesUnder(folder.path)->empty());
}

TEST_CASE("a lock is held by one at a time, and let go with its holder") {
    const OwnFolder folder;
    zo::platform::SystemDisk disk;
    auto first = disk.Lock(folder.path / "lock");
    REQUIRE(first);
    REQUIRE(*first);
    const auto second = disk.Lock(folder.path / "lock");
    REQUIRE(second);
    CHECK(*second == nullptr);
    first->reset();
    CHECK(*disk.Lock(folder.path / "lock") != nullptr);
    CHECK_FALSE(disk.Lock(folder.path / "none" / "lock"));
}

TEST_CASE("names of any language and depth are files like others") {
    const OwnFolder folder;
    zo::platform::SystemDisk disk;
    fs::path deep = folder.path;
    for (int level = 0; level < 12; ++level) deep /= std::string(24, 'd');
    for (const char8_t* const name : {u8"Zo\u00eb", u8"\u0141ukasz", u8"\u7ebf\u8def", u8"a b"}) {
        const fs::path file = deep / fs::path(name) / "f.txt";
        REQUIRE(disk.MakeFolders(file.parent_path()));
        REQUIRE(base::WriteAtomically(disk, file, "one"));
        REQUIRE(base::WriteAtomically(disk, file, "two"));
        CHECK(*disk.Read(file) == "two");
        CHECK(base::NameBelow(deep, file) == base::PathText(fs::path(name)) + "/f.txt");
        REQUIRE(disk.Remove(file));
        CHECK_FALSE(disk.Exists(file));
    }
}
