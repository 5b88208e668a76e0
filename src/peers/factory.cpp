#include "peers/factory.h"

#include <array>
#include <type_traits>

#include "acker_peer.h"
#include "flow_peer.h"
#include "none_peer.h"
#include "responder_peer.h"
#include "script_peer.h"
#include "sender_peer.h"
#include "xmodem_rx_peer.h"
#include "xmodem_tx_peer.h"

namespace kp {
namespace {

using Made = std::unique_ptr<Peer>;

template <class FarEnd>
Made Make(PeerSettings& settings) {
    if constexpr (std::is_constructible_v<FarEnd, PeerSettings&>) {
        return std::make_unique<FarEnd>(settings);
    } else {
        return std::make_unique<FarEnd>();
    }
}

constexpr std::array<Made (*)(PeerSettings&), kPeerTypeNames.size()> kMakers = {
    // in the order of PeerType
    Make<NonePeer>,  Make<ScriptPeer>, Make<SenderPeer>,   Make<ResponderPeer>,
    Make<AckerPeer>, Make<FlowPeer>,   Make<XmodemRxPeer>, Make<XmodemTxPeer>,
};

}  // namespace

base::Result<Made> CreatePeer(const Ticket& ticket, std::size_t test, json::Remarks* remarks) {
    PeerSettings settings(ticket, test, remarks);
    Made peer = kMakers[static_cast<std::size_t>(ticket.peer_type)](settings);
    if (!settings.Problem().empty()) return base::Failure{settings.Problem()};
    settings.RemarkUnknown();
    return peer;
}

}  // namespace kp
