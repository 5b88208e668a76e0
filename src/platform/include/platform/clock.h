#pragma once

#include "outside/outside.h"

namespace zo::platform {

// Counts from where the machine's own steady clock does, so that two programs never read the same.
class SteadyClock final : public Clock {
public:
    double Seconds() override;
    std::uint64_t CalendarSeconds() override;
};

}  // namespace zo::platform
