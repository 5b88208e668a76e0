#pragma once

#include <memory>

#include "base/result.h"
#include "peers/peer.h"
#include "ticket/ticket.h"

namespace kp {

// The far end of a test, built from the ticket's and the test's settings, or the sentence that says
// why there is none.
base::Result<std::unique_ptr<Peer>> CreatePeer(const Ticket& ticket, const Test& test);

}  // namespace kp
