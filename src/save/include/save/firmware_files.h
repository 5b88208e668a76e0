#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/disk.h"
#include "base/result.h"

namespace Kest {

// The player's firmware: one file per ticket and slot in the data folder's `firmware` folder, named
// by the ticket id and ".lc1" for slot 1, and with a period and the number before it for 2 and 3.
std::filesystem::path FirmwarePath(const std::filesystem::path& data_folder,
                                   std::string_view ticket_id, int slot);

// Nothing when neither the file nor its backup can be read.
std::optional<std::string> LoadFirmware(base::Disk& disk, const std::filesystem::path& data_folder,
                                        std::string_view ticket_id, int slot);
base::Status SaveFirmware(base::Disk& disk, const std::filesystem::path& data_folder,
                          std::string_view ticket_id, int slot, std::string_view text);

}  // namespace Kest
