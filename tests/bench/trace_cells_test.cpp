#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/utf.h"
#include "bench/trace_cells.h"

using namespace Kest;
using kp::Happening;
using zo::ui::Role;

namespace {

constexpr int kWidth = 71;

// A run to draw: what it keeps is what TraceData only views.
struct Recording {
    std::vector<kp::TraceEvent> events;
    std::vector<kp::TimingWindow> windows;
    std::vector<kp::FarEndNote> notes;
    std::vector<CardTick> card;
    std::vector<SpecByte> spec;
    std::vector<SpecByte> spec_out;
    std::optional<kp::Tick> failed;

    TraceData Data() const { return {events, windows, notes, card, spec, spec_out, failed}; }

    void Happen(kp::Tick tick, Happening kind, int value) {
        std::uint16_t index = 0;
        for (const kp::TraceEvent& event : events) index += event.kind == kind ? 1 : 0;
        events.push_back({tick, static_cast<std::uint16_t>(value), index, 0, kind});
        std::ranges::stable_sort(events, {}, &kp::TraceEvent::tick);
    }
    // Sent as called for.
    void Send(kp::Tick tick, int byte) {
        spec.push_back({tick, static_cast<std::uint8_t>(byte)});
        Happen(tick, Happening::Transmitted, byte);
    }
    void RunFor(kp::Tick ticks, kp::CardState state = kp::CardState::Running) {
        card.resize(card.size() + ticks, CardTick{state, 1});
    }
};

constexpr Lane kLanes[] = {Lane::SpecTx, Lane::Tx, Lane::Rx, Lane::HostOut, Lane::Card};

// A frame that the far end refuses and the card sends again.
Recording Refused() {
    Recording run;
    const std::pair<kp::Tick, int> first[] = {{22, 0xC1}, {27, 0x67}, {32, 0x03}, {38, 0x4C},
                                              {45, 0x4F}, {52, 0x47}, {59, 0x5D}, {60, 0x49}};
    for (const auto& [tick, byte] : first) run.Send(tick, byte);
    for (const auto& [tick, byte] : first) run.Send(tick + 47, byte);
    run.Happen(63, Happening::Received, 0x15);
    run.Happen(110, Happening::Received, 0x06);
    run.Happen(112, Happening::Delivered, 0x06);
    run.spec_out = {{112, 0x06}};
    run.windows.push_back({kp::WindowKind::Deadline, 63, 87, true, ""});
    run.RunFor(61);
    run.RunFor(2, kp::CardState::WaitingByte);
    run.RunFor(45);
    run.RunFor(2, kp::CardState::WaitingByte);
    run.RunFor(10);
    return run;
}

std::string Picture(const TraceData& data, std::span<const Lane> lanes, const TraceView& view,
                    int width = kWidth) {
    TraceCells cells;
    cells.Draw(data, lanes, view, width);
    std::string text;
    for (int row = 0; row < cells.Rows(); ++row) {
        std::string line;
        for (const TraceCell& cell : cells.Row(row)) base::AppendUtf8(line, cell.glyph);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

Role RoleAt(const Recording& run, Lane lane, int column, const TraceView& view = {}) {
    TraceCells cells;
    cells.Draw(run.Data(), std::span(&lane, 1), view, kWidth);
    return cells.Row(1)[static_cast<std::size_t>(column)].role;
}

}  // namespace

TEST_CASE("the trace draws one run at every closeness") {
    const Recording run = Refused();
    const struct {
        TraceView view;
        std::string_view picture;
    } cases[] = {
        {{50, 0},
         "50      52      54      56      58      60      62      64      66\n"
         "        $47'G'                      $5D $49'I'      [\n"
         "        $47'G'                      $5D $49'I'\n"
         "                                                    $15\n"
         "\n"
         "████████████████████████████████████████████▄▄▄▄▄▄▄▄███████████████████\n"},
        {{50, 1},
         "50             55             60             65             70\n"
         "      $47'G'               5D $49'I'   [                 $C1\n"
         "      $47'G'               5D $49'I'                     $C1\n"
         "                                       $15\n"
         "\n"
         "█████████████████████████████████▄▄▄▄▄▄████████████████████████████████\n"},
        {{50, 2},
         "50        55        60        65        70        75        80\n"
         "    $47'G'        5D$49   [           $C1       $67'g'    $03         •\n"
         "    $47'G'        5D$49'I'            $C1       $67'g'    $03         •\n"
         "                          $15\n"
         "\n"
         "██████████████████████▄▄▄▄█████████████████████████████████████████████\n"},
        {{50, 3},
         "50        60        70        80        90        100       110\n"
         "  $47'G' •49 [     $C1  $67  $03   4C]    $4F'O' $47'G' •$49'I'\n"
         "  $47'G' •$49'I'   $C1  $67  $03   $4C'L' $4F'O' $47'G' •$49'I'\n"
         "             $15                                            $06\n"
         "                                                              $06\n"
         "███████████▄▄█████████████████████████████████████████████▄▄██████████\n"},
        {{20, 4},
         "20        40        60        80        100       120       140\n"
         " • •  •  •  •   •  ••[  •  • •  •]  •  •   ■\n"
         " • •  •  •  •   •  ••   •  • •  •   •  •   ■\n"
         "                     •                       •\n"
         "                                              •\n"
         "████████████████████████████████████████████▄█████\n"},
        {{0, 5},
         "0           50           100         150          200         250\n"
         "     •• •• • ••[ ••• ] •• ■\n"
         "     •• •• • ••• ••• • •• ■\n"
         "               •           •\n"
         "                            •\n"
         "██████████████████████████████\n"},
        {{0, 7},
         "0           200          400         600          800         1000\n"
         " ■■[■]■\n"
         " ■■■■■■\n"
         "   •  •\n"
         "       •\n"
         "████████\n"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.view.level);
        CHECK(Picture(run.Data(), kLanes, c.view) == c.picture);
    }
}

TEST_CASE("the trace shows a timer that runs out, a timeout and a timer that is stopped") {
    constexpr Lane kTimed[] = {Lane::Timer, Lane::HostIn, Lane::Card};
    Recording run;
    run.Happen(1, Happening::ReadHost, 'Q');
    run.Happen(2, Happening::ReadHost, 0xFFFF);
    run.Happen(3, Happening::TimerStarted, 4);
    run.Happen(7, Happening::TimerRanOut, 0);
    run.Happen(7, Happening::TookTarget, 0);
    run.Happen(9, Happening::TimerStarted, 3);
    run.Happen(11, Happening::TimerStopped, 0);
    run.Happen(13, Happening::TimerStarted, 2);
    run.Happen(15, Happening::TimerRanOut, 0);
    run.Happen(18, Happening::TookTarget, 0);
    run.RunFor(5);
    run.RunFor(3, kp::CardState::WaitingHost);
    run.RunFor(4, kp::CardState::InWait);
    run.RunFor(7);
    run.RunFor(1, kp::CardState::Faulted);
    run.RunFor(1, kp::CardState::Halted);
    CHECK(Picture(run.Data(), kTimed, {0, 2}, 44) ==
          "0         5         10        15        20\n"
          "      ├───────┤   ├───┘   ├───┤·····►\n"
          "  51¶\n"
          "██████████▄▄▄▄▄▄░░░░░░░░████████████████\n");
    CHECK(Picture(run.Data(), kTimed, {4, 3}, 20) ==
          "      10        20\n"
          "───┤ ├─┘ ├─┤··►\n"
          "\n"
          "█▄▄▄░░░░████████\n");
    CHECK(RoleAt(run, Lane::Card, 19, {0, 3}) == Role::FaultMark);
    CHECK(RoleAt(run, Lane::Card, 18, {0, 3}) == Role::LaneRun);
}

TEST_CASE("the failing tick is named over its column, and its column is ruled") {
    Recording run = Refused();
    run.failed = 105;
    run.spec[14].tick = 106;
    constexpr Lane kFew[] = {Lane::SpecTx, Lane::Rx, Lane::HostOut};
    CHECK(Picture(run.Data(), kFew, {92, 1}) ==
          "         95             100            FAIL           110\n"
          "$4F'O'               $47'G'            │  5D $49'I'\n"
          "                                       │              $06\n"
          "                                       │                    $06\n");
    // At the right edge the word moves left, and a number that it would cover in part goes.
    CHECK(Picture(run.Data(), std::span(kFew, 1), {92, 1}, 41) ==
          "         95             100          FAIL\n"
          "$4F'O'               $47'G'            │\n");
    CHECK(Picture(run.Data(), std::span(kFew, 1), {104, 3}, 8) ==
          " FAIL\n"
          " │•$49\n");
}

TEST_CASE("wrong, lost, noted and crowded bytes differ in role, sign or style") {
    Recording run;
    run.Send(1, 0x41);
    run.Send(2, 0x42);
    run.spec[1].byte = 0x43;
    run.Happen(4, Happening::Received, 0x15);
    run.Happen(5, Happening::LostByte, 0x16);
    run.notes = {{4, "noise", 0}, {9, "silence", 0}, {10, "not yet", 0}};
    run.RunFor(10);
    CHECK(RoleAt(run, Lane::Tx, 3) == Role::LaneTx);
    CHECK(RoleAt(run, Lane::Tx, 6) == Role::Fault);
    CHECK(RoleAt(run, Lane::Rx, 15) == Role::Fault);
    constexpr Lane kRx[] = {Lane::Rx};
    TraceCells cells;
    cells.Draw(run.Data(), kRx, {}, 30);
    CHECK(cells.Row(1)[12].style == zo::ui::Style::Underline);
    CHECK(Picture(run.Data(), kRx, {}, 30) ==
          "0              5\n"
          "            15 !           ♦\n");
    CHECK(Picture(run.Data(), kRx, {0, 5}, 30) ==
          "0           50           100\n"
          " !♦\n");

    // Bytes of two digits that touch alternate, so that they can be told apart.
    Recording crowd;
    for (kp::Tick tick = 0; tick < 4; ++tick) crowd.Send(tick, 0x41);
    const TraceView view{0, 2};
    CHECK(RoleAt(crowd, Lane::Tx, 0, view) == Role::LaneTx);
    CHECK(RoleAt(crowd, Lane::Tx, 2, view) == Role::LaneAlt);
    CHECK(RoleAt(crowd, Lane::Tx, 4, view) == Role::LaneTx);
    CHECK(RoleAt(crowd, Lane::Tx, 6, view) == Role::LaneTx);  // the last has room for more
}

TEST_CASE("a bracket moves a byte on its tick aside, or shows its presence") {
    Recording run;
    run.spec = {{6, 0x41}};
    run.windows = {{kp::WindowKind::Earliest, 0, 6, false, ""}};
    constexpr Lane kSpec[] = {Lane::SpecTx};
    CHECK(Picture(run.Data(), kSpec, {0, 2}, 30) ==
          "0         5         10\n"
          "            [$41'A'\n");
    CHECK(Picture(run.Data(), kSpec, {0, 3}, 30) ==
          "0         10        20\n"
          "      [\n");
    CHECK(RoleAt(run, Lane::SpecTx, 6, {0, 3}) == Role::LaneAlt);
    // A deadline opens at the earliest two ticks after the byte before it.
    run.Happen(4, Happening::Transmitted, 0x41);
    run.windows = {{kp::WindowKind::Deadline, 4, 9, false, ""}};
    CHECK(Picture(run.Data(), kSpec, {0, 3}, 30) ==
          "0         10        20\n"
          "      [  ]\n");
}
