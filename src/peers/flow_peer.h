#pragma once

#include "peer_settings.h"
#include "peers/peer.h"

namespace kp {

// A slow printer. It takes `burst` bytes, sends XOFF, and sends XON `pause` ticks after the XOFF
// has arrived. A byte that the card sends in between fails the test.
class FlowPeer final : public Peer {
public:
    explicit FlowPeer(PeerSettings& settings);
    void Act(Tick tick, PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override { return now_ >= busy_until_; }
    Tick NextAct() const override { return Done() ? kNever : busy_until_; }

private:
    int burst_;           // bytes taken before the buffer is full, at least 1
    Tick delay_, pause_;  // ticks to the XOFF, at least 1; from XOFF to XON, at least 2
    Bytes xoff_, xon_;
    int count_ = 0;        // bytes taken since the last XOFF
    Tick busy_until_ = 0;  // the latest XON scheduled
    Tick now_ = 0;
};

}  // namespace kp
