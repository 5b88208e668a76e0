// What becomes of the player's files when the disk fails or a file is damaged.

#include <doctest/doctest.h>

#include <algorithm>
#include <random>

#include "json/parser.h"
#include "save/firmware_files.h"
#include "save/records.h"
#include "save/settings.h"
#include "support/fake_disk.h"
#include "support/faulty_disk.h"
#include "support/own_paths.h"
#include "support/rounds.h"

namespace fs = std::filesystem;

namespace {

// A kind of file, with two states that it can be saved in and a way to tell which one it holds.
struct Kept {
    const char* path;
    int before;  // file operations that come before the atomic write
    base::Status (*save)(base::Disk& disk, int state);
    int (*load)(base::Disk& disk);
    base::Status (*save_again)(base::Disk& disk);  // what is loaded
};

constexpr const char* kFirmware = "data/firmware/a.lc1";

const Kept kKept[] = {
    {"data/progress.json", 0,
     [](base::Disk& disk, int state) {
         Kest::Progress progress;
         progress.tickets["1-02-loopback"] = {true, 475, 2, 1, 3, 946684800};
         progress.achievements = {"TWO_LINES", "FIRST_SHIP"};
         progress.binder_seen = {"op-tx", "wrap"};
         progress.play_seconds = static_cast<std::uint64_t>(state);
         return Kest::SaveProgress(disk, "data", progress);
     },
     [](base::Disk& disk) {
         return static_cast<int>(Kest::LoadProgress(disk, "data").play_seconds);
     },
     [](base::Disk& disk) {
         return Kest::SaveProgress(disk, "data", Kest::LoadProgress(disk, "data"));
     }},
    {"data/settings.json", 0,
     [](base::Disk& disk, int state) {
         Kest::Settings settings;
         settings.modern_look = true;
         settings.run_speed = state;
         return Kest::SaveSettings(disk, "data", settings);
     },
     [](base::Disk& disk) { return Kest::LoadSettings(disk, "data").run_speed; },
     [](base::Disk& disk) {
         return Kest::SaveSettings(disk, "data", Kest::LoadSettings(disk, "data"));
     }},
    {kFirmware, 1,
     [](base::Disk& disk, int state) {
         return Kest::SaveFirmware(disk, kFirmware, std::to_string(state));
     },
     [](base::Disk& disk) { return std::stoi(Kest::LoadFirmware(disk, kFirmware).value_or("9")); },
     nullptr},
};
constexpr int kOld = 3, kNew = 4;  // two states that no default has

std::string TextOf(const Kept& kept, int state) {
    fake::Disk disk;
    REQUIRE(kept.save(disk, state));
    return disk.files[kept.path];
}

// How a save ends whose operations fail from the n-th of the atomic write on: the temporary file is
// written and flushed, the backup is copied and flushed, the file is replaced, the folder flushed.
constexpr std::string_view kComplaints[] = {
    "cannot write ",   "cannot finish writing ", "cannot replace ",
    "cannot replace ", "cannot replace ",        "",
};

enum class Failing { Once, FromThenOn };

std::string Complaint(const Kept& kept, int operation, Failing failing) {
    const std::string path = kept.path;
    const int step = operation - kept.before;
    if (step < 0) return support::OwnPaths("cannot make data/firmware (no luck)");
    // The backup may fail, and the replacing has a second attempt.
    if (step >= static_cast<int>(std::size(kComplaints)) ||
        (failing == Failing::Once && step > 1)) {
        return "";
    }
    const std::string_view what = kComplaints[step];
    return what.empty() ? "" : std::string(what) + support::OwnPaths(path) + " (no luck)";
}

void CheckDamaged(const Kept& kept, const std::string& file) {
    CAPTURE(file);
    json::Value value;
    json::Error error;
    const bool readable = json::Parse(file, value, error) && value.IsObject();
    fake::Disk disk;
    disk.files[kept.path] = file;
    disk.files[base::Suffixed(kept.path, ".bak")] = TextOf(kept, kOld);
    if (!readable) CHECK(kept.load(disk) == kOld);
    // What was read is what is written, and it reads as the same.
    REQUIRE(kept.save_again(disk));
    const std::string written = disk.files[kept.path];
    REQUIRE(kept.save_again(disk));
    CHECK(disk.files[kept.path] == written);
}

std::string Corrupted(std::string text, std::mt19937& random) {
    const auto below = [&](std::size_t count) { return random() % count; };
    for (std::size_t edits = 1 + below(4); edits > 0 && !text.empty(); --edits) {
        const std::size_t at = below(text.size());
        switch (below(4)) {
            case 0:
                text[at] = static_cast<char>(below(256));
                break;
            case 1:
                text.erase(at, 1 + below(8));
                break;
            case 2:
                text.insert(at, text, below(text.size()), 1 + below(8));
                break;
            default:
                text[at] = "{}[]\",:-.0129eEtfn\\/"[below(20)];
                break;
        }
    }
    return text;
}

}  // namespace

TEST_CASE("whichever file operation fails, the old state is whole and the sentence is right") {
    for (const Kept& kept : kKept) {
        for (int operation = 0; operation < 9; ++operation) {
            for (const Failing failing : {Failing::Once, Failing::FromThenOn}) {
                CAPTURE(std::string(kept.path));
                CAPTURE(operation);
                fake::FaultyDisk disk;
                disk.files[kept.path] = {TextOf(kept, kOld), true};
                disk.failing = failing == Failing::Once ? 1U << operation : ~0U << operation;
                const base::Status saved = kept.save(disk, kNew);
                CHECK(saved.Message() == Complaint(kept, operation, failing));
                disk.LosePower();
                CHECK(kept.load(disk) == (saved ? kNew : kOld));
            }
        }
    }
}

TEST_CASE("with a damaged file too, no failure takes the good backup away") {
    for (const Kept& kept : {kKept[0], kKept[1]}) {
        for (int operation = 0; operation < 9; ++operation) {
            CAPTURE(std::string(kept.path));
            CAPTURE(operation);
            fake::FaultyDisk disk;
            disk.files[kept.path] = {"damaged", true};
            disk.files[base::Suffixed(kept.path, ".bak")] = {TextOf(kept, kOld), true};
            disk.power_cut = operation;
            const base::Status saved = kept.save(disk, kNew);
            if (operation == 0) {
                CHECK(saved.Message() ==
                      "cannot set aside " + support::OwnPaths(kept.path) + " (no luck)");
            }
            disk.LosePower();
            const int state = kept.load(disk);
            CHECK((state == kNew || (state == kOld && !saved)));
        }
    }
}

TEST_CASE("a file that is cut off anywhere gives way to its backup") {
    for (const Kept& kept : {kKept[0], kKept[1]}) {
        const std::string text = TextOf(kept, kNew);
        for (std::size_t size = 0; size + 1 < text.size(); ++size) {
            fake::Disk disk;
            disk.files[kept.path] = text.substr(0, size);
            disk.files[base::Suffixed(kept.path, ".bak")] = TextOf(kept, kOld);
            REQUIRE(kept.load(disk) == kOld);
        }
    }
}

TEST_CASE("a file damaged at random is read as far as it can be, else its backup") {
    std::mt19937 random(20260117);
    for (const Kept& kept : {kKept[0], kKept[1]}) {
        const std::string text = TextOf(kept, kNew);
        for (int round = support::Rounds(500); round > 0; --round) {
            CheckDamaged(kept, Corrupted(text, random));
        }
    }
}
