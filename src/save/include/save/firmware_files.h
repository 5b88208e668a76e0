#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/disk.h"
#include "base/result.h"

namespace Kest {

inline constexpr int kFirmwareSlots = 3;

// The player's firmware stands in the data folder's `firmware` folder, in files named by the ticket
// id and ".lc1", with a period and a word in between when there is one.
std::filesystem::path FirmwareFile(const std::filesystem::path& data_folder,
                                   std::string_view ticket_id, std::string_view which);
// Slot 1 has no word, the others have their number.
std::filesystem::path FirmwarePath(const std::filesystem::path& data_folder,
                                   std::string_view ticket_id, int slot);

// Nothing when neither the file nor its backup can be read.
std::optional<std::string> LoadFirmware(base::Disk& disk, const std::filesystem::path& path);
base::Status SaveFirmware(base::Disk& disk, const std::filesystem::path& path,
                          std::string_view text);

}  // namespace Kest
