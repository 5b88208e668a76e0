#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/disk.h"
#include "base/result.h"
#include "json/value.h"

namespace kp {

// Content files by relative name, such as "missions/campaign.json". Built-in texts are views into
// the program; a folder's texts are owned.
class ContentStore {
public:
    // The program's own texts.
    static ContentStore BuiltIn();
    // The `missions` subfolder of a folder on disk, read whole: its .json and .lc1 files. On any
    // problem there is no store, and the failure holds a line for each problem.
    static base::Result<ContentStore> FromFolder(base::Disk& disk,
                                                 const std::filesystem::path& folder);

    void Add(std::string name, std::string text);
    bool Holds(std::string_view name) const;
    // The text, or "<name> is missing".
    base::Result<std::string_view> Lookup(std::string_view name) const;
    // The parsed value, or "<name>:<line>:<column>: <message>".
    base::Result<json::Value> ReadJson(std::string_view name) const;
    std::vector<std::string> Names() const;

private:
    struct Text {
        std::string owned;
        std::string_view embedded;
        std::string_view View() const { return owned.empty() ? embedded : owned; }
    };
    std::map<std::string, Text, std::less<>> texts_;
};

// The store to play from, and the problem lines of a content folder that was passed over.
struct ChosenStore {
    ContentStore store;
    std::vector<std::string> problems;
};

// The named content folder, if all of it can be read; the built-in texts otherwise, and when the
// folder's name is empty.
ChosenStore ChooseStore(base::Disk& disk, const std::filesystem::path& content_folder);

}  // namespace kp
