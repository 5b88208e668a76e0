#pragma once

#include <cstdint>

#include "peers/peer_link.h"

namespace kp {

// A far end: the equipment at the other end of the card's line. In a tick it hears the bytes that
// reach it, then acts, then the card runs.
class Peer {
public:
    virtual ~Peer() = default;
    // Once, before the first tick.
    virtual void Start(PeerLink& link);
    // Every tick. A tick before NextAct() may be left out: nothing but Done() may notice.
    virtual void Act(Tick tick, PeerLink& link);
    // For each byte of the card, on the tick after its tx.
    virtual void Receive(Tick tick, std::uint8_t byte, PeerLink& link);
    // Nothing more to send or to wait for.
    virtual bool Done() const = 0;
    // The next tick on which Act does anything unasked or Done() may become true by time alone;
    // kNever when only a byte from the card can move it.
    virtual Tick NextAct() const;
};

}  // namespace kp
