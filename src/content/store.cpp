#include "content/store.h"

#include <algorithm>

#include "base/embedded.h"
#include "base/format.h"
#include "json/parser.h"

// The build's table of content/missions.
extern "C" const base::EmbeddedFile kest_missions[];

namespace kp {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMissions = "missions";

bool IsContentFile(const fs::path& path) {
    const fs::path extension = path.extension();
    return extension == ".json" || extension == ".lc1";
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

}  // namespace

ContentStore ContentStore::BuiltIn() {
    ContentStore store;
    for (const base::EmbeddedFile* file = kest_missions; file->name != nullptr; ++file) {
        store.texts_[file->name].embedded = {file->data, file->size};
    }
    return store;
}

base::Result<ContentStore> ContentStore::FromFolder(base::Disk& disk, const fs::path& folder) {
    const fs::path missions = folder / kMissions;
    if (!disk.IsFolder(missions)) {
        return base::Failure{"no missions folder under " + base::PathText(folder)};
    }
    const base::Result<std::vector<fs::path>> files = disk.FilesUnder(missions);
    if (!files) return base::Failure{"cannot read " + base::PathText(missions)};
    ContentStore store;
    std::string problems;
    for (const fs::path& path : *files) {
        if (!IsContentFile(path)) continue;
        base::Result<std::string> text = disk.Read(path);
        if (text) {
            store.Add(base::NameBelow(folder, path), std::move(*text));
        } else {
            problems += (problems.empty() ? "" : "\n") + ("cannot read " + base::PathText(path));
        }
    }
    if (!problems.empty()) return base::Failure{std::move(problems)};
    return store;
}

void ContentStore::Add(std::string name, std::string text) {
    texts_[std::move(name)] = {std::move(text), {}};
}

bool ContentStore::Holds(std::string_view name) const {
    return texts_.find(name) != texts_.end();
}

base::Result<std::string_view> ContentStore::Lookup(std::string_view name) const {
    const auto found = texts_.find(name);
    if (found == texts_.end()) return base::Failure{std::string(name) + " is missing"};
    return found->second.View();
}

base::Result<json::Value> ContentStore::ReadJson(std::string_view name) const {
    const base::Result<std::string_view> text = Lookup(name);
    if (!text) return base::Failure{text.Message()};
    json::Value value;
    json::Error error;
    if (json::Parse(*text, value, error)) return value;
    return base::Failure{std::string(name) + base::Format(":%u:%u: ", error.line, error.column) +
                         error.message};
}

std::vector<std::string> ContentStore::Names() const {
    std::vector<std::string> names;
    names.reserve(texts_.size());
    for (const auto& entry : texts_) names.push_back(entry.first);
    return names;
}

ChosenStore ChooseStore(base::Disk& disk, const fs::path& content_folder) {
    if (content_folder.empty()) return {ContentStore::BuiltIn(), {}};
    base::Result<ContentStore> store = ContentStore::FromFolder(disk, content_folder);
    if (store) return {std::move(*store), {}};
    return {ContentStore::BuiltIn(), SplitLines(store.Message())};
}

}  // namespace kp
