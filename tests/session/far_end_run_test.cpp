#include <algorithm>

#include "rig.h"

// Each folder of far_ends is a small ticket. `run.txt` is the whole conversation between the far
// end and pass.lc1, which goes to the limits of every window; the other firmware breaks one rule
// each and opens with the sentence that the player must read: "; fails Tick 20: ...".

namespace {

using base::Format;
using kp::Tick;
using support::ReadText;
using support::Rig;

// Bytes, notes and windows by their ticks.
std::string Conversation(const kp::Session& session) {
    std::vector<std::pair<Tick, std::string>> lines;
    for (const kp::TraceEvent& event : session.Trace()) {
        if (event.kind == kp::Happening::Transmitted) {
            lines.emplace_back(event.tick, Format("card sends $%02X", event.value));
        } else if (event.kind == kp::Happening::Received) {
            lines.emplace_back(event.tick, Format("far end's $%02X arrives", event.value));
        }
    }
    for (const kp::FarEndNote& note : session.Notes()) {
        lines.emplace_back(note.tick, "note: " + note.text);
    }
    for (const kp::TimingWindow& window : session.Windows()) {
        const bool deadline = window.kind == kp::WindowKind::Deadline;
        lines.emplace_back(
            window.from,
            Format("%s %u: ", deadline ? "due by" : "not before", window.until) + window.what);
    }
    lines.emplace_back(session.Verdict().tick, "passed");
    const auto by_tick = [](const auto& a, const auto& b) { return a.first < b.first; };
    std::stable_sort(lines.begin(), lines.end(), by_tick);
    std::string text;
    for (const auto& [tick, line] : lines) text += Format("%4u  ", tick) + line + "\n";
    return text;
}

std::string ClaimOf(const std::string& firmware) {
    constexpr std::string_view kOpening = "; fails ";
    REQUIRE(firmware.starts_with(kOpening));
    return firmware.substr(kOpening.size(), firmware.find('\n') - kOpening.size());
}

void CheckFolder(const std::string& folder) {
    Rig right(ReadText(folder + "/ticket.json"), ReadText(folder + "/pass.lc1"));
    CHECK(right.Run().message.empty());
    const kp::ExpectedOutput expected = {right.session.Transmitted(), right.session.Delivered()};
    CHECK(right.Run(&expected).message.empty());
    CHECK(Conversation(right.session) == ReadText(folder + "/run.txt"));
    for (const std::string& name : support::NamesIn(folder)) {
        if (!name.starts_with("fail-")) continue;
        CAPTURE(name);
        const std::string firmware = ReadText(folder + "/" + name);
        right.Load(firmware);
        CHECK(right.Run(&expected).message == ClaimOf(firmware));
    }
}

}  // namespace

TEST_CASE("far ends talk to right firmware as written, and catch wrong firmware by name") {
    for (const std::string& name : support::NamesIn("session/far_ends")) {
        CAPTURE(name);
        CheckFolder("session/far_ends/" + name);
    }
}
