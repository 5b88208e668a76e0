#include "json_file.h"

#include "json/parser.h"
#include "json/writer.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

constexpr int kIndent = 2;

std::optional<json::Value> ReadOne(base::Disk& disk, const fs::path& path) {
    const base::Result<std::string> text = disk.Read(path);
    if (!text) return std::nullopt;
    json::Value value;
    json::Error error;
    if (!json::Parse(*text, value, error) || !value.IsObject()) return std::nullopt;
    return value;
}

}  // namespace

std::optional<json::Value> ReadObject(base::Disk& disk, const fs::path& path) {
    std::optional<json::Value> object = ReadOne(disk, path);
    return object ? object : ReadOne(disk, base::Suffixed(path, ".bak"));
}

base::Status WriteObject(base::Disk& disk, const fs::path& path, const json::Value& object) {
    const std::string text = json::Write(object, kIndent);
    // Waiting for the disk is the longest part of a start, and mostly for nothing.
    if (const base::Result<std::string> kept = disk.Read(path); kept && *kept == text) return {};
    if (disk.Exists(path) && !ReadOne(disk, path)) {
        const fs::path aside = base::Suffixed(path, ".damaged");
        if (const base::Status moved = disk.Rename(path, aside); !moved) {
            return base::Failure{"cannot set aside " + base::PathText(path) + " (" +
                                 moved.Message() + ")"};
        }
    }
    return base::WriteAtomically(disk, path, text);
}

json::Value MembersBeyond(const json::Value& object, const json::Value& known) {
    json::Value beyond(json::Kind::Object);
    for (const auto& member : object.members) {
        if (!json::Has(known, member.first)) beyond.members.push_back(member);
    }
    return beyond;
}

void AppendMembers(json::Value& object, const json::Value& members) {
    object.members.insert(object.members.end(), members.members.begin(), members.members.end());
}

}  // namespace Kest
