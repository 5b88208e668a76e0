#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "peer_settings.h"
#include "peers/peer.h"
#include "plan.h"

namespace kp {

// What becomes of one sending of a block.
struct BlockFate {
    enum Kind : std::uint8_t {
        Whole,       // arrives as it is
        Garbled,     // the noise strikes byte `number`
        Cut,         // only the first `number` bytes arrive
        AnswerLost,  // arrives, but its answer is not heard
        Skip,        // arrives under the next block's number
    };
    Kind kind = Whole;
    std::size_t number = 0;
};

// A bulletin board that sends a file, the test's `frames` in one piece, by XMODEM. It speaks only
// when it is asked: the card's first NAK that somebody hears starts block 1, an ACK the next block
// or EOT, a NAK the same again; after ten sendings it gives up. A block whose answer is lost, or
// that arrives short or not at all, leaves the line silent, and the card must break the silence
// with a NAK within `retry_after`.
class XmodemTxPeer final : public Peer {
public:
    explicit XmodemTxPeer(PeerSettings& settings);
    void Start(PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override { return phase_ == Phase::Finished; }

private:
    enum class Phase : std::uint8_t { Calling, Sending, Finished };

    void HearCall(Tick tick, PeerLink& link);
    void HearAnswer(Tick tick, std::uint8_t answer, PeerLink& link);
    void HearAck(Tick tick, PeerLink& link);
    void HearNak(Tick tick, PeerLink& link);
    void LoseAnswer(Tick tick, std::uint8_t answer, PeerLink& link);
    void Finish(Tick tick, const std::string& why, PeerLink& link);

    bool AtEot() const { return block_ * block_size_ >= file_.size(); }
    void SendNext(Tick tick, PeerLink& link);
    void SendEot(Tick tick, PeerLink& link);
    void SendBlock(Tick tick, PeerLink& link);
    Bytes BuildBlock() const;
    std::string BlockNote(const BlockFate& fate, const Bytes& block, const Bytes& sent) const;
    void ExpectAnswer(Tick tick, const std::string& what, PeerLink& link) const;
    void ExpectNak(Tick silent_from, Tick tick, PeerLink& link) const;

    Bytes file_;
    std::size_t block_size_;  // data bytes
    int deaf_;                // of the card's first NAKs, how many nobody hears yet
    Tick delay_;              // from an answer to what it asks for, at least 1
    int gap_;                 // ticks from one byte of a block to the next, at least 1
    Tick reply_within_;       // from the last byte of a block or EOT to the answer, 0 for none
    RetryWindow retry_after_;
    Plan<BlockFate> plan_;

    Phase phase_ = Phase::Calling;
    std::size_t block_ = 0;    // from 0; behind the last one EOT is sent
    int sendings_ = 0;         // of this block, or of EOT
    std::uint8_t number_ = 0;  // as it was sent
    Tick last_byte_ = 0;       // of the last sending: until it has arrived nothing is heard
    bool answer_lost_ = false;
};

}  // namespace kp
