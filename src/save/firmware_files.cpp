#include "save/firmware_files.h"

namespace Kest {

namespace fs = std::filesystem;

fs::path FirmwareFile(const fs::path& data_folder, std::string_view ticket_id,
                      std::string_view which) {
    std::string name(ticket_id);
    if (!which.empty()) name += '.' + std::string(which);
    return data_folder / "firmware" / (name + ".lc1");
}

fs::path FirmwarePath(const fs::path& data_folder, std::string_view ticket_id, int slot) {
    return FirmwareFile(data_folder, ticket_id, slot > 1 ? std::to_string(slot) : std::string());
}

std::optional<std::string> LoadFirmware(base::Disk& disk, const fs::path& path) {
    for (const fs::path& candidate : {path, base::Suffixed(path, ".bak")}) {
        base::Result<std::string> text = disk.Read(candidate);
        if (text) return std::move(*text);
    }
    return std::nullopt;
}

base::Status SaveFirmware(base::Disk& disk, const fs::path& path, std::string_view text) {
    const base::Status made = disk.MakeFolders(path.parent_path());
    if (!made) {
        return base::Failure{"cannot make " + base::PathText(path.parent_path()) + " (" +
                             made.Message() + ")"};
    }
    return base::WriteAtomically(disk, path, text);
}

}  // namespace Kest
