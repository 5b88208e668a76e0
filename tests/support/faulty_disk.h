#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/disk.h"

namespace fake {

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
    base::Result<std::string> Read(const fs::path& path) override {
        const auto found = files.find(path);
        if (found == files.end()) return base::Failure{"No such file or directory"};
        return found->second.text;
    }
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
    base::Status RemoveFolder(const fs::path&) override { return Failed(); }
    base::Status MakeFolders(const fs::path&) override {
        return Do([] {});
    }
    base::Result<std::unique_ptr<base::FileLock>> Lock(const fs::path&) override {
        return base::Failure{"no locks"};
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

}  // namespace fake
