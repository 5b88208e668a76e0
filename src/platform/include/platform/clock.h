#pragma once

#include <chrono>

#include "outside/outside.h"

namespace zo::platform {

class SteadyClock final : public Clock {
public:
    double Seconds() override;
    std::uint64_t CalendarSeconds() override;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace zo::platform
