#include "bench/coach.h"

#include <algorithm>
#include <vector>

#include "base/format.h"
#include "card/assembler.h"
#include "card/instructions.h"

namespace Kest {
namespace {

constexpr int kSteppingStage = 1;  // so too test switching and the card's key

std::string PressThenType(const CoachSight& sight) {
    return "Press i, then type " + std::string(sight.ghost);
}

// Whether the second test is to be run on the way to the verify.
bool WantsSecond(const CoachSight& sight) {
    return sight.stage >= kSteppingStage && sight.tests > 1 && !sight.second_run;
}

// The step of a first ticket's course.
std::string_view StepFor(const CoachSight& sight) {
    const bool steps = sight.stage >= kSteppingStage;
    if (!sight.has_instructions) return "first";
    if (!sight.is_right) return steps ? "first-step" : "first-run";
    if (!sight.first_passed) return steps ? "solved" : "solved-run";
    if (!WantsSecond(sight)) return "ready";
    return sight.second_chosen ? "" : "test2";
}

// The names of the reference's instructions, each once.
std::vector<std::string_view> NamesIn(const kp::LoadedTicket& loaded) {
    std::vector<std::string_view> names;
    const kp::Assembly assembly = kp::Assemble(loaded.reference_text, loaded.ticket.machine);
    for (const kp::Instruction& instruction : assembly.instructions) {
        const std::string_view name = kp::Info(instruction.op).name;
        if (std::ranges::count(names, name) == 0) names.push_back(name);
    }
    return names;
}

}  // namespace

std::string CoachLine(const kp::CoachEntry& entry, const CoachSight& sight) {
    const bool has_course = !entry.steps.empty();
    const bool invites = has_course ? !sight.has_instructions : !sight.ghost.empty();
    if (sight.commands && invites && !sight.ghost.empty()) return PressThenType(sight);
    if (has_course) {
        if (const std::string_view text = entry.Step(StepFor(sight)); !text.empty()) {
            return std::string(text);
        }
    }
    const bool steps = sight.stage >= kSteppingStage;
    if (sight.is_right && sight.first_passed) {
        if (!WantsSecond(sight)) return "F8 Verify.";
        if (!sight.second_chosen) return base::Format("Ctrl+PgDn: test 2 of %zu", sight.tests);
    }
    if (sight.is_right) return "F5 Run.";
    if (entry.step && steps) return sight.stepped ? "F6 Step again." : "F6 Step: one line.";
    if (entry.register_name == "a" && steps) return "F6 Step. CARD shows register a.";
    if (sight.card_hidden && steps) return "F2 Card.";
    if (entry.mark == "host-in") return "HOST IN: hin reads each byte.";
    return {};
}

std::string GhostOf(const kp::CoachEntry& entry, const kp::LoadedTicket& loaded) {
    if (!entry.ghost.empty() || entry.steps.empty()) return entry.ghost;
    return loaded.reference_text.substr(0, loaded.reference_text.find('\n'));
}

std::string NewInstructions(const kp::Content& content, const kp::LoadedTicket& loaded) {
    std::vector<std::string_view> names = NamesIn(loaded);
    for (const kp::LoadedTicket* before : content.Tickets()) {
        if (before == &loaded) break;
        for (const std::string_view name : NamesIn(*before)) std::erase(names, name);
    }
    std::string chips;
    for (const std::string_view name : names) chips += " " + std::string(name) + " ";
    return chips;
}

}  // namespace Kest
