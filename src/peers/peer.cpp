#include "peers/peer.h"

namespace kp {

void Peer::Start(PeerLink&) {}

void Peer::Act(Tick, PeerLink&) {}

void Peer::Receive(Tick, std::uint8_t, PeerLink&) {}

Tick Peer::NextAct() const {
    return kNever;
}

}  // namespace kp
