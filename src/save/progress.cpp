#include "save/progress.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "json_file.h"
#include "save/firmware_files.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

constexpr int kFileVersion = 1;

using Names = std::set<std::string, std::less<>>;

struct NameSet {
    const char* key;
    Names Progress::*names;
};
constexpr NameSet kNameSets[] = {
    // in the order of the file
    {"mail_read", &Progress::mail_read},
    {"binder_seen", &Progress::binder_seen},
    {"achievements", &Progress::achievements},
    {"shifts_seen", &Progress::shifts_seen},
};

// Seconds are kept in 64 bits, and a file can hold any number.
std::uint64_t ReadSeconds(const json::Value& object, std::string_view key) {
    constexpr double kBeyond = 18446744073709551616.0;  // 2^64
    const double number = json::NumberOr(object, key, 0);
    if (number >= kBeyond) return std::numeric_limits<std::uint64_t>::max();
    return number > 0 ? static_cast<std::uint64_t>(number) : 0;
}

json::Value WriteSeconds(std::uint64_t seconds) {
    return json::Value(static_cast<double>(seconds));
}

std::int32_t ReadCount(const json::Value& object, std::string_view key) {
    return std::max(json::IntOr(object, key, 0), 0);
}

Names ReadNames(const json::Value& array) {
    Names names;
    for (const json::Value& item : array.items) {
        if (item.IsString()) names.insert(item.string);
    }
    return names;
}

json::Value WriteNames(const Names& names) {
    json::Value array(json::Kind::Array);
    for (const std::string& name : names) array.items.emplace_back(name);
    return array;
}

json::Value WriteRecord(const TicketRecord& record) {
    json::Value value(json::Kind::Object);
    json::Set(value, "solved", json::Value(record.closed));
    json::Set(value, "ticks", json::Value(record.best_ticks));
    json::Set(value, "lines", json::Value(record.best_lines));
    json::Set(value, "hints", json::Value(record.hints_revealed));
    json::Set(value, "slot", json::Value(record.slot));
    json::Set(value, "solved_at", WriteSeconds(record.closed_at));
    AppendMembers(value, record.others);
    return value;
}

TicketRecord ReadRecord(const json::Value& value) {
    TicketRecord record;
    record.closed = json::BoolOr(value, "solved", false);
    record.best_ticks = ReadCount(value, "ticks");
    record.best_lines = ReadCount(value, "lines");
    record.hints_revealed = ReadCount(value, "hints");
    record.slot = std::clamp(json::IntOr(value, "slot", 1), 1, kFirmwareSlots);
    record.closed_at = ReadSeconds(value, "solved_at");
    record.others = MembersBeyond(value, WriteRecord({}));
    return record;
}

json::Value ToJson(const Progress& progress) {
    json::Value tickets(json::Kind::Object);
    for (const auto& [id, record] : progress.tickets) json::Set(tickets, id, WriteRecord(record));
    json::Value file(json::Kind::Object);
    json::Set(file, "version", json::Value(std::max(progress.file_version, kFileVersion)));
    json::Set(file, "tickets", std::move(tickets));
    json::Set(file, "current", json::Value(progress.current));
    for (const NameSet& set : kNameSets) {
        json::Set(file, set.key, WriteNames(progress.*set.names));
    }
    json::Set(file, "kest_seen", json::Value(progress.title_card_seen));
    json::Set(file, "play_seconds", WriteSeconds(progress.play_seconds));
    AppendMembers(file, progress.others);
    return file;
}

Progress FromJson(const json::Value& file) {
    Progress progress;
    for (const auto& [id, record] : json::Member(file, "tickets").members) {
        progress.tickets[id] = ReadRecord(record);
    }
    progress.current = json::StringOr(file, "current", "");
    for (const NameSet& set : kNameSets) {
        progress.*set.names = ReadNames(json::Member(file, set.key));
    }
    progress.title_card_seen = json::BoolOr(file, "kest_seen", false);
    progress.play_seconds = ReadSeconds(file, "play_seconds");
    progress.file_version = json::IntOr(file, "version", kFileVersion);
    progress.others = MembersBeyond(file, ToJson({}));
    return progress;
}

Against Compare(const TicketRecord& record, std::int32_t score, std::int32_t best) {
    if (!record.closed || score < best) return Against::Better;
    return score == best ? Against::Equal : Against::Worse;
}

}  // namespace

bool Progress::IsClosed(std::string_view ticket_id) const {
    const auto found = tickets.find(ticket_id);
    return found != tickets.end() && found->second.closed;
}

fs::path ProgressPath(const fs::path& data_folder) {
    return data_folder / "progress.json";
}

Progress LoadProgress(base::Disk& disk, const fs::path& data_folder) {
    const auto file = ReadObject(disk, ProgressPath(data_folder));
    return file ? FromJson(*file) : Progress();
}

base::Status SaveProgress(base::Disk& disk, const fs::path& data_folder, const Progress& progress) {
    return WriteObject(disk, ProgressPath(data_folder), ToJson(progress));
}

void ResetProgress(Progress& progress) {
    progress.tickets.clear();
    progress.achievements.clear();
    progress.current.clear();
    progress.binder_seen.clear();
    progress.shifts_seen.clear();
}

Improvement CloseTicket(Progress& progress, const Close& close) {
    TicketRecord& record = progress.tickets[close.ticket_id];
    const Improvement better = {
        .first = !record.closed,
        .lines = Compare(record, close.lines, record.best_lines),
        .ticks = Compare(record, close.ticks, record.best_ticks),
    };
    if (better.first) record.closed_at = close.now;
    if (better.lines == Against::Better) record.best_lines = close.lines;
    if (better.ticks == Against::Better) record.best_ticks = close.ticks;
    record.closed = true;
    record.slot = close.slot;
    record.hints_revealed = std::max(record.hints_revealed, close.hints_revealed);
    return better;
}

}  // namespace Kest
