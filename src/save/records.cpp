#include "save/records.h"

#include "json_file.h"
#include "save/firmware_files.h"

namespace Kest {
namespace {

namespace fs = std::filesystem;

// What stands there, or something empty in place of anything else.
json::Value OfKind(const json::Value& value, json::Kind kind) {
    return value.kind == kind ? value : json::Value(kind);
}

fs::path HistoryPath(const fs::path& data_folder) {
    return data_folder / "history.json";
}

json::Value Entry(const Close& close) {
    json::Value entry(json::Kind::Object);
    json::Set(entry, "lines", json::Value(close.lines));
    json::Set(entry, "ticks", json::Value(close.ticks));
    json::Set(entry, "at", json::Value(static_cast<double>(close.now)));
    return entry;
}

}  // namespace

fs::path RecordPath(const fs::path& data_folder, std::string_view ticket_id, Score score) {
    return FirmwareFile(data_folder, ticket_id,
                        score == Score::Lines ? "best-lines" : "best-ticks");
}

base::Status KeepRecords(base::Disk& disk, const fs::path& data_folder, const Close& close,
                         const Improvement& better, std::string_view firmware) {
    base::Status kept;
    const auto keep = [&](Score score, Against against) {
        const fs::path path = RecordPath(data_folder, close.ticket_id, score);
        const bool missing = against == Against::Equal && !disk.Exists(path);
        if (against != Against::Better && !missing) return;
        base::Status saved = SaveFirmware(disk, path, firmware);
        if (!saved) kept = std::move(saved);
    };
    keep(Score::Lines, better.lines);
    keep(Score::Ticks, better.ticks);
    return kept;
}

base::Status AddToHistory(base::Disk& disk, const fs::path& data_folder, const Close& close) {
    const fs::path path = HistoryPath(data_folder);
    json::Value file = ReadObject(disk, path).value_or(json::Value(json::Kind::Object));
    if (!json::Has(file, "version")) json::Set(file, "version", json::Value(1));
    json::Value tickets = OfKind(json::Member(file, "tickets"), json::Kind::Object);
    json::Value passes = OfKind(json::Member(tickets, close.ticket_id), json::Kind::Array);
    std::vector<json::Value>& entries = passes.items;
    entries.push_back(Entry(close));
    if (entries.size() > kHistoryLength) {
        entries.erase(entries.begin(), entries.end() - kHistoryLength);
    }
    json::Set(tickets, close.ticket_id, std::move(passes));
    json::Set(file, "tickets", std::move(tickets));
    return WriteObject(disk, path, file);
}

std::vector<Scores> LoadHistory(base::Disk& disk, const fs::path& data_folder,
                                std::string_view ticket_id) {
    const std::optional<json::Value> file = ReadObject(disk, HistoryPath(data_folder));
    if (!file) return {};
    const json::Value& passes = json::Member(json::Member(*file, "tickets"), ticket_id);
    std::vector<Scores> history;
    for (const json::Value& entry : passes.items) {
        const Scores scores = {json::ToInt(json::Member(entry, "lines").number),
                               json::ToInt(json::Member(entry, "ticks").number)};
        if (scores.lines > 0 && scores.ticks > 0) history.push_back(scores);
    }
    return history;
}

}  // namespace Kest
