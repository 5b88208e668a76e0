#include "base/disk.h"

#include <doctest/doctest.h>

#include "support/faulty_disk.h"
#include "support/own_folder.h"

namespace {

namespace fs = std::filesystem;

using fake::FaultyDisk;
using support::OwnFolder;

// More than a write ever needs.
constexpr int kOperations = 9;

FaultyDisk DiskWithOldFile() {
    FaultyDisk disk;
    disk.files["d/f"] = {"old text", true};
    disk.files["d/f.bak"] = {"older text", true};
    disk.files["d/f.tmp"] = {"left over", true};
    return disk;
}

}  // namespace

TEST_CASE("a power cut during any step leaves the old text or the new one") {
    bool is_new = false;
    for (int operation = 0; operation <= kOperations; ++operation) {
        CAPTURE(operation);
        FaultyDisk disk = DiskWithOldFile();
        disk.power_cut = operation;
        const base::Status status = base::WriteAtomically(disk, "d/f", "new text");
        disk.LosePower();
        const std::string text = disk.Load("d/f");
        CHECK((text == "old text" || text == "new text"));
        // Once the new text is there a later cut does not take it back.
        CHECK((text == "new text" || !is_new));
        if (status) CHECK(text == "new text");
        is_new = text == "new text";
    }
    CHECK(is_new);
}

TEST_CASE("whichever steps fail, the old text or the new one is whole") {
    for (unsigned failing = 0; failing < 1u << kOperations; ++failing) {
        CAPTURE(failing);
        FaultyDisk disk = DiskWithOldFile();
        disk.failing = failing;
        const base::Status status = base::WriteAtomically(disk, "d/f", "new text");
        disk.LosePower();
        CHECK(disk.Load("d/f") == (status ? "new text" : "old text"));

        FaultyDisk empty;
        empty.failing = failing;
        const base::Status first = base::WriteAtomically(empty, "d/f", "new text");
        empty.LosePower();
        CHECK(empty.Load("d/f") == (first ? "new text" : "nothing"));
    }
}

TEST_CASE("an atomic write that fails says what could not be done, where and why") {
    const struct {
        unsigned failing;
        std::string_view message;
    } cases[] = {
        {0b0000000, ""},
        {0b0000001, "cannot write d/f (no luck)"},
        {0b0000010, "cannot finish writing d/f (no luck)"},
        {0b0000100, ""},  // without a backup
        {0b0010000, ""},  // moved at the second attempt
        {0b1010000, "cannot replace d/f (no luck)"},
        {0b0110000, ""},  // the old file could not be removed, nor had to be
    };
    for (const auto& c : cases) {
        CAPTURE(c.failing);
        FaultyDisk disk = DiskWithOldFile();
        disk.failing = c.failing;
        CHECK(base::WriteAtomically(disk, "d/f", "new text").Message() == c.message);
    }
}

TEST_CASE("on the machine's disk a file is replaced and the one before it kept") {
    const OwnFolder folder;
    base::SystemDisk disk;
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
    base::SystemDisk disk;
    CHECK(disk.Read(folder.path / "none").Message() == "No such file or directory");
    CHECK(disk.Read(folder.path).Message() == "Is a directory");
    CHECK(disk.FilesUnder(folder.path / "none").Message() == "No such file or directory");
    CHECK(disk.FilesUnder(folder.path)->empty());
}

TEST_CASE("a lock is held by one at a time, and let go with its holder") {
    const OwnFolder folder;
    base::SystemDisk disk;
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
