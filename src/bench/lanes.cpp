#include "bench/lanes.h"

#include <array>

#include "content/traffic.h"

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

}  // namespace

const LaneInfo& Info(Lane lane) {
    return kLanes[static_cast<std::size_t>(lane)];
}

std::vector<Lane> LanesOf(const kp::LoadedTicket& loaded) {
    std::vector<Lane> lanes = {Lane::SpecTx, Lane::Tx};
    if (kp::FarEndSends(loaded.ticket)) lanes.push_back(Lane::Rx);
    if (kp::HostSends(loaded.ticket)) lanes.push_back(Lane::HostIn);
    if (kp::HostReceives(loaded)) lanes.insert(lanes.end(), {Lane::HostOut, Lane::SpecOut});
    if (loaded.ticket.machine.timer) lanes.push_back(Lane::Timer);
    lanes.push_back(Lane::Card);
    return lanes;
}

bool HasHostTraffic(const kp::LoadedTicket& loaded) {
    return kp::HostSends(loaded.ticket) || kp::HostReceives(loaded);
}

}  // namespace Kest
