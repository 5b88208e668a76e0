#include "content/coach.h"

namespace kp {
namespace {

constexpr std::string_view kCoachFile = "missions/coach.json";

CoachEntry ReadEntry(const std::string& ticket, json::Fields fields) {
    CoachEntry entry;
    entry.ticket = ticket;
    entry.lines = fields.Texts("lines");
    entry.ghost = fields.Text("ghost");
    entry.mark = fields.Text("mark");
    entry.register_name = fields.Text("register");
    entry.limit = fields.Text("limit");
    entry.chips = fields.Flag("chips", false);
    entry.step = fields.Flag("step", false);
    entry.bytes = fields.Flag("bytes", false);
    json::Fields steps = fields.Object("steps");
    for (const CoachStep& step : kCoachSteps) {
        std::string text = steps.Text(step.name);
        if (!text.empty()) entry.steps.emplace_back(step.name, std::move(text));
    }
    steps.RemarkUnknown();
    fields.RemarkUnknown();
    return entry;
}

}  // namespace

std::string_view CoachEntry::Step(std::string_view name) const {
    for (const auto& [step_name, text] : steps) {
        if (step_name == name) return text;
    }
    return {};
}

base::Result<std::vector<CoachEntry>> LoadCoach(const ContentStore& store, json::Remarks* remarks) {
    std::vector<CoachEntry> entries;
    if (!store.Holds(kCoachFile)) return entries;
    const base::Result<json::Value> file = store.ReadJson(kCoachFile);
    if (!file) return base::Failure{file.Message()};
    json::Fields coach(*file, remarks,
                       remarks != nullptr ? std::string(kCoachFile) : std::string());
    for (const auto& member : file->members) {
        entries.push_back(ReadEntry(member.first, coach.Object(member.first)));
    }
    return entries;
}

}  // namespace kp
