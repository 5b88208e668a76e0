#include "xmodem_rx_peer.h"

#include <algorithm>
#include <span>

#include "base/format.h"
#include "xmodem.h"

namespace kp {
namespace {

using base::Format;

constexpr PlanWord<BlockReceipt> kWords[] = {
    {"ok", BlockReceipt::Take},
    {"ack", BlockReceipt::Take},
    {"nak", BlockReceipt::Refuse},
    {"garble", BlockReceipt::Refuse},
    {"drop", BlockReceipt::Lost},
    {"lost_ack", BlockReceipt::AckLost},
    {"lose_reply", BlockReceipt::AckLost},
    {"cancel", BlockReceipt::Cancel},
};

std::optional<BlockReceipt> ReadReceipt(std::string_view word) {
    return FindWord(kWords, word);
}

}  // namespace

XmodemRxPeer::XmodemRxPeer(PeerSettings& settings)
    : ready_(settings.Hex("ready", "15")),
      ack_(settings.Hex("ack", "06")),
      nak_(settings.Hex("nak", "15")),
      can_(settings.Hex("can", "18")),
      block_(xmodem::BlockSize(settings)),
      start_(settings.Ticks("start", 8, 0)),
      delay_(settings.Ticks("delay", 2, 1)),
      timeout_(settings.Ticks("timeout", 200, 1)),
      reply_within_(settings.Ticks("reply_within", 0, 0)),
      byte_within_(settings.Ticks("byte_within", 0, 0)),
      refuses_first_eot_(settings.Flag("eot_nak", true)),
      plan_(settings, ReadReceipt) {}

void XmodemRxPeer::Start(PeerLink& link) {
    ready_at_ = link.Send(start_, ready_, 1);
    link.Note(ready_at_, "Receiver ready: NAK");
    Ask(0, ready_at_, "the answer to the receiver's NAK", link);
}

void XmodemRxPeer::Act(Tick tick, PeerLink&) {
    now_ = tick;
}

void XmodemRxPeer::Receive(Tick tick, std::uint8_t byte, PeerLink& link) {
    if (tick <= ready_at_ || tick >= over_at_) return;
    if (held_.empty() && byte == xmodem::kEot) return HearEot(tick, link);
    if (held_.empty() && byte != xmodem::kSoh) return;
    held_.push_back(byte);
    if (held_.size() == block_ + xmodem::kOverhead) return HearBlock(tick, link);
    if (byte_within_ == 0) return;
    // Every byte of a block awaits another under the same words, so they are made once.
    if (held_.size() <= 2) {
        next_byte_ = Format("the next byte of block %d", held_.size() > 1 ? byte : wanted_);
    }
    link.Expect(WindowKind::Deadline, tick + byte_within_, next_byte_, tick);
}

void XmodemRxPeer::HearEot(Tick tick, PeerLink& link) {
    if (refuses_first_eot_ && !eot_refused_) {
        eot_refused_ = true;
        const Tick answered = link.Send(tick + delay_, nak_, 1);
        link.Note(answered, "EOT answered with NAK, as XMODEM receivers do once");
        return Ask(tick, answered, "the second EOT", link);
    }
    const Tick answered = link.Send(tick + delay_, ack_, 1);
    link.Note(answered, "EOT acknowledged; transfer complete");
    over_at_ = std::min(over_at_, answered);
}

void XmodemRxPeer::HearBlock(Tick tick, PeerLink& link) {
    const std::uint8_t number = held_[1];
    const bool intact = Intact();
    held_.clear();
    const BlockReceipt receipt = plan_.Next();
    if (receipt == BlockReceipt::Take || receipt == BlockReceipt::AckLost) {
        if (!intact) {
            const Tick answered = Refuse(tick, tick + delay_, number, link);
            return link.Note(answered, Format("Answered block %d with NAK", number));
        }
        if (!InStep(number)) {
            return CancelTransfer(
                tick, Format("Block %d is out of step; the receiver cancels the transfer", number),
                link);
        }
    }
    switch (receipt) {
        case BlockReceipt::Take:
            return Acknowledge(tick, number, link);
        case BlockReceipt::Refuse:
            return link.Note(Refuse(tick, tick + delay_, number, link),
                             Format("Line noise damaged block %d on the way in", number));
        case BlockReceipt::Lost:
            link.Note(tick, Format("Block %d was lost on the line", number));
            return RefuseLate(tick, number, link);
        case BlockReceipt::AckLost:
            if (number == wanted_) ++wanted_;
            link.Note(tick + delay_, Format("The ACK for block %d was lost on the line", number));
            return RefuseLate(tick, number, link);
        case BlockReceipt::Cancel:
            return CancelTransfer(tick, "The receiver cancels the transfer", link);
    }
}

bool XmodemRxPeer::Intact() const {
    const auto data = std::span(held_).subspan(xmodem::kHeader, block_);
    return held_[2] == xmodem::Complement(held_[1]) && held_.back() == xmodem::Sum(data);
}

// The block that is wanted, or the one before it: its ACK may have been lost.
bool XmodemRxPeer::InStep(std::uint8_t number) const {
    return number == wanted_ || number == static_cast<std::uint8_t>(wanted_ - 1);
}

void XmodemRxPeer::Acknowledge(Tick tick, std::uint8_t number, PeerLink& link) {
    const char* had = number == wanted_ ? "" : "; it had that one";
    if (number == wanted_) ++wanted_;
    const Tick answered = link.Send(tick + delay_, ack_, 1);
    link.Note(answered, Format("Answered block %d with ACK%s", number, had));
    Ask(tick, answered, "the next block or EOT", link);
}

Tick XmodemRxPeer::Refuse(Tick tick, Tick at, std::uint8_t number, PeerLink& link) {
    const Tick answered = link.Send(at, nak_, 1);
    Ask(tick, answered, Format("block %d again", number), link);
    return answered;
}

void XmodemRxPeer::RefuseLate(Tick tick, std::uint8_t number, PeerLink& link) {
    const Tick answered = Refuse(tick, tick + timeout_, number, link);
    link.Note(answered, Format("Nothing heard for %u ticks: NAK", timeout_));
}

void XmodemRxPeer::CancelTransfer(Tick tick, const std::string& why, PeerLink& link) {
    const Tick answered = link.Send(tick + delay_, can_, 1);
    link.Note(answered, why);
    over_at_ = std::min(over_at_, answered);
}

// A card that runs on without listening is early by name, so the window opens at once.
void XmodemRxPeer::Ask(Tick heard, Tick answered, const std::string& what, PeerLink& link) const {
    link.Expect(WindowKind::Earliest, answered, what, heard);
    if (reply_within_ == 0) return;
    link.Expect(WindowKind::Deadline, answered + reply_within_, what, answered);
}

}  // namespace kp
