#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "base/disk.h"
#include "base/result.h"
#include "json/value.h"

namespace Kest {

struct TicketRecord {
    bool closed = false;
    std::int32_t best_ticks = 0;
    std::int32_t best_lines = 0;
    std::int32_t hints_revealed = 0;
    std::int32_t slot = 1;        // 1 to 3
    std::uint64_t closed_at = 0;  // seconds since 1 January 1970
    json::Value others = {};      // unknown members, written back behind the rest
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

    // What a newer version or a hand put into the file, written back behind the rest.
    std::int32_t file_version = 0;
    json::Value others = {};

    bool IsClosed(std::string_view ticket_id) const;
};

std::filesystem::path ProgressPath(const std::filesystem::path& data_folder);

// Reads progress.json, else its backup; empty progress when neither can be read.
Progress LoadProgress(base::Disk& disk, const std::filesystem::path& data_folder);
// The failure is the reason alone, ready to stand behind "Progress could not be saved: ".
base::Status SaveProgress(base::Disk& disk, const std::filesystem::path& data_folder,
                          const Progress& progress);

// Takes back closed tickets with their scores and hints, achievements, and what was seen. The mail
// read, the title card seen and the time played stay.
void ResetProgress(Progress& progress);

// A passing verify: what the bench hands over when every test has passed.
struct Close {
    std::string ticket_id;
    std::int32_t lines = 0;
    std::int32_t ticks = 0;
    std::int32_t hints_revealed = 0;
    std::int32_t slot = 1;
    std::uint64_t now = 0;  // seconds since 1 January 1970
};

// How the close's scores stand to the ticket's best before it.
enum class Against : std::uint8_t { Worse, Equal, Better };
struct Improvement {
    bool first = false;  // the ticket was not closed before, which betters both scores
    Against lines = Against::Worse;
    Against ticks = Against::Worse;
};
// Keeps the smaller of each score; the first close sets closed-at.
Improvement CloseTicket(Progress& progress, const Close& close);

}  // namespace Kest
