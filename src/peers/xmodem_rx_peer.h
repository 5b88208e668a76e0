#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "peer_settings.h"
#include "peers/peer.h"
#include "plan.h"

namespace kp {

// What becomes of a block that the card sends.
enum class BlockReceipt : std::uint8_t {
    Take,     // acknowledged when it is intact, refused when it is damaged
    Refuse,   // the noise damaged it
    Lost,     // never seen: a NAK after the silence
    AckLost,  // taken, but its ACK is lost: a NAK after the silence
    Cancel,   // the receiver gives up
};

// A bulletin board that receives a file by XMODEM. It leads: NAK when it is ready, then an answer
// `delay` ticks after every block and EOT; the first EOT is refused, in case the noise made it. It
// has no timer: a NAK after a silence, `timeout` ticks after the block, is on its way from the
// block on. The card may not transmit before an answer has come, must start what the answer asks
// for within `reply_within` ticks, and goes on inside a block within `byte_within`.
class XmodemRxPeer final : public Peer {
public:
    explicit XmodemRxPeer(PeerSettings& settings);
    void Start(PeerLink& link) override;
    void Act(Tick tick, PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override { return now_ >= over_at_; }
    Tick NextAct() const override { return Done() ? kNever : over_at_; }

private:
    void HearEot(Tick tick, PeerLink& link);
    void HearBlock(Tick tick, PeerLink& link);
    bool Intact() const;
    bool InStep(std::uint8_t number) const;
    void Acknowledge(Tick tick, std::uint8_t number, PeerLink& link);
    Tick Refuse(Tick tick, Tick at, std::uint8_t number, PeerLink& link);
    void RefuseLate(Tick tick, std::uint8_t number, PeerLink& link);
    void CancelTransfer(Tick tick, const std::string& why, PeerLink& link);
    void Ask(Tick heard, Tick answered, const std::string& what, PeerLink& link) const;

    Bytes ready_, ack_, nak_, can_;
    std::size_t block_;   // data bytes
    Tick start_, delay_;  // delay at least 1
    Tick timeout_;        // at least 1
    Tick reply_within_;   // 0 for none
    Tick byte_within_;    // 0 for none
    bool refuses_first_eot_;
    Plan<BlockReceipt> plan_;

    Tick ready_at_ = 0;        // what comes until then is not heard
    std::uint8_t wanted_ = 1;  // the number of the next block
    Bytes held_;               // of the block being received
    std::string next_byte_;    // what the window of the byte behind these is called
    bool eot_refused_ = false;
    Tick over_at_ = kNever;
    Tick now_ = 0;
};

}  // namespace kp
