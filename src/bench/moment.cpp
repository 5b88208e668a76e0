#include "bench/moment.h"

#include <algorithm>

#include "session/verify.h"

namespace Kest {
namespace {

// The last ticks before the one that is gone to are run one by one: the first of them so that the
// card looks at its clock, the second to tell what it changed.
constexpr kp::Tick kTickByTick = 2;

}  // namespace

base::Status Moment::Begin(const kp::LoadedTicket& loaded, std::size_t test,
                           const kp::Program& program) {
    loaded_ = &loaded;
    test_ = test;
    program_ = &program;
    followed_ = bytes_read_ = 0;
    timer_ticks_ = 0;
    received_.clear();
    const base::Status begun =
        kp::BeginTest(session_, loaded.ticket, test, program, &loaded.reference.outputs[test]);
    RememberWords();
    return begun;
}

void Moment::GoTo(kp::Tick tick) {
    // It has been begun with the same settings before.
    if (session_.CurrentTick() > tick) (void)Begin(*loaded_, test_, *program_);
    session_.RunUpTo(tick - std::min(tick, kTickByTick));
    Follow();
    while (!session_.Finished() && session_.CurrentTick() < tick) {
        RememberWords();
        RunTick();
    }
}

void Moment::RunTick() {
    session_.StepTick();
    Follow();
}

void Moment::RememberWords() {
    const kp::Processor& card = session_.Card();
    for (std::size_t i = 0; i < before_.registers.size(); ++i) {
        before_.registers[i] = card.RegisterValue(static_cast<int>(i));
    }
    std::ranges::copy(card.Ram(), before_.ram.begin());
}

// Keeps what the panels show of the events, so that they need not search the trace.
void Moment::Follow() {
    const std::span<const kp::TraceEvent> trace = session_.Trace();
    for (; followed_ < trace.size(); ++followed_) {
        const kp::TraceEvent& event = trace[followed_];
        switch (event.kind) {
            case kp::Happening::Received:
                received_.push_back(static_cast<std::uint8_t>(event.value));
                break;
            case kp::Happening::ReadByte:
                ++bytes_read_;
                break;
            case kp::Happening::TimerStarted:
                timer_ticks_ = event.value;
                break;
            default:
                break;
        }
    }
}

}  // namespace Kest
