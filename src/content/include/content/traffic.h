#pragma once

#include "content/content.h"

namespace kp {

// Which ways bytes pass in any of a ticket's tests.
bool FarEndSends(const Ticket& ticket);
bool HostSends(const Ticket& ticket);
bool HostReceives(const LoadedTicket& loaded);

}  // namespace kp
