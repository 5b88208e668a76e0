#include "content/traffic.h"

#include <algorithm>

namespace kp {

// A script sends what its tests list; every other far end has answers of its own.
bool FarEndSends(const Ticket& ticket) {
    if (ticket.peer_type != PeerType::Script) return ticket.peer_type != PeerType::None;
    return std::ranges::any_of(ticket.tests, [](const Test& test) { return !test.rx.empty(); });
}

bool HostSends(const Ticket& ticket) {
    return ticket.machine.host &&
           std::ranges::any_of(ticket.tests, [](const Test& test) { return !test.host.empty(); });
}

bool HostReceives(const LoadedTicket& loaded) {
    return loaded.ticket.machine.host &&
           std::ranges::any_of(loaded.reference.outputs, [](const ExpectedOutput& output) {
               return !output.delivered.empty();
           });
}

}  // namespace kp
