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
        const std::filesystem::path path = Kest::FirmwarePath("data", "1-02-loopback", c.slot);
        CHECK_FALSE(Kest::LoadFirmware(disk, path));
        CHECK(Kest::SaveFirmware(disk, path, "rx a"));
        CHECK(Kest::SaveFirmware(disk, path, "tx a"));
        CHECK(disk.files[c.path] == "tx a");
        CHECK(Kest::LoadFirmware(disk, path) == "tx a");
        disk.unreadable.insert(c.path);
        CHECK(Kest::LoadFirmware(disk, path) == "rx a");
    }
}
