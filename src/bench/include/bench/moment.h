#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/result.h"
#include "content/content.h"
#include "session/session.h"

namespace Kest {

// The words that the card held before the last step or tick, to tell what that changed.
struct CardWords {
    std::array<std::uint16_t, kp::kRegisterWords> registers{};
    std::array<std::uint16_t, kp::kMostRam> ram{};
};

// A run of one test as it stands on some tick, with what the panels show of it beside the session.
// A run is the same every time, so that any tick of it can be gone to, also a past one: what lies
// before it is run again. Ticket and program must outlive the run.
class Moment {
public:
    base::Status Begin(const kp::LoadedTicket& loaded, std::size_t test,
                       const kp::Program& program);
    // Goes to the beginning of this tick, or to the end of the test where that comes first.
    void GoTo(kp::Tick tick);
    void RunTick();
    // Takes what the card holds now as what the next ticks will have changed.
    void RememberWords();

    const kp::Session& Session() const { return session_; }
    const CardWords& WordsBefore() const { return before_; }
    int TimerTicks() const { return timer_ticks_; }  // that the timer was last started with
    std::span<const std::uint8_t> Received() const { return received_; }  // that entered the buffer
    std::size_t BytesRead() const { return bytes_read_; }                 // of those

private:
    void Follow();

    const kp::LoadedTicket* loaded_ = nullptr;
    std::size_t test_ = 0;
    const kp::Program* program_ = nullptr;
    kp::Session session_;
    CardWords before_;
    std::size_t followed_ = 0;  // events of the trace
    int timer_ticks_ = 0;
    kp::Bytes received_;
    std::size_t bytes_read_ = 0;
};

}  // namespace Kest
