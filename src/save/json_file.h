#pragma once

#include <filesystem>
#include <optional>

#include "base/disk.h"
#include "base/result.h"
#include "json/value.h"

namespace Kest {

// The object that a JSON file holds, else the one that its backup holds; nothing when neither can
// be read and parsed.
std::optional<json::Value> ReadObject(base::Disk& disk, const std::filesystem::path& path);

// Writes the file atomically, unless it holds the same text already. A file there that does not
// parse is moved to `path`.damaged first: it may have been edited by hand, and it must not take the
// place of the last good backup.
base::Status WriteObject(base::Disk& disk, const std::filesystem::path& path,
                         const json::Value& object);

// The members of an object whose keys `known` does not have, in their order.
json::Value MembersBeyond(const json::Value& object, const json::Value& known);

// Puts members behind those that the object has.
void AppendMembers(json::Value& object, const json::Value& members);

}  // namespace Kest
