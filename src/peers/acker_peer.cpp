#include "acker_peer.h"

#include <algorithm>

#include "card/byte_text.h"
#include "ticket/hex.h"
#include "windows.h"

namespace kp {
namespace {

constexpr Tick kLateness = 20;  // of an ACK that comes late

constexpr PlanWord<AckerFate::Kind> kWords[] = {
    {"ack", AckerFate::Ack},          {"ok", AckerFate::Ack},
    {"ack_late", AckerFate::AckLate}, {"nak", AckerFate::Nak},
    {"garble", AckerFate::Nak},       {"busy", AckerFate::Busy},
    {"drop", AckerFate::LostAck},     {"lost_ack", AckerFate::LostAck},
    {"ignore", AckerFate::Ignore},
};
constexpr std::string_view kSay = "say:";

std::optional<AckerFate> ReadFate(std::string_view word) {
    if (word.starts_with(kSay)) {
        const std::optional<Bytes> words = ReadHex(word.substr(kSay.size()));
        if (!words || words->empty()) return std::nullopt;
        return AckerFate{AckerFate::Say, *words};
    }
    const std::optional<AckerFate::Kind> kind = FindWord(kWords, word);
    if (!kind) return std::nullopt;
    return AckerFate{*kind, {}};
}

bool Is(const Bytes& command, std::uint8_t byte) {
    return command.size() == 1 && command.front() == byte;
}

std::string NoteBytes(const Bytes& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += NoteByte(byte);
    }
    return text.empty() ? "nothing" : text;
}

}  // namespace

AckerPeer::AckerPeer(PeerSettings& settings)
    : ack_(settings.Hex("ack", "06")),
      nak_(settings.Hex("nak", "15")),
      busy_(settings.Hex("busy", "18")),
      delay_(settings.Ticks("delay", 2, 1)),
      plan_(settings, ReadFate),
      answers_with_flags_(settings.Flag("ack_seq", false)),
      retry_after_(settings.Retry("retry_after")),
      nak_retry_within_(settings.Ticks("nak_retry_within", 0, 0)),
      frames_(settings.Number("frames", static_cast<int>(settings.Test().host.size()), 0)),
      backoff_(settings.TickList("backoff")),
      backoff_slack_(settings.Ticks("backoff_slack", 0, 0)),
      commands_(settings.HexPairs("answers")),
      final_(settings.Hex("final", "")),
      decoder_(settings.Ticket().frame) {}

void AckerPeer::Act(Tick tick, PeerLink&) {
    now_ = tick;
}

bool AckerPeer::Done() const {
    return acknowledged_ >= frames_ && (final_.empty() || now_ >= closed_at_);
}

Tick AckerPeer::NextAct() const {
    return now_ < closed_at_ ? closed_at_ : kNever;
}

// Commands come first: a format without a sync would take them for the beginning of a frame.
void AckerPeer::Receive(Tick tick, std::uint8_t byte, PeerLink& link) {
    if (decoder_.Idle() && IsCommand(byte)) return HearCommand(tick, byte, link);
    switch (decoder_.Take(byte)) {
        case FrameDecoder::Place::Outside:
            return HearCommand(tick, byte, link);
        case FrameDecoder::Place::Inside:
            return;
        case FrameDecoder::Place::Last:
            return HearFrame(tick, link);
    }
}

bool AckerPeer::IsCommand(std::uint8_t byte) const {
    return AnswerTo(byte) != nullptr || Is(final_, byte);
}

const Bytes* AckerPeer::AnswerTo(std::uint8_t command) const {
    for (const auto& [bytes, answer] : commands_) {
        if (Is(bytes, command)) return &answer;
    }
    return nullptr;
}

void AckerPeer::HearCommand(Tick tick, std::uint8_t command, PeerLink& link) {
    Tick answered = tick;
    if (const Bytes* answer = AnswerTo(command)) {
        answered = link.Send(tick + delay_, *answer, 1);
        link.Note(answered, "Answered " + NoteByte(command) + " with " + NoteBytes(*answer));
    }
    if (Is(final_, command)) closed_at_ = std::min(closed_at_, answered);
}

void AckerPeer::HearFrame(Tick tick, PeerLink& link) {
    ++received_;
    const AckerFate fate = plan_.Next();
    AckerFate::Kind kind = fate.kind;
    const bool acknowledges = kind == AckerFate::Ack || kind == AckerFate::AckLate;
    if (acknowledges && !decoder_.Intact()) kind = AckerFate::Nak;
    if (kind != AckerFate::Busy) busy_in_a_row_ = 0;
    switch (kind) {
        case AckerFate::Ack:
            ++acknowledged_;
            Answer(tick + delay_, ack_, link);
            return;
        case AckerFate::AckLate:
            ++acknowledged_;
            link.Note(Answer(tick + delay_ + kLateness, ack_, link),
                      "The ACK for " + Frame() + " is late");
            return;
        case AckerFate::Nak:
            return Refuse(tick, link);
        case AckerFate::Busy:
            return PutOff(tick, link);
        case AckerFate::LostAck:
            link.Note(tick + delay_, "The ACK for " + Frame() + " was lost on the line");
            return ExpectAgain(tick, link);
        case AckerFate::Ignore:
            return ExpectAgain(tick, link);
        case AckerFate::Say:
            link.Note(link.Send(tick + delay_, fate.words, 1),
                      "Answered " + Frame() + " with " + NoteBytes(fate.words));
            return ExpectAgain(tick, link);
    }
}

void AckerPeer::Refuse(Tick tick, PeerLink& link) {
    const Tick answered = Answer(tick + delay_, nak_, link);
    link.Note(answered, "Line noise damaged " + Frame() + " on the way in");
    if (nak_retry_within_ == 0) return;
    link.Expect(WindowKind::Deadline, answered + nak_retry_within_,
                "the retransmission after the NAK of " + Frame(), answered);
}

void AckerPeer::PutOff(Tick tick, PeerLink& link) {
    const Tick answered = Answer(tick + delay_, busy_, link);
    link.Note(answered, "BUSY " + Frame());
    if (backoff_.empty()) return;
    const Tick pause = backoff_[std::min(busy_in_a_row_++, backoff_.size() - 1)];
    ExpectBetween(link, answered + pause, answered + pause + backoff_slack_,
                  "the retry after BUSY to " + Frame(), answered);
}

void AckerPeer::ExpectAgain(Tick tick, PeerLink& link) const {
    if (!retry_after_.Set()) return;
    ExpectBetween(link, tick + retry_after_.first, tick + retry_after_.last,
                  "the retransmission of " + Frame(), tick);
}

Tick AckerPeer::Answer(Tick tick, const Bytes& bytes, PeerLink& link) const {
    const std::optional<std::uint8_t> flags = decoder_.Flags();
    if (!answers_with_flags_ || !flags) return link.Send(tick, bytes, 1);
    Bytes answer = bytes;
    answer.push_back(*flags);
    return link.Send(tick, answer, 1);
}

// As notes and windows name the frame heard last.
std::string AckerPeer::Frame() const {
    return "frame " + std::to_string(received_);
}

}  // namespace kp
