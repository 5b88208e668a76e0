#include "platform/clock.h"

#include <chrono>

namespace zo::platform {

double SteadyClock::Seconds() {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(since).count();
}

std::uint64_t SteadyClock::CalendarSeconds() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::seconds>(since).count());
}

}  // namespace zo::platform
