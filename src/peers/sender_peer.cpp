#include "sender_peer.h"

#include <algorithm>

#include "base/format.h"
#include "ends_with.h"

namespace kp {
namespace {

using base::Format;

constexpr int kMostSendings = 8;  // of one frame
constexpr Tick kUsualTimeout = 200;

constexpr PlanWord<bool SendingFate::*> kWords[] = {
    {"ok", nullptr},
    {"ack", nullptr},
    {"drop", &SendingFate::lost},
    {"lose_reply", &SendingFate::answer_lost},
    {"lost_ack", &SendingFate::answer_lost},
    {"nak?", &SendingFate::taken_as_nak},
};

bool AddWord(std::string_view word, SendingFate& fate) {
    if (const auto byte = GarbledByte(word)) {
        fate.garbled.push_back(*byte);
        return true;
    }
    const auto mark = FindWord(kWords, word);
    if (!mark) return false;
    if (*mark != nullptr) fate.*(*mark) = true;
    return true;
}

// Words joined with "+": "garble:5+lose_reply".
std::optional<SendingFate> ReadFate(std::string_view words) {
    SendingFate fate;
    while (true) {
        const std::size_t plus = words.find('+');
        if (!AddWord(words.substr(0, plus), fate)) return std::nullopt;
        if (plus == std::string_view::npos) return fate;
        words.remove_prefix(plus + 1);
    }
}

}  // namespace

SenderPeer::SenderPeer(PeerSettings& settings)
    : frames_(settings.Test().frames),
      gap_(settings.Number("gap", 1, 1)),
      pause_(settings.Ticks("pause", 4, 1)),
      timeout_(settings.Ticks("timeout", kUsualTimeout, 0)),
      reply_within_(settings.Ticks("reply_within", 0, 0)),
      answer_after_frame_(settings.Flag("answer_after_frame", false)),
      ack_(settings.Hex("ack", "06")),
      nak_(settings.Hex("nak", "15")),
      plan_(settings, ReadFate),
      rest_until_(settings.Ticks("start", 4, 0)) {
    const auto all = static_cast<std::int32_t>(frames_.size());
    count_ = static_cast<std::size_t>(settings.Number("frames", all, 0, all));
    if (timeout_ == 0) timeout_ = kUsualTimeout;
    if (count_ == 0) phase_ = Phase::Finished;
}

// The line turns round in Act, behind Receive: what the card sends before the frame's last byte has
// come to it is not heard.
void SenderPeer::Act(Tick tick, PeerLink& link) {
    if (phase_ == Phase::Sending && tick > last_byte_) Listen();
    if (phase_ == Phase::Listening && tick >= last_byte_ + timeout_) HearNothing(tick, link);
    if (phase_ == Phase::Resting && tick >= rest_until_) SendFrame(tick, link);
}

void SenderPeer::SendFrame(Tick tick, PeerLink& link) {
    ++sendings_;
    fate_ = plan_.Next();
    const Bytes& frame = frames_[frame_];
    if (fate_.lost || frame.empty()) {
        last_byte_ = tick;
        return Listen();
    }
    Bytes bytes = frame;
    for (const std::size_t struck : fate_.garbled) Garble(bytes, struck);
    const Tick first = std::max(tick, link.LineFreeAt());
    last_byte_ = link.Send(tick, bytes, gap_);
    phase_ = Phase::Sending;
    NoteSending(first, bytes != frame, link);
    OpenWindows(first, link);
}

void SenderPeer::NoteSending(Tick first, bool damaged, PeerLink& link) const {
    const char* how = damaged ? ", damaged in transit" : sendings_ > 1 ? " again" : "";
    link.Note(first, Format("Frame %d%s", Number(), how));
}

void SenderPeer::OpenWindows(Tick first, PeerLink& link) const {
    const std::string what = Format("the answer to frame %d", Number());
    if (answer_after_frame_) link.Expect(WindowKind::Earliest, last_byte_ + 1, what, first);
    if (reply_within_ == 0) return;
    link.Expect(WindowKind::Deadline, last_byte_ + reply_within_, what,
                answer_after_frame_ ? first : last_byte_);
}

void SenderPeer::Listen() {
    phase_ = Phase::Listening;
    heard_.clear();
}

void SenderPeer::Rest(Tick until) {
    phase_ = Phase::Resting;
    rest_until_ = until;
}

void SenderPeer::Receive(Tick tick, std::uint8_t byte, PeerLink& link) {
    if (phase_ != Phase::Listening) return;
    heard_.push_back(byte);
    if (EndsWith(heard_, ack_)) {
        HearAnswer(tick, Answer::Ack, link);
    } else if (EndsWith(heard_, nak_)) {
        HearAnswer(tick, Answer::Nak, link);
    }
}

void SenderPeer::HearAnswer(Tick tick, Answer answer, PeerLink& link) {
    if (fate_.answer_lost) {
        const char* name = answer == Answer::Ack ? "ACK" : "NAK";
        link.Note(tick, Format("The %s for frame %d was lost on the line", name, Number()));
        return heard_.clear();
    }
    if (answer == Answer::Ack && !fate_.taken_as_nak) return NextFrame(tick);
    if (GivesUp(tick, link)) return;
    link.Note(tick, Format("NAK received; sending frame %d again", Number()));
    Rest(tick + pause_);
}

void SenderPeer::HearNothing(Tick tick, PeerLink& link) {
    if (GivesUp(tick, link)) return;
    link.Note(tick, Format("No answer to frame %d; sending it again", Number()));
    Rest(tick);
}

bool SenderPeer::GivesUp(Tick tick, PeerLink& link) {
    if (sendings_ < kMostSendings) return false;
    link.Note(tick, Format("Frame %d is given up after %d sendings", Number(), kMostSendings));
    NextFrame(tick);
    return true;
}

void SenderPeer::NextFrame(Tick tick) {
    sendings_ = 0;
    Rest(tick + pause_);
    if (++frame_ == count_) phase_ = Phase::Finished;
}

Tick SenderPeer::NextAct() const {
    switch (phase_) {
        case Phase::Resting:
            return rest_until_;
        case Phase::Sending:
            return last_byte_ + 1;
        case Phase::Listening:
            return last_byte_ + timeout_;
        case Phase::Finished:
            break;
    }
    return kNever;
}

}  // namespace kp
