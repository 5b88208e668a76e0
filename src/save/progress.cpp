#include "save/progress.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "json/parser.h"
#include "json/writer.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

constexpr int kFileVersion = 1;
constexpr int kSlots = 3;
constexpr int kIndent = 2;

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

TicketRecord ReadRecord(const json::Value& value) {
    TicketRecord record;
    record.closed = json::BoolOr(value, "solved", false);
    record.best_ticks = json::IntOr(value, "ticks", 0);
    record.best_lines = json::IntOr(value, "lines", 0);
    record.hints_revealed = json::IntOr(value, "hints", 0);
    record.slot = std::clamp(json::IntOr(value, "slot", 1), 1, kSlots);
    record.closed_at = ReadSeconds(value, "solved_at");
    return record;
}

json::Value WriteRecord(const TicketRecord& record) {
    json::Value value(json::Kind::Object);
    json::Set(value, "solved", json::Value(record.closed));
    json::Set(value, "ticks", json::Value(record.best_ticks));
    json::Set(value, "lines", json::Value(record.best_lines));
    json::Set(value, "hints", json::Value(record.hints_revealed));
    json::Set(value, "slot", json::Value(record.slot));
    json::Set(value, "solved_at", WriteSeconds(record.closed_at));
    return value;
}

std::optional<json::Value> ReadObject(base::Disk& disk, const fs::path& path) {
    const base::Result<std::string> text = disk.Read(path);
    if (!text) return std::nullopt;
    json::Value value;
    json::Error error;
    if (!json::Parse(*text, value, error) || !value.IsObject()) return std::nullopt;
    return value;
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
    return progress;
}

json::Value ToJson(const Progress& progress) {
    json::Value tickets(json::Kind::Object);
    for (const auto& [id, record] : progress.tickets) json::Set(tickets, id, WriteRecord(record));
    json::Value file(json::Kind::Object);
    json::Set(file, "version", json::Value(kFileVersion));
    json::Set(file, "tickets", std::move(tickets));
    json::Set(file, "current", json::Value(progress.current));
    for (const NameSet& set : kNameSets) {
        json::Set(file, set.key, WriteNames(progress.*set.names));
    }
    json::Set(file, "kest_seen", json::Value(progress.title_card_seen));
    json::Set(file, "play_seconds", WriteSeconds(progress.play_seconds));
    return file;
}

}  // namespace

bool Progress::IsClosed(std::string_view ticket_id) const {
    const auto found = tickets.find(ticket_id);
    return found != tickets.end() && found->second.closed;
}

Progress LoadProgress(base::Disk& disk, const fs::path& path) {
    for (const fs::path& candidate : {path, base::Suffixed(path, ".bak")}) {
        if (const std::optional<json::Value> file = ReadObject(disk, candidate)) {
            return FromJson(*file);
        }
    }
    return {};
}

base::Status SaveProgress(base::Disk& disk, const fs::path& path, const Progress& progress) {
    return base::WriteAtomically(disk, path, json::Write(ToJson(progress), kIndent));
}

void CloseTicket(Progress& progress, const Close& close) {
    TicketRecord& record = progress.tickets[close.ticket_id];
    if (record.closed) {
        record.best_ticks = std::min(record.best_ticks, close.ticks);
        record.best_lines = std::min(record.best_lines, close.lines);
    } else {
        record.closed = true;
        record.best_ticks = close.ticks;
        record.best_lines = close.lines;
        record.closed_at = close.now;
    }
    record.slot = close.slot;
    record.hints_revealed = std::max(record.hints_revealed, close.hints_revealed);
}

}  // namespace Kest
