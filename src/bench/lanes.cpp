#include "bench/lanes.h"

#include <algorithm>
#include <array>

namespace Kest {
namespace {

using zo::ui::Role;

constexpr std::array<LaneInfo, 8> kLanes = {{
    {"SPEC TX", "SPEC TX: what the specification transmits.", Role::LaneSpec},
    {"TX", "TX: what the card transmitted.", Role::LaneTx},
    {"RX", "RX: what the card received.", Role::LaneRx},
    {"HOST IN", "HOST IN: what hin read.", Role::LaneHost},
    {"HOST OUT", "HOST OUT: what the card delivered.", Role::LaneHost},
    {"SPEC OUT", "SPEC OUT: what the host expects.", Role::LaneSpec},
    {"TIMER", "TIMER: the card's timer.", Role::LaneTime},
    {"CARD", "CARD: what the card was doing.", Role::LaneRun},
}};

// A script sends what its tests list; every other far end has answers of its own.
bool FarEndSends(const kp::Ticket& ticket) {
    if (ticket.peer_type != kp::PeerType::Script) return ticket.peer_type != kp::PeerType::None;
    return std::ranges::any_of(ticket.tests, [](const kp::Test& test) { return !test.rx.empty(); });
}

bool HostSends(const kp::Ticket& ticket) {
    return ticket.machine.host && std::ranges::any_of(ticket.tests, [](const kp::Test& test) {
               return !test.host.empty();
           });
}

bool HostReceives(const kp::LoadedTicket& loaded) {
    return loaded.ticket.machine.host &&
           std::ranges::any_of(loaded.reference.outputs, [](const kp::ExpectedOutput& output) {
               return !output.delivered.empty();
           });
}

}  // namespace

const LaneInfo& Info(Lane lane) {
    return kLanes[static_cast<std::size_t>(lane)];
}

std::vector<Lane> LanesOf(const kp::LoadedTicket& loaded) {
    std::vector<Lane> lanes = {Lane::SpecTx, Lane::Tx};
    if (FarEndSends(loaded.ticket)) lanes.push_back(Lane::Rx);
    if (HostSends(loaded.ticket)) lanes.push_back(Lane::HostIn);
    if (HostReceives(loaded)) lanes.insert(lanes.end(), {Lane::HostOut, Lane::SpecOut});
    if (loaded.ticket.machine.timer) lanes.push_back(Lane::Timer);
    lanes.push_back(Lane::Card);
    return lanes;
}

bool HasHostTraffic(const kp::LoadedTicket& loaded) {
    return HostSends(loaded.ticket) || HostReceives(loaded);
}

}  // namespace Kest
