#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include "base/disk.h"
#include "base/result.h"
#include "save/progress.h"

namespace Kest {

// What stays of a verify that has passed, beside the progress.

// The firmware that holds a ticket's record stands in a file of its own, so that it can be looked
// at whatever becomes of the slots.
enum class Score : std::uint8_t { Lines, Ticks };
std::filesystem::path RecordPath(const std::filesystem::path& data_folder,
                                 std::string_view ticket_id, Score score);

// Keeps the firmware of a close that has bettered a record, or that equals one of which there is no
// file.
base::Status KeepRecords(base::Disk& disk, const std::filesystem::path& data_folder,
                         const Close& close, const Improvement& better, std::string_view firmware);

struct Scores {
    std::int32_t lines = 0;
    std::int32_t ticks = 0;
    bool operator==(const Scores&) const = default;
};

inline constexpr std::size_t kHistoryLength = 200;  // verifies kept of each ticket

// Puts lines, ticks and time behind the ticket's earlier ones in history.json. Nothing else depends
// on that file: when it cannot be read it starts anew.
base::Status AddToHistory(base::Disk& disk, const std::filesystem::path& data_folder,
                          const Close& close);
// The ticket's passing verifies in their order; none when the file cannot be read.
std::vector<Scores> LoadHistory(base::Disk& disk, const std::filesystem::path& data_folder,
                                std::string_view ticket_id);

}  // namespace Kest
