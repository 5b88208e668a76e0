#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "base/disk.h"
#include "base/result.h"

namespace Kest {

struct TicketRecord {
    bool closed = false;
    std::int32_t best_ticks = 0;
    std::int32_t best_lines = 0;
    std::int32_t hints_revealed = 0;
    std::int32_t slot = 1;        // 1 to 3
    std::uint64_t closed_at = 0;  // seconds since 1 January 1970
};

// What the player has achieved, as progress.json keeps it.
struct Progress {
    std::map<std::string, TicketRecord, std::less<>> tickets;
    std::string current;  // ticket id
    std::set<std::string, std::less<>> mail_read;
    std::set<std::string, std::less<>> binder_seen;
    std::set<std::string, std::less<>> achievements;
    std::set<std::string, std::less<>> shifts_seen;
    bool title_card_seen = false;
    std::uint64_t play_seconds = 0;

    bool IsClosed(std::string_view ticket_id) const;
};

// Reads progress.json, else its backup; empty progress when neither can be read.
Progress LoadProgress(base::Disk& disk, const std::filesystem::path& path);
// The failure is the reason alone, ready to stand behind "Progress could not be saved: ".
base::Status SaveProgress(base::Disk& disk, const std::filesystem::path& path,
                          const Progress& progress);

// A passing verify: what the bench hands over when every test has passed.
struct Close {
    std::string ticket_id;
    std::int32_t lines = 0;
    std::int32_t ticks = 0;
    std::int32_t hints_revealed = 0;
    std::int32_t slot = 1;
    std::uint64_t now = 0;  // seconds since 1 January 1970
};
// Keeps the smaller of each score; the first close sets closed-at.
void CloseTicket(Progress& progress, const Close& close);

}  // namespace Kest
