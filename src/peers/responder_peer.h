#pragma once

#include <cstddef>

#include "peer_settings.h"
#include "peers/peer.h"

namespace kp {

// A station that is polled. It gives the test's replies once each, in their order: when what it
// hears ends with a reply's `after`, the reply's `send` follows `delay` ticks later. With
// `reply_within` the card's next request is due that many ticks after the answer.
class ResponderPeer final : public Peer {
public:
    explicit ResponderPeer(PeerSettings& settings);
    void Act(Tick tick, PeerLink& link) override;
    void Receive(Tick tick, std::uint8_t byte, PeerLink& link) override;
    bool Done() const override { return AllGiven() && now_ >= last_answer_; }
    Tick NextAct() const override;

private:
    bool AllGiven() const { return next_ == replies_.size(); }

    const std::vector<Reply>& replies_;  // the test's
    int gap_;                            // ticks from one byte of an answer to the next, at least 1
    Tick reply_within_;                  // 0 for none
    std::size_t next_ = 0;               // the reply whose request is awaited
    Bytes heard_;                        // since the last request that was answered
    Tick last_answer_ = 0;               // the tick of its last byte
    Tick now_ = 0;
};

}  // namespace kp
