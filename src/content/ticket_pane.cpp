#include "content/ticket_pane.h"

#include "content/traffic.h"

namespace kp {
namespace {

int LaneCount(const LoadedTicket& loaded) {
    int lanes = 3;  // what must go out, what does, and what the card is doing
    if (FarEndSends(loaded.ticket)) ++lanes;
    if (HostSends(loaded.ticket)) ++lanes;
    if (HostReceives(loaded)) lanes += 2;
    if (loaded.ticket.machine.timer) ++lanes;
    return lanes;
}

}  // namespace

TextArea SmallestTicketPane(const LoadedTicket& loaded) {
    constexpr int kColumns = 30;
    constexpr int kRows = 18;  // what bars, strip and frames leave to the pane and the lanes
    return {kColumns, kRows - LaneCount(loaded)};
}

}  // namespace kp
