#include "peers/factory.h"

#include "none_peer.h"
#include "script_peer.h"

namespace kp {
namespace {

using Built = base::Result<std::unique_ptr<Peer>>;

Built MakeNone(const Ticket&, const Test&) {
    return {std::make_unique<NonePeer>()};
}
Built MakeScript(const Ticket&, const Test&) {
    return {std::make_unique<ScriptPeer>()};
}
Built NotBuilt(const Ticket& ticket, const Test&) {
    return base::Failure{"peer type \"" + std::string(PeerTypeName(ticket.peer_type)) +
                         "\" is not built yet"};
}

using Make = Built (*)(const Ticket&, const Test&);

constexpr Make kMakers[] = {
    // in the order of PeerType
    MakeNone, MakeScript, NotBuilt, NotBuilt, NotBuilt, NotBuilt, NotBuilt, NotBuilt,
};

}  // namespace

Built CreatePeer(const Ticket& ticket, const Test& test) {
    return kMakers[static_cast<std::size_t>(ticket.peer_type)](ticket, test);
}

}  // namespace kp
