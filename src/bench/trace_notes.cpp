#include "bench/trace_notes.h"

#include <algorithm>

#include "base/format.h"
#include "card/byte_text.h"
#include "ticket/labels.h"
#include "trace_drawing.h"

namespace Kest {
namespace {

using base::Format;
using kp::Happening;
using kp::Tick;

constexpr std::size_t kMostNotes = 40;

std::string NoteOf(std::uint16_t value) {
    return kp::NoteByte(static_cast<std::uint8_t>(value));
}

// What verdicts call otherwise.
std::string StateWord(kp::CardState state) {
    if (state == kp::CardState::InWait) return "in a wait";
    if (state == kp::CardState::Faulted) return "faulted";
    return std::string(kp::StateName(state));
}

// Gathers the sentences of one look at the trace.
class NoteTaker {
public:
    NoteTaker(const TraceData& trace, const kp::ExpectedOutput& expected,
              const std::optional<kp::FrameFormat>& frame, const TickRange& ticks)
        : trace_(trace), expected_(expected), frame_(frame), ticks_(ticks) {
        const auto tick_of = &kp::TraceEvent::tick;
        const auto from = std::ranges::lower_bound(trace.events, ticks.first, {}, tick_of);
        const auto to = std::ranges::upper_bound(trace.events, ticks.last, {}, tick_of);
        events_ = {from, to};
    }

    std::vector<std::string> Take() {
        Events(Happening::Transmitted);
        Events(Happening::Received);
        Events(Happening::LostByte);
        Events(Happening::ReadHost);
        Events(Happening::Delivered);
        Events(Happening::TimerStarted);
        Events(Happening::TimerRanOut);
        Events(Happening::TookTarget);
        Card();
        FarEnd();
        Specification();
        if (notes_.size() > kMostNotes) {
            const std::size_t more = notes_.size() - kMostNotes;
            notes_.resize(kMostNotes);
            notes_.push_back(Format("and %zu more", more));
        }
        return std::move(notes_);
    }

private:
    void Add(std::string sentence) { notes_.push_back(std::move(sentence)); }
    void Happened(Tick tick, const std::string& what) { Add(Format("Tick %u: ", tick) + what); }

    void Events(Happening kind) {
        for (const kp::TraceEvent& event : events_) {
            if (event.kind == kind) Event(event);
        }
    }

    void Event(const kp::TraceEvent& event) {
        switch (event.kind) {
            case Happening::Transmitted:
                return Happened(event.tick,
                                "transmitted " + NoteOf(event.value) + " as " +
                                    kp::LabelOf(expected_.transmitted, event.index, frame_) + "." +
                                    CalledFor(event, trace_.to_transmit));
            case Happening::Received:
                return Happened(event.tick, "received " + NoteOf(event.value) + ".");
            case Happening::LostByte:
                return Happened(event.tick, "received " + NoteOf(event.value) +
                                                " into a full buffer and lost it.");
            case Happening::ReadHost:
                return Happened(event.tick, event.value == 0xFFFF
                                                ? "hin read -1, the end of a message."
                                                : "hin read " + NoteOf(event.value) + ".");
            case Happening::Delivered:
                return Happened(event.tick, "delivered " + NoteOf(event.value) + " to the host." +
                                                CalledFor(event, trace_.to_deliver));
            case Happening::TimerStarted:
                return Add(Format("Timer started at tick %u for %u ticks.", event.tick,
                                  static_cast<unsigned>(event.value)));
            case Happening::TimerRanOut:
                return Happened(event.tick, "the timer ran out.");
            case Happening::TookTarget:
                return Happened(event.tick, "the timeout target was taken.");
            default:
                return;
        }
    }

    static std::string CalledFor(const kp::TraceEvent& event, std::span<const SpecByte> stream) {
        if (!TraceDrawing::IsWrong(event, stream)) return {};
        if (event.index >= stream.size()) return " The specification calls for no more bytes.";
        return " The specification calls for " + kp::NoteByte(stream[event.index].byte) + ".";
    }

    // Of several ticks, the most telling state.
    void Card() {
        const CardTick* most = nullptr;
        for (std::size_t tick = ticks_.first; tick <= ticks_.last && tick < trace_.card.size();
             ++tick) {
            const CardTick& one = trace_.card[tick];
            if (most == nullptr || RankOf(one.state) > RankOf(most->state)) most = &one;
        }
        if (most == nullptr) return;
        std::string text = RangeText(ticks_) + ": the card was " + StateWord(most->state);
        if (most->line > 0) text += Format(", line %u", static_cast<unsigned>(most->line));
        Add(text + ".");
    }

    // A far end may announce what the run has not come to.
    void FarEnd() {
        for (const kp::FarEndNote& note : trace_.notes) {
            if (!ticks_.Has(note.tick) || note.tick >= trace_.card.size()) continue;
            Add(Format("Far end, tick %u: ", note.tick) + note.text + ".");
        }
    }

    void Specification() {
        const std::size_t before = notes_.size();
        for (std::size_t i = 0; i < trace_.to_transmit.size(); ++i) {
            if (ticks_.Has(trace_.to_transmit[i].tick)) ToTransmit(i);
        }
        for (std::size_t i = 0; i < trace_.to_deliver.size(); ++i) {
            if (!ticks_.Has(trace_.to_deliver[i].tick)) continue;
            Add("Specification: deliver " + kp::NoteByte(trace_.to_deliver[i].byte) +
                Format(" to the host as byte %zu.", i + 1));
        }
        const bool named = notes_.size() > before;
        for (const kp::TimingWindow& window : trace_.windows) {
            if (!Shows(window)) continue;
            // The byte that the window waits for, when its own tick is another.
            if (!named && notes_.size() == before) ToTransmit(SentBy(ticks_.last));
            if (window.kind == kp::WindowKind::Earliest) {
                Add(Format("Not before tick %u", window.until));
            } else {
                Add("Deadline: " + window.what + Format(" by tick %u", window.until));
            }
        }
    }

    void ToTransmit(std::size_t index) {
        if (index >= trace_.to_transmit.size()) return;
        const SpecByte& byte = trace_.to_transmit[index];
        Add("Specification: " + kp::NoteByte(byte.byte) + " as " +
            kp::LabelOf(expected_.transmitted, index, frame_) +
            Format(". The reference sent it at tick %u.", byte.tick));
    }

    // Whether one of the window's brackets stands on these ticks.
    bool Shows(const kp::TimingWindow& window) const {
        if (ticks_.Has(window.until)) return true;
        return window.kind == kp::WindowKind::Deadline &&
               ticks_.Has(DeadlineOpens(trace_.events, window));
    }

    std::size_t SentBy(Tick tick) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(trace_.events, [tick](const kp::TraceEvent& event) {
                return event.kind == Happening::Transmitted && event.tick <= tick;
            }));
    }

    const TraceData& trace_;
    const kp::ExpectedOutput& expected_;
    const std::optional<kp::FrameFormat>& frame_;
    TickRange ticks_;
    std::span<const kp::TraceEvent> events_;
    std::vector<std::string> notes_;
};

}  // namespace

std::string RangeText(const TickRange& ticks) {
    return ticks.first == ticks.last ? Format("Tick %u", ticks.first)
                                     : Format("Ticks %u to %u", ticks.first, ticks.last);
}

std::vector<std::string> NotesOf(const TraceData& trace, const kp::ExpectedOutput& expected,
                                 const std::optional<kp::FrameFormat>& frame,
                                 const TickRange& ticks) {
    return NoteTaker(trace, expected, frame, ticks).Take();
}

}  // namespace Kest
