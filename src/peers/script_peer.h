#pragma once

#include <string>
#include <vector>

#include "peers/peer.h"

namespace kp {

// Equipment that talks and does not listen: it sends the test's `rx` entries at their ticks. After
// an entry with `reply_within` the card's next byte is due that many ticks after the entry's last
// byte.
class ScriptPeer final : public Peer {
public:
    void Start(PeerLink& link) override;
    void Act(Tick tick, PeerLink& link) override;
    bool Done() const override;
    Tick NextAct() const override;

private:
    struct Deadline {
        Tick last_byte;
        Tick allowance;
        std::string what;
    };
    std::vector<Deadline> deadlines_;  // by last byte, since the line keeps its bytes in order
    std::size_t next_deadline_ = 0;
    Tick last_scheduled_ = 0;
    Tick now_ = 0;
    bool started_ = false;
};

}  // namespace kp
