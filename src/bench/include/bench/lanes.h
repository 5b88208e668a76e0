#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "cells/theme.h"
#include "content/content.h"

namespace Kest {

// The lanes of the trace, in the order in which they stand.
enum class Lane : std::uint8_t { SpecTx, Tx, Rx, HostIn, HostOut, SpecOut, Timer, Card };

struct LaneInfo {
    std::string_view name;
    std::string_view hint;
    zo::ui::Role role;  // of its bytes
};
const LaneInfo& Info(Lane lane);

// The lanes that a ticket uses: 3 to 8.
std::vector<Lane> LanesOf(const kp::LoadedTicket& loaded);

// Whether bytes pass between the card and its host in any test, in either direction.
bool HasHostTraffic(const kp::LoadedTicket& loaded);

}  // namespace Kest
