#pragma once

#include <cstddef>
#include <memory>

#include "base/result.h"
#include "peers/peer.h"
#include "ticket/ticket.h"

namespace kp {

// The far end of the ticket's test `test`, counted from 0, or the line that says what is wrong with
// its settings. The line names its test where the test's own block is at fault: "test 3: unknown
// plan word "nack"". The ticket must outlive the far end. With `remarks`, an author is told which
// settings were not taken as they stand.
base::Result<std::unique_ptr<Peer>> CreatePeer(const Ticket& ticket, std::size_t test,
                                               json::Remarks* remarks = nullptr);

}  // namespace kp
