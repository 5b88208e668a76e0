// The trace of a run, drawn as cells. A case of traces.txt writes the run down,
//
//     card 61 running              so many more ticks in a state
//     sent 22 C1                   a byte as called for; `spec` and `transmitted` are its halves
//     delivered 112 06             and other happenings, with what they carry
//     deadline 63 87 done          a window, which is settled
//     earliest 0 6
//     note 4 noise
//     failed 105
//     cursor 63
//
// and says how it looks:
//
//     view 50 0 71                 the first tick, the closeness and the width
//     draw SPEC TX, CARD           the lanes under the row of ticks
//     cell 3 TX: lane.tx           the role of a lane's column, and its style unless it is plain
//     notes 63 63                  what is said of these ticks

#include "bench/trace_cells.h"

#include <algorithm>

#include "base/utf.h"
#include "bench/trace_notes.h"
#include "support/cases.h"

using namespace Kest;
using kp::Happening;

namespace {

constexpr std::pair<std::string_view, Happening> kHappenings[] = {
    {"transmitted", Happening::Transmitted},
    {"received", Happening::Received},
    {"lost", Happening::LostByte},
    {"read-host", Happening::ReadHost},
    {"delivered", Happening::Delivered},
    {"timer-started", Happening::TimerStarted},
    {"timer-stopped", Happening::TimerStopped},
    {"timer-ran-out", Happening::TimerRanOut},
    {"timeout", Happening::TookTarget},
};

constexpr Lane kLanes[] = {Lane::SpecTx,  Lane::Tx,      Lane::Rx,    Lane::HostIn,
                           Lane::HostOut, Lane::SpecOut, Lane::Timer, Lane::Card};

Lane LaneNamed(std::string_view name) {
    const auto* lane = std::ranges::find(kLanes, name, [](Lane one) { return Info(one).name; });
    REQUIRE(lane != std::end(kLanes));
    return *lane;
}

// A run to draw: what it keeps is what TraceData only views.
struct Recording {
    std::vector<kp::TraceEvent> events;
    std::vector<kp::TimingWindow> windows;
    std::vector<kp::FarEndNote> notes;
    std::vector<CardTick> card;
    std::vector<SpecByte> spec;
    std::vector<SpecByte> spec_out;
    std::optional<kp::Tick> failed;
    std::optional<kp::Tick> cursor;
    TraceView view = {};
    int width = 71;

    TraceCells Drawn(std::span<const Lane> lanes) const {
        TraceCells cells;
        cells.Draw(Data(), lanes, view, width);
        return cells;
    }

    TraceData Data() const {
        return {events, windows, notes, card, spec, spec_out, failed, cursor};
    }

    // The bytes to send are house frames.
    std::string Notes(const TickRange& ticks) const {
        const kp::FrameFormat house{
            .sync = {0xC1, 0x67}, .length = true, .check = kp::Check::Crc16};
        kp::ExpectedOutput expected;
        for (const SpecByte& byte : spec) expected.transmitted.push_back(byte.byte);
        std::string text = RangeText(ticks) + "\n";
        for (const std::string& note : NotesOf(Data(), expected, house, ticks)) text += note + "\n";
        return text;
    }

    std::string Picture(std::string_view names) const {
        std::vector<Lane> lanes;
        while (!names.empty()) lanes.push_back(LaneNamed(support::Cut(names, ", ")));
        const TraceCells cells = Drawn(lanes);
        std::string text;
        for (int row = 0; row < cells.Rows(); ++row) {
            std::string line;
            for (const TraceCell& cell : cells.Row(row)) base::AppendUtf8(line, cell.glyph);
            line.erase(line.find_last_not_of(' ') + 1);
            text += line + "\n";
        }
        return text;
    }

    std::string CellOf(Lane lane, std::size_t column) const {
        const TraceCell cell = Drawn(std::span(&lane, 1)).Row(1)[column];
        const bool plain = cell.style == zo::ui::Style::Plain;
        return std::string(zo::ui::RoleName(cell.role)) + (plain ? "" : " underlined");
    }

    bool Happen(std::string_view name, kp::Tick tick, int value) {
        const auto* found =
            std::ranges::find(kHappenings, name, &std::pair<std::string_view, Happening>::first);
        if (found == std::end(kHappenings)) return false;
        const auto index = std::ranges::count(events, found->second, &kp::TraceEvent::kind);
        events.push_back({tick, static_cast<std::uint16_t>(value),
                          static_cast<std::uint16_t>(index), 0, found->second});
        std::ranges::stable_sort(events, {}, &kp::TraceEvent::tick);
        return true;
    }

    void RunFor(kp::Tick ticks, std::string_view state) {
        CardTick tick = {kp::CardState::Running, 1};
        while (kp::StateName(tick.state) != state) {
            REQUIRE(tick.state != kp::CardState::Faulted);
            tick.state = static_cast<kp::CardState>(static_cast<int>(tick.state) + 1);
        }
        card.resize(card.size() + ticks, tick);
    }
};

void Play(Recording& run, const support::Step& step) {
    std::string_view rest = step.value;
    const auto number = [&](int base = 10) {
        const std::string word(support::Cut(rest, " "));
        return word.empty() ? 0 : std::stoi(word, nullptr, base);
    };
    const auto tick = [&] { return static_cast<kp::Tick>(number()); };
    const auto byte = [&] { return static_cast<std::uint8_t>(number(16)); };
    if (step.key == "draw") {
        CHECK(run.Picture(step.value) == step.text);
    } else if (step.key == "cell") {
        const int column = number();
        const Lane lane = LaneNamed(support::Cut(rest, ": "));
        CHECK(run.CellOf(lane, static_cast<std::size_t>(column)) == rest);
    } else if (step.key == "view") {
        run.view = {tick(), number()};
        run.width = number();
    } else if (step.key == "card") {
        const kp::Tick ticks = tick();
        run.RunFor(ticks, rest);
    } else if (step.key == "spec") {
        run.spec.push_back({tick(), byte()});
    } else if (step.key == "spec-out") {
        run.spec_out.push_back({tick(), byte()});
    } else if (step.key == "sent") {
        run.spec.push_back({tick(), byte()});
        run.Happen("transmitted", run.spec.back().tick, run.spec.back().byte);
    } else if (step.key == "earliest" || step.key == "deadline") {
        const bool earliest = step.key == "earliest";
        const auto kind = earliest ? kp::WindowKind::Earliest : kp::WindowKind::Deadline;
        const kp::Tick from = tick();
        const kp::Tick until = tick();
        run.windows.push_back({kind, from, until, rest == "done", "the retry"});
    } else if (step.key == "note") {
        const kp::Tick at = tick();
        run.notes.push_back({at, std::string(rest), 0});
    } else if (step.key == "failed") {
        run.failed = tick();
    } else if (step.key == "cursor") {
        run.cursor = tick();
    } else if (step.key == "notes") {
        const kp::Tick first = tick();
        CHECK(run.Notes({first, tick()}) == step.text);
    } else {
        const kp::Tick at = tick();
        if (!run.Happen(step.key, at, number(16))) FAIL("unknown key ", step.key);
    }
}

}  // namespace

TEST_CASE("traces are drawn as written") {
    for (const support::Case& steps : support::Cases("bench/traces.txt")) {
        Recording run;
        for (const support::Step& step : steps) {
            INFO(step.where);
            Play(run, step);
        }
    }
}
