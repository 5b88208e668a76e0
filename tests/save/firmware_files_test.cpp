#include "save/firmware_files.h"

#include <doctest/doctest.h>

#include "support/fake_disk.h"

TEST_CASE("each ticket has three slots, each a file of its own with a backup") {
    fake::Disk disk;
    const struct {
        int slot;
        const char* path;
    } cases[] = {
        {1, "data/firmware/1-02-loopback.lc1"},
        {2, "data/firmware/1-02-loopback.2.lc1"},
        {3, "data/firmware/1-02-loopback.3.lc1"},
    };
    for (const auto& c : cases) {
        CAPTURE(std::string(c.path));
        CHECK_FALSE(Kest::LoadFirmware(disk, "data", "1-02-loopback", c.slot));
        CHECK(Kest::SaveFirmware(disk, "data", "1-02-loopback", c.slot, "rx a"));
        CHECK(Kest::SaveFirmware(disk, "data", "1-02-loopback", c.slot, "tx a"));
        CHECK(disk.files[c.path] == "tx a");
        CHECK(Kest::LoadFirmware(disk, "data", "1-02-loopback", c.slot) == "tx a");
        disk.unreadable.insert(c.path);
        CHECK(Kest::LoadFirmware(disk, "data", "1-02-loopback", c.slot) == "rx a");
    }
}

TEST_CASE("firmware that cannot be saved says why and leaves the file alone") {
    fake::Disk disk;
    disk.files["data/firmware/a.lc1"] = "halt";
    disk.full = "No space left on device";
    const base::Status saved = Kest::SaveFirmware(disk, "data", "a", 1, "");
    CHECK(saved.Message() == "cannot write data/firmware/a.lc1 (No space left on device)");
    CHECK(disk.files["data/firmware/a.lc1"] == "halt");
}
