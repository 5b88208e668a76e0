#include "flow_peer.h"

#include <algorithm>

namespace kp {

FlowPeer::FlowPeer(PeerSettings& settings)
    : burst_(settings.Number("burst", 8, 1)),
      delay_(settings.Ticks("delay", 1, 1)),
      pause_(settings.Ticks("pause", 20, 2)),
      xoff_(settings.Hex("xoff", "13")),
      xon_(settings.Hex("xon", "11")) {}

void FlowPeer::Act(Tick tick, PeerLink&) {
    now_ = tick;
}

void FlowPeer::Receive(Tick tick, std::uint8_t, PeerLink& link) {
    if (++count_ < burst_) return;
    count_ = 0;
    const Tick off = link.Send(tick + delay_, xoff_, 1);
    const Tick on = link.Send(off + pause_, xon_, 1);
    link.Note(off, "XOFF: the printer's buffer is full");
    link.Note(on, "XON: the printer is ready");
    link.Expect(WindowKind::Earliest, on, "the first byte after XOFF", off);
    busy_until_ = std::max(busy_until_, on);
}

}  // namespace kp
