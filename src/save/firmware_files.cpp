#include "save/firmware_files.h"

namespace Kest {

namespace fs = std::filesystem;

fs::path FirmwarePath(const fs::path& data_folder, std::string_view ticket_id, int slot) {
    std::string name(ticket_id);
    if (slot > 1) name += '.' + std::to_string(slot);
    return data_folder / "firmware" / (name + ".lc1");
}

std::optional<std::string> LoadFirmware(base::Disk& disk, const fs::path& data_folder,
                                        std::string_view ticket_id, int slot) {
    const fs::path path = FirmwarePath(data_folder, ticket_id, slot);
    for (const fs::path& candidate : {path, base::Suffixed(path, ".bak")}) {
        base::Result<std::string> text = disk.Read(candidate);
        if (text) return std::move(*text);
    }
    return std::nullopt;
}

base::Status SaveFirmware(base::Disk& disk, const fs::path& data_folder, std::string_view ticket_id,
                          int slot, std::string_view text) {
    const fs::path path = FirmwarePath(data_folder, ticket_id, slot);
    const base::Status made = disk.MakeFolders(path.parent_path());
    if (!made) {
        return base::Failure{"cannot make " + base::PathText(path.parent_path()) + " (" +
                             made.Message() + ")"};
    }
    return base::WriteAtomically(disk, path, text);
}

}  // namespace Kest
