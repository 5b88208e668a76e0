#include "base/disk.h"

#include <doctest/doctest.h>

#include "support/faulty_disk.h"

namespace {

namespace fs = std::filesystem;

using fake::FaultyDisk;

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
        std::string what;
    } cases[] = {
        {0b0000000, ""},
        {0b0000001, "cannot write "},
        {0b0000010, "cannot finish writing "},
        {0b0000100, ""},  // without a backup
        {0b0010000, ""},  // moved at the second attempt
        {0b1010000, "cannot replace "},
        {0b0110000, ""},  // the old file could not be removed, nor had to be
    };
    for (const auto& c : cases) {
        CAPTURE(c.failing);
        FaultyDisk disk = DiskWithOldFile();
        disk.failing = c.failing;
        const std::string message =
            c.what.empty() ? "" : c.what + base::PathText("d/f") + " (no luck)";
        CHECK(base::WriteAtomically(disk, "d/f", "new text").Message() == message);
    }
}
