#include "xmodem_tx_peer.h"

#include <algorithm>

#include "base/format.h"
#include "windows.h"
#include "xmodem.h"

namespace kp {
namespace {

using base::Format;

constexpr int kMostSendings = 10;  // of one block, and of EOT

constexpr PlanWord<BlockFate> kWords[] = {
    {"ok", {BlockFate::Whole}},
    {"ack", {BlockFate::Whole}},
    {"drop", {BlockFate::Cut, 0}},
    {"lost_ack", {BlockFate::AnswerLost}},
    {"lose_reply", {BlockFate::AnswerLost}},
    {"skip", {BlockFate::Skip}},
};

std::optional<BlockFate> ReadFate(std::string_view word) {
    if (const auto byte = GarbledByte(word)) return BlockFate{BlockFate::Garbled, *byte};
    if (const auto bytes = NumberOf(word, "cut")) return BlockFate{BlockFate::Cut, *bytes};
    return FindWord(kWords, word);
}

Bytes Join(const std::vector<Bytes>& parts) {
    Bytes whole;
    for (const Bytes& part : parts) whole.insert(whole.end(), part.begin(), part.end());
    return whole;
}

}  // namespace

XmodemTxPeer::XmodemTxPeer(PeerSettings& settings)
    : file_(Join(settings.Test().frames)),
      block_size_(xmodem::BlockSize(settings)),
      deaf_(settings.Number("deaf", 0, 0)),
      delay_(settings.Ticks("delay", 4, 1)),
      gap_(settings.Number("gap", 1, 1)),
      reply_within_(settings.Ticks("reply_within", 0, 0)),
      retry_after_(settings.Retry("retry_after")),
      plan_(settings, ReadFate) {}

void XmodemTxPeer::Start(PeerLink& link) {
    if (!retry_after_.Set()) return;
    link.Expect(WindowKind::Deadline, retry_after_.last, "the receiver's first NAK", 0);
}

void XmodemTxPeer::Receive(Tick tick, std::uint8_t byte, PeerLink& link) {
    switch (phase_) {
        case Phase::Calling:
            if (byte == xmodem::kNak) HearCall(tick, link);
            return;
        case Phase::Sending:
            if (tick > last_byte_) HearAnswer(tick, byte, link);
            return;
        case Phase::Finished:
            return;
    }
}

void XmodemTxPeer::HearCall(Tick tick, PeerLink& link) {
    if (deaf_ > 0) {
        --deaf_;
        link.Note(tick, "Nobody hears the NAK");
        return ExpectNak(tick, tick, link);
    }
    link.Note(tick, "Receiver ready: NAK");
    phase_ = Phase::Sending;
    SendNext(tick, link);
}

void XmodemTxPeer::HearAnswer(Tick tick, std::uint8_t answer, PeerLink& link) {
    if (answer == xmodem::kCan) return Finish(tick, "The receiver cancels the transfer", link);
    if (answer != xmodem::kAck && answer != xmodem::kNak) return;
    if (answer_lost_) return LoseAnswer(tick, answer, link);
    return answer == xmodem::kAck ? HearAck(tick, link) : HearNak(tick, link);
}

void XmodemTxPeer::LoseAnswer(Tick tick, std::uint8_t answer, PeerLink& link) {
    answer_lost_ = false;
    const char* name = answer == xmodem::kAck ? "ACK" : "NAK";
    link.Note(tick, Format("The %s for block %d was lost on the line", name, number_));
    ExpectNak(tick, tick, link);
}

void XmodemTxPeer::HearAck(Tick tick, PeerLink& link) {
    if (AtEot()) return Finish(tick, "EOT acknowledged; transfer complete", link);
    ++block_;
    sendings_ = 0;
    SendNext(tick, link);
}

void XmodemTxPeer::HearNak(Tick tick, PeerLink& link) {
    const bool last = sendings_ == kMostSendings;
    if (AtEot()) {
        link.Note(tick, "EOT answered with NAK, as XMODEM receivers do once");
        if (last) phase_ = Phase::Finished;
    } else if (last) {
        Finish(tick, Format("Block %d is given up after %d sendings", number_, kMostSendings),
               link);
    }
    if (!last) SendNext(tick, link);
}

void XmodemTxPeer::Finish(Tick tick, const std::string& why, PeerLink& link) {
    link.Note(tick, why);
    phase_ = Phase::Finished;
}

void XmodemTxPeer::SendNext(Tick tick, PeerLink& link) {
    ++sendings_;
    return AtEot() ? SendEot(tick, link) : SendBlock(tick, link);
}

void XmodemTxPeer::SendEot(Tick tick, PeerLink& link) {
    last_byte_ = link.Send(tick + delay_, std::span(&xmodem::kEot, 1), 1);
    link.Note(last_byte_, sendings_ > 1 ? "EOT again" : "EOT");
    ExpectAnswer(tick, "the answer to EOT", link);
}

void XmodemTxPeer::SendBlock(Tick tick, PeerLink& link) {
    const BlockFate fate = plan_.Next();
    number_ = static_cast<std::uint8_t>(block_ + (fate.kind == BlockFate::Skip ? 2 : 1));
    answer_lost_ = fate.kind == BlockFate::AnswerLost;
    const Bytes block = BuildBlock();
    Bytes sent = block;
    if (fate.kind == BlockFate::Garbled) Garble(sent, fate.number);
    if (fate.kind == BlockFate::Cut) sent.resize(std::min(fate.number, sent.size()));
    // A card may answer while the line still rests after the last byte of the block before.
    const Tick first = std::max(tick + delay_, link.LineFreeAt());
    link.Note(first, BlockNote(fate, block, sent));
    last_byte_ = sent.empty() ? tick : link.Send(first, sent, gap_);
    if (sent.size() < block.size()) return ExpectNak(last_byte_, tick, link);
    ExpectAnswer(tick, Format("the answer to block %d", number_), link);
}

Bytes XmodemTxPeer::BuildBlock() const {
    const std::size_t begin = block_ * block_size_;
    const std::size_t end = std::min(begin + block_size_, file_.size());
    Bytes block(xmodem::kHeader + block_size_, xmodem::kSub);
    block[0] = xmodem::kSoh;
    block[1] = number_;
    block[2] = xmodem::Complement(number_);
    std::copy(file_.begin() + static_cast<std::ptrdiff_t>(begin),
              file_.begin() + static_cast<std::ptrdiff_t>(end), block.begin() + xmodem::kHeader);
    block.push_back(xmodem::Sum(std::span(block).subspan(xmodem::kHeader)));
    return block;
}

std::string XmodemTxPeer::BlockNote(const BlockFate& fate, const Bytes& block,
                                    const Bytes& sent) const {
    const bool again = sendings_ > 1 && fate.kind != BlockFate::Skip;
    const char* what = sent.empty()                 ? " was lost on the line"
                       : sent.size() < block.size() ? ", cut short in transit"
                       : sent != block              ? ", damaged in transit"
                       : again                      ? " again"
                                                    : "";
    return Format("Block %d%s", number_, what);
}

void XmodemTxPeer::ExpectAnswer(Tick tick, const std::string& what, PeerLink& link) const {
    link.Expect(WindowKind::Earliest, last_byte_ + 1, what, tick);
    if (reply_within_ == 0) return;
    link.Expect(WindowKind::Deadline, last_byte_ + reply_within_, what, tick);
}

void XmodemTxPeer::ExpectNak(Tick silent_from, Tick tick, PeerLink& link) const {
    if (!retry_after_.Set()) return;
    ExpectBetween(link, silent_from + retry_after_.first, silent_from + retry_after_.last,
                  "the NAK after the silence", tick);
}

}  // namespace kp
