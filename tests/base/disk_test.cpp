#include "base/disk.h"

#include <map>
#include <optional>
#include <random>

#include <doctest/doctest.h>

namespace {

namespace fs = std::filesystem;

// A disk in memory whose operations can fail one by one. A write that fails leaves half the text,
// and whatever is not flushed when the power goes is cut to its half.
class FaultyDisk final : public base::Disk {
public:
    struct File {
        std::string text;
        bool flushed = false;
    };
    std::map<fs::path, File> files;
    unsigned failing = 0;          // bit n: operation n fails
    std::optional<int> power_cut;  // during this operation; none after it has an effect

    void LosePower() {
        for (auto& [path, file] : files) {
            if (!file.flushed) file.text.resize(file.text.size() / 2);
        }
    }

    // The text as a reader finds it: of the file, else of its backup.
    std::string Load(const fs::path& path) const {
        for (const fs::path& name : {path, base::Suffixed(path, ".bak")}) {
            if (const auto found = files.find(name); found != files.end()) {
                return found->second.text;
            }
        }
        return "nothing";
    }

    bool Exists(const fs::path& path) override { return files.contains(path); }
    bool IsFolder(const fs::path&) override { return false; }
    base::Result<std::vector<fs::path>> FilesUnder(const fs::path&) override {
        return std::vector<fs::path>();
    }
    base::Result<std::string> Read(const fs::path& path) override { return files[path].text; }
    base::Status Write(const fs::path& path, std::string_view text) override {
        const Outcome outcome = Next();
        if (outcome == Outcome::NoEffect) return Failed();
        const bool whole = outcome == Outcome::Done;
        files[path] = {std::string(text.substr(0, whole ? text.size() : text.size() / 2))};
        return whole ? base::Status() : Failed();
    }
    base::Status Flush(const fs::path& path) override {
        return Do([&] { files[path].flushed = true; });
    }
    base::Status FlushFolder(const fs::path&) override {
        return Do([] {});
    }
    base::Status Copy(const fs::path& from, const fs::path& to) override {
        return Write(to, files[from].text);
    }
    base::Status Rename(const fs::path& from, const fs::path& to) override {
        return Do([&] {
            files[to] = files[from];
            files.erase(from);
        });
    }
    base::Status Remove(const fs::path& path) override {
        return Do([&] { files.erase(path); });
    }
    base::Status MakeFolders(const fs::path&) override {
        return Do([] {});
    }

private:
    enum class Outcome { Done, Halfway, NoEffect };

    Outcome Next() {
        const int operation = operations_++;
        if (power_cut && operation > *power_cut) return Outcome::NoEffect;
        const bool fails = power_cut == operation || (failing >> operation & 1) != 0;
        return fails ? Outcome::Halfway : Outcome::Done;
    }

    template <class Effect>
    base::Status Do(Effect effect) {
        if (Next() != Outcome::Done) return Failed();
        effect();
        return {};
    }

    static base::Status Failed() { return base::Failure{"no luck"}; }

    int operations_ = 0;
};

// More than a write ever needs.
constexpr int kOperations = 9;

FaultyDisk DiskWithOldFile() {
    FaultyDisk disk;
    disk.files["d/f"] = {"old text", true};
    disk.files["d/f.bak"] = {"older text", true};
    disk.files["d/f.tmp"] = {"left over", true};
    return disk;
}

// A folder of the machine's own, removed when the test is over.
struct OwnFolder {
    fs::path path =
        fs::temp_directory_path() / ("disk_test_" + std::to_string(std::random_device()()));

    OwnFolder() { fs::create_directories(path); }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    ~OwnFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

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
