#include "platform/clock.h"

namespace zo::platform {

double SteadyClock::Seconds() {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    return passed.count();
}

std::uint64_t SteadyClock::CalendarSeconds() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::seconds>(since).count());
}

}  // namespace zo::platform
