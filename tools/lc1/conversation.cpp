#include "conversation.h"

#include <array>
#include <map>
#include <string>

#include "base/format.h"
#include "card/byte_text.h"
#include "text.h"

namespace lc1 {
namespace {

enum Column : std::uint8_t { kTick, kLine, kToFarEnd, kToCard, kHost, kTimer, kNotes, kColumns };

// How a happening reads; the text stands before its byte.
struct Wording {
    Column column;
    std::string_view text;
    bool has_byte = false;
};
constexpr std::array<Wording, 13> kWordings = {{
    // in the order of Happening
    {kToFarEnd, "", true},
    {kToCard, "", true},
    {kToCard, "rx ", true},
    {kToCard, "lost ", true},
    {kHost, "hin ", true},
    {kHost, "hout ", true},
    {kTimer, "set to "},
    {kTimer, "stopped"},
    {kTimer, "ran out"},
    {kTimer, "target taken"},
    {kNotes, "the card halts"},
    {kNotes, "the card faults"},
    {kNotes, "past the last line, back to the first"},
}};
static_assert(kWordings.size() == static_cast<std::size_t>(kp::Happening::Wrapped) + 1);

constexpr std::uint16_t kEndOfMessage = 0xFFFF;

using Cells = std::vector<std::string>;

void AddTo(std::string& cell, std::string_view text) {
    if (!cell.empty()) cell += ", ";
    cell += text;
}

std::string EventText(const kp::TraceEvent& event) {
    const Wording& wording = kWordings[static_cast<std::size_t>(event.kind)];
    std::string text(wording.text);
    if (event.kind == kp::Happening::ReadHost && event.value == kEndOfMessage) return text + "end";
    if (wording.has_byte) text += kp::NoteByte(static_cast<std::uint8_t>(event.value));
    if (event.kind == kp::Happening::TimerStarted) text += std::to_string(event.value);
    return text;
}

std::string WindowText(const kp::TimingWindow& window) {
    const char* rule =
        window.kind == kp::WindowKind::Deadline ? " due by tick " : " not before tick ";
    return window.what + rule + std::to_string(window.until);
}

}  // namespace

void PrintConversation(const kp::Session& session, bool colour) {
    std::map<kp::Tick, Cells> rows;
    const auto row = [&](kp::Tick tick) -> Cells& {
        Cells& cells = rows.try_emplace(tick, kColumns).first->second;
        cells[kTick] = std::to_string(tick);
        return cells;
    };
    for (const kp::TraceEvent& event : session.Trace()) {
        Cells& cells = row(event.tick);
        AddTo(cells[kWordings[static_cast<std::size_t>(event.kind)].column], EventText(event));
        if (event.line != 0) cells[kLine] = std::to_string(event.line);
    }
    for (const kp::FarEndNote& note : session.Notes()) AddTo(row(note.tick)[kNotes], note.text);
    for (const kp::TimingWindow& window : session.Windows()) {
        AddTo(row(window.from)[kNotes], WindowText(window));
    }
    using enum TextTable::Align;
    TextTable table({{"tick", Right},
                     {"line", Right},
                     {"card to far end"},
                     {"far end to card"},
                     {"host"},
                     {"timer"},
                     {"notes"}});
    for (auto& [tick, cells] : rows) table.Add(std::move(cells), Ink::Dim);
    table.Print(colour);
}

}  // namespace lc1
