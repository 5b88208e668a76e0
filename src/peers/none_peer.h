#pragma once

#include "peers/peer.h"

namespace kp {

// Nothing is connected: what the card sends is lost, and nothing ever arrives.
class NonePeer final : public Peer {
public:
    bool Done() const override { return true; }
};

}  // namespace kp
